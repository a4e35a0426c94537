// Crop clamping of foreground captures.

#include <gtest/gtest.h>

#include "CropRect.h"

namespace autoscene::targets::x11 {
namespace {

void expectRect(Rect got, Rect want) {
    EXPECT_EQ(got.x, want.x);
    EXPECT_EQ(got.y, want.y);
    EXPECT_EQ(got.width, want.width);
    EXPECT_EQ(got.height, want.height);
}

TEST(CropToScreen, InsideIsUnchangedAndEdgesShorten) {
    expectRect(cropToScreen(Rect{100, 50, 640, 480}, 1280, 720), Rect{100, 50, 640, 480});
    expectRect(cropToScreen(Rect{0, 0, 1280, 720}, 1280, 720), Rect{0, 0, 1280, 720});
    expectRect(cropToScreen(Rect{1000, 600, 640, 480}, 1280, 720), Rect{1000, 600, 280, 120});
}

TEST(CropToScreen, OriginBeforeTheScreenReadsFromZeroAtFullSize) {
    expectRect(cropToScreen(Rect{-100, -50, 300, 200}, 1280, 720), Rect{0, 0, 300, 200});
    expectRect(cropToScreen(Rect{-100, 10, 2000, 200}, 1280, 720), Rect{0, 10, 1280, 200});
}

TEST(CropToScreen, OriginPastTheScreenKeepsTheLastColumnOrRow) {
    expectRect(cropToScreen(Rect{5000, 800, 300, 200}, 1280, 720), Rect{1279, 719, 1, 1});
}

TEST(CropToScreen, DegenerateSizesGiveNothing) {
    EXPECT_EQ(cropToScreen(Rect{10, 10, 0, 200}, 1280, 720).width, 0);
    EXPECT_EQ(cropToScreen(Rect{10, 10, -5, 200}, 1280, 720).width, 0);
    EXPECT_EQ(cropToScreen(Rect{10, 10, 100, 100}, 0, 720).width, 0);
}

}  // namespace
}  // namespace autoscene::targets::x11
