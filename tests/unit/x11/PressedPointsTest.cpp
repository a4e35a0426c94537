// The per-thread pressed points behind background "up" input.

#include <gtest/gtest.h>

#include <thread>

#include "PressedPoints.h"

namespace autoscene::targets::x11 {
namespace {

TEST(PressedPoints, EachThreadTakesItsOwnPointOnce) {
    PressedPoints points;
    points.record(Point{1, 2});
    Point other{-1, -1};
    std::thread([&] {
        points.record(Point{5, 6});
        other = points.take();
    }).join();
    EXPECT_EQ(other.x, 5);
    EXPECT_EQ(other.y, 6);
    const Point mine = points.take();
    EXPECT_EQ(mine.x, 1);
    EXPECT_EQ(mine.y, 2);
    const Point none = points.take();
    EXPECT_EQ(none.x, 0);
    EXPECT_EQ(none.y, 0);
}

}  // namespace
}  // namespace autoscene::targets::x11
