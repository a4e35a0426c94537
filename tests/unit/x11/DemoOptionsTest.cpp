// The demo target's command line: every malformed value is refused with a message.

#include <gtest/gtest.h>

#include "DemoOptions.h"

namespace autoscene::demo {
namespace {

std::optional<DemoOptions> parse(std::vector<std::string> arguments) {
    std::string error;
    auto options = parseOptions(arguments, error);
    EXPECT_EQ(options.has_value(), error.empty()) << error;
    return options;
}

TEST(DemoGeometry, SizeWithOptionalSignedOffsets) {
    const auto plain = parseGeometry("640x480");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->width, 640);
    EXPECT_EQ(plain->height, 480);
    EXPECT_EQ(plain->x, 0);
    const auto placed = parseGeometry("300x200-100+50");
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->x, -100);
    EXPECT_EQ(placed->y, 50);
    for (const char* bad :
         {"", "640", "640x", "x480", "0x480", "640x0", "-640x480", "640x480+1", "640x480+1+2+3",
          "640x480 +1+2", "99999x480", "640x480+99999+0", "640x480++1+2", "64ax480"}) {
        EXPECT_FALSE(parseGeometry(bad)) << bad;
    }
}

TEST(DemoOptions, BadArgumentsAreRefused) {
    EXPECT_FALSE(parse({"--geometry"})) << "missing value";
    EXPECT_FALSE(parse({"--geometry", "big"}));
    EXPECT_FALSE(parse({"--screen", "FORM"})) << "names are lower-case";
    EXPECT_FALSE(parse({"--screen", "settings"}));
    EXPECT_FALSE(parse({"--verbose"}));
    EXPECT_FALSE(parse({"640x480"}));
}

}  // namespace
}  // namespace autoscene::demo
