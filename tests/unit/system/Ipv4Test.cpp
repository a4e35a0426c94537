#include <gtest/gtest.h>

#include "system/Ipv4.h"

using autoscene::sys::containsIpv4Address;

TEST(Ipv4, AcceptsAddressesStandingAsWordsAndRejectsOutOfRangeShortAndGluedNumbers) {
    for (const char* text : {"0.0.0.0", "255.255.255.255", "192.168.1.20:5555",
                             "device at 10.0.2.15 ready", "01.2.3.4"}) {
        EXPECT_TRUE(containsIpv4Address(text)) << text;
    }
    for (const char* text : {"", "256.1.1.1", "1.2.3", "1.2.3.256", "a1.2.3.4", "1.2.3.4b",
                             "1..2.3.4", "1000.2.3.4", "localhost"}) {
        EXPECT_FALSE(containsIpv4Address(text)) << text;
    }
}
