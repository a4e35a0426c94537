// The mouse steps both desktop back ends carry out. Where background ups land, per runner
// thread, is checked through both back ends (BackgroundInputTest in tests/integration/x11
// and tests/win32).

#include "desktop/MouseSteps.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
}  // namespace autoscene::platform
