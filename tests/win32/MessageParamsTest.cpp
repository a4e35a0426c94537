#include <gtest/gtest.h>

#include "targets/win32/MessageParams.h"

using namespace autoscene::targets;
using namespace autoscene::targets::win32;

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
    // Inside the screen: unchanged.
    EXPECT_EQ(screenCropOfClient({100, 50}, 400, 300, 1024, 768).width, 400);
    // Passing the right and bottom edges: cut there.
    const Rect cut = screenCropOfClient({900, 700}, 400, 300, 1024, 768);
    EXPECT_EQ(cut.x, 900);
    EXPECT_EQ(cut.y, 700);
    EXPECT_EQ(cut.width, 124);
    EXPECT_EQ(cut.height, 68);
    // Left of or above the screen: starts at column and row 0 with the full size.
    const Rect shifted = screenCropOfClient({-60, -10}, 400, 300, 1024, 768);
    EXPECT_EQ(shifted.x, 0);
    EXPECT_EQ(shifted.y, 0);
    EXPECT_EQ(shifted.width, 400);
    EXPECT_EQ(shifted.height, 300);
    // Entirely past the right edge: clamped to the last column, one pixel wide.
    EXPECT_EQ(screenCropOfClient({5000, 0}, 400, 300, 1024, 768).width, 1);
    EXPECT_EQ(screenCropOfClient({0, 0}, 0, 300, 1024, 768).width, 0);
}
