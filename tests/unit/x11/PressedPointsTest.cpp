// The per-thread pressed points behind background "up" input.

#include <gtest/gtest.h>

#include <thread>

#include "x11/PressedPoints.h"

namespace autoscene::platform::x11 {
namespace {

TEST(PressedPoints, EachThreadTakesItsOwnPointOnce) {
    PressedPoints points;
    points.record(Point{1, 2});
    Point other{-1, -1};
    std::thread([&] {
        points.record(Point{5, 6});
        other = points.take();
    }).join();
    const auto xy = [](Point p) { return std::pair(p.x, p.y); };
    EXPECT_EQ(xy(other), std::pair(5, 6));
    EXPECT_EQ(xy(points.take()), std::pair(1, 2));
    EXPECT_EQ(xy(points.take()), std::pair(0, 0)) << "taken once";
}

}  // namespace
}  // namespace autoscene::platform::x11
