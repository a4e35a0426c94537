// Crop clamping of foreground captures.

#include <gtest/gtest.h>

#include <tuple>

#include "x11/CropRect.h"

namespace autoscene::platform::x11 {
namespace {

auto fields(Rect r) {
    return std::tuple(r.x, r.y, r.width, r.height);
}

TEST(CropToScreen, ClampsToTheScreen) {
    // {asked, cropped}
    const std::pair<Rect, Rect> cases[] = {
        {{0, 0, 1280, 720}, {0, 0, 1280, 720}},
        {{1000, 600, 640, 480}, {1000, 600, 280, 120}},
        // An origin before the screen reads from zero at full size.
        {{-100, 10, 2000, 200}, {0, 10, 1280, 200}},
        // An origin past the screen keeps the last column and row.
        {{5000, 800, 300, 200}, {1279, 719, 1, 1}},
    };
    for (const auto& [in, want] : cases) {
        EXPECT_EQ(fields(cropToScreen(in, 1280, 720)), fields(want)) << in.x << "," << in.y;
    }
    EXPECT_EQ(cropToScreen(Rect{10, 10, 0, 200}, 1280, 720).width, 0);
    EXPECT_EQ(cropToScreen(Rect{10, 10, -5, 200}, 1280, 720).width, 0);
    EXPECT_EQ(cropToScreen(Rect{10, 10, 100, 100}, 0, 720).width, 0);
}

}  // namespace
}  // namespace autoscene::platform::x11
