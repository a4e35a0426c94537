// The mouse steps both desktop back ends carry out: the background right-click rule and
// where background ups land, per runner thread.

#include "desktop/MouseSteps.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace autoscene::platform {
namespace {

// "down L 5,6", "hold", "release R 5,6", "up L 0,0", joined by " | ".
std::string text(const std::vector<MouseStep>& steps) {
    std::string out;
    for (const MouseStep& step : steps) {
        out += out.empty() ? "" : " | ";
        if (step.kind == MouseStepKind::Hold) {
            out += "hold";
            continue;
        }
        out += step.kind == MouseStepKind::Down      ? "down "
               : step.kind == MouseStepKind::Release ? "release "
                                                     : "up ";
        out += step.button == MouseButton::Left ? "L " : "R ";
        out += std::to_string(step.point.x) + "," + std::to_string(step.point.y);
    }
    return out;
}

TEST(MouseSteps, ClicksHoldTheirButtonAndABackgroundRightClickPressesTwice) {
    PressedPoints pressed;
    const Point at{5, 6};
    EXPECT_EQ(text(foregroundMouseSteps(MouseOp::LeftClick, at)),
              "down L 5,6 | hold | release L 5,6");
    EXPECT_EQ(text(foregroundMouseSteps(MouseOp::RightClick, at)),
              "down R 5,6 | hold | release R 5,6");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::LeftClick, at, pressed)),
              "down L 5,6 | hold | release L 5,6");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::RightClick, at, pressed)),
              "down R 5,6 | hold | down R 5,6");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::LeftUp, at, pressed)), "up L 0,0")
        << "clicks record no point";

    EXPECT_EQ(text(foregroundMouseSteps(MouseOp::RightDown, at)), "down R 5,6");
    EXPECT_EQ(text(foregroundMouseSteps(MouseOp::RightUp, at)), "up R 5,6");
    for (const MouseOp nothing : {MouseOp::Move, MouseOp::Invalid, static_cast<MouseOp>(99)}) {
        EXPECT_EQ(text(foregroundMouseSteps(nothing, at)), "") << int(nothing);
    }
    EXPECT_EQ(text(backgroundMouseSteps(static_cast<MouseOp>(99), at, pressed)), "");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::RightUp, at, pressed)), "up R 0,0")
        << "unknown operations record no point";
}

TEST(MouseSteps, BackgroundUpsLandWhereTheSameThreadLastPressedOrMovedOnce) {
    PressedPoints pressed;
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::LeftDown, Point{50, 30}, pressed)),
              "down L 50,30");
    std::string otherThread;
    std::thread([&] {
        backgroundMouseSteps(MouseOp::RightDown, Point{60, 31}, pressed);
        otherThread = text(backgroundMouseSteps(MouseOp::RightUp, Point{9, 9}, pressed));
    }).join();
    EXPECT_EQ(otherThread, "up R 60,31");

    // Foreground input neither records nor takes a point.
    EXPECT_EQ(text(foregroundMouseSteps(MouseOp::LeftDown, Point{1, 1})), "down L 1,1");
    EXPECT_EQ(text(foregroundMouseSteps(MouseOp::LeftUp, Point{2, 2})), "up L 2,2");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::LeftUp, Point{9, 9}, pressed)), "up L 50,30");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::LeftUp, Point{9, 9}, pressed)), "up L 0,0")
        << "a record is used once";

    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::Move, Point{7, 8}, pressed)), "");
    EXPECT_EQ(text(backgroundMouseSteps(MouseOp::RightUp, Point{9, 9}, pressed)), "up R 7,8");
}

}  // namespace
}  // namespace autoscene::platform
