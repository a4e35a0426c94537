// The demo target's command line: every malformed value is refused with a message.

#include <gtest/gtest.h>

#include "DemoOptions.h"

namespace autoscene::demo {
namespace {

TEST(DemoGeometry, SizeWithOptionalSignedOffsets) {
    const auto plain = parseGeometry("640x480").value();
    EXPECT_EQ(std::tuple(plain.width, plain.height, plain.x), std::tuple(640, 480, 0));
    const auto placed = parseGeometry("300x200-100+50").value();
    EXPECT_EQ(std::tuple(placed.x, placed.y), std::tuple(-100, 50));
    for (const char* bad :
         {"", "640x", "x480", "0x480", "640x0", "-640x480", "640x480+1", "640x480+1+2+3",
          "640x480 +1+2", "99999x480", "640x480+99999+0", "64ax480"}) {
        EXPECT_FALSE(parseGeometry(bad)) << bad;
    }
}

TEST(DemoOptions, BadArgumentsAreRefused) {
    for (const std::vector<std::string>& bad : {std::vector<std::string>{"--geometry"},
                                                {"--geometry", "big"},
                                                {"--screen", "FORM"},
                                                {"--verbose"},
                                                {"640x480"}}) {
        std::string error;
        EXPECT_TRUE(!parseOptions(bad, error) && !error.empty()) << bad[0];
    }
}

}  // namespace
}  // namespace autoscene::demo
