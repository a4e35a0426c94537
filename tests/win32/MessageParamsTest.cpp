#include <gtest/gtest.h>

#include "win32/MessageParams.h"

using namespace autoscene::platform;
using namespace autoscene::platform::win32;

// Wheel steps, the inclusive hit test and the system keys show in the messages that
// BackgroundInputTest and ForegroundInputTest check.

TEST(MessageParams, PointsPackIntoSixteenBitWords) {
    EXPECT_EQ(packPointLParam({10, 20}), 0x0014000Au);
    EXPECT_EQ(packPointLParam({0xFFFF, 0}), 0x0000FFFFu);
    // Coordinates past 16 bits lose their high bits, as the message format does.
    EXPECT_EQ(packPointLParam({0x12345, 0x10002}), 0x00022345u);
    EXPECT_EQ(packPointLParam({-1, -2}), 0xFFFEFFFFu);
}

TEST(MessageParams, ScreenCropClampsOriginAndCutsOnlyAtRightAndBottom) {
    const auto crop = [](Point origin, int width) {
        const Rect r = screenCropOfClient(origin, width, 300, 1024, 768);
        return std::to_string(r.x) + "," + std::to_string(r.y) + " " + std::to_string(r.width) +
               "x" + std::to_string(r.height);
    };
    EXPECT_EQ(crop({100, 50}, 400), "100,50 400x300");
    EXPECT_EQ(crop({900, 700}, 400), "900,700 124x68");
    // Left of or above the screen: starts at column and row 0 with the full size.
    EXPECT_EQ(crop({-60, -10}, 400), "0,0 400x300");
    // Entirely past the right edge: clamped to the last column, one pixel wide.
    EXPECT_EQ(crop({5000, 0}, 400), "1023,0 1x300");
    EXPECT_EQ(crop({0, 0}, 0), "0,0 0x0");  // nothing left
}
