#include <gtest/gtest.h>

#include <thread>

#include "RecorderLayout.h"
#include "TestSupport.h"
#include "targets/win32/MessageParams.h"
#include "targets/win32/Win32Backend.h"
#include "targets/win32/Win32Handles.h"

using namespace autoscene::targets;
using namespace autoscene::targets::win32;
using namespace autoscene::win32test;

namespace {

constexpr unsigned kMove = 0x200, kLeftDown = 0x201, kLeftUp = 0x202, kRightDown = 0x204,
                   kRightUp = 0x205, kWheel = 0x20A, kKeyDown = 0x100, kKeyUp = 0x101,
                   kSysKeyDown = 0x104, kSysKeyUp = 0x105;

class BackgroundInputTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(recorder.started()) << "recorder did not start"; }

    InputTarget topLevel() const { return InputTarget{toHandle(recorder.top()), 0}; }
    InputTarget inner() const {
        return InputTarget{toHandle(recorder.top()), toHandle(recorder.child("inner"))};
    }
    Lines mouseLines() {
        return onlyMessages(recorder.drainPosted(),
                            {kMove, kLeftDown, kLeftUp, kRightDown, kRightUp, kWheel});
    }
    Lines keyLines() {
        return onlyMessages(recorder.drainPosted(), {kKeyDown, kKeyUp, kSysKeyDown, kSysKeyUp});
    }

    RecorderProcess recorder;
    std::vector<std::string> log;
    Win32Backend backend{[this](const std::string& line) { log.push_back(line); }};
};

}  // namespace

TEST_F(BackgroundInputTest, ClickReachesEveryNestedWindowHoldingThePoint) {
    backend.mouse(topLevel(), {75, 75}, MouseOp::LeftClick, 20, true);
    EXPECT_EQ(
        mouseLines(),
        (Lines{mouseLine("top", kMove, 1, 75, 75), mouseLine("outer", kMove, 1, 25, 35),
               mouseLine("inner", kMove, 1, 5, 5), mouseLine("top", kLeftDown, 1, 75, 75),
               mouseLine("outer", kLeftDown, 1, 25, 35), mouseLine("inner", kLeftDown, 1, 5, 5),
               mouseLine("top", kLeftUp, 1, 75, 75), mouseLine("outer", kLeftUp, 1, 25, 35),
               mouseLine("inner", kLeftUp, 1, 5, 5)}));
}

TEST_F(BackgroundInputTest, HitTestIncludesTheRightAndBottomEdgeOfAChild) {
    backend.mouse(topLevel(), {130, 120}, MouseOp::Move, 0, true);
    backend.mouse(topLevel(), {131, 120}, MouseOp::Move, 0, true);
    EXPECT_EQ(mouseLines(),
              (Lines{mouseLine("top", kMove, 1, 130, 120), mouseLine("outer", kMove, 1, 80, 80),
                     mouseLine("inner", kMove, 1, 60, 50), mouseLine("top", kMove, 1, 131, 120),
                     mouseLine("outer", kMove, 1, 81, 80)}));
}

TEST_F(BackgroundInputTest, RightClickIsTwoButtonDownsAndNoUp) {
    backend.mouse(topLevel(), {320, 210}, MouseOp::RightClick, 0, true);
    EXPECT_EQ(
        mouseLines(),
        (Lines{mouseLine("top", kMove, 1, 320, 210), mouseLine("side", kMove, 1, 20, 10),
               mouseLine("top", kRightDown, 2, 320, 210), mouseLine("side", kRightDown, 2, 20, 10),
               mouseLine("top", kRightDown, 2, 320, 210),
               mouseLine("side", kRightDown, 2, 20, 10)}));
}

TEST_F(BackgroundInputTest, UpsHappenWhereThisThreadLastPressedOrMoved) {
    backend.mouse(topLevel(), {75, 75}, MouseOp::LeftDown, 0, true);
    // Another runner thread has no pressed point: its up goes to (0,0).
    std::thread([this] { backend.mouse(topLevel(), {200, 100}, MouseOp::LeftUp, 0, true); }).join();
    backend.mouse(topLevel(), {10, 10}, MouseOp::LeftUp, 0, true);
    // The record was used: the next up is at (0,0) again.
    backend.mouse(topLevel(), {10, 10}, MouseOp::RightUp, 0, true);
    backend.mouse(topLevel(), {320, 210}, MouseOp::RightDown, 0, true);
    backend.mouse(topLevel(), {20, 20}, MouseOp::Move, 0, true);
    backend.mouse(topLevel(), {30, 30}, MouseOp::RightUp, 0, true);
    EXPECT_EQ(
        mouseLines(),
        (Lines{mouseLine("top", kMove, 1, 75, 75),       mouseLine("outer", kMove, 1, 25, 35),
               mouseLine("inner", kMove, 1, 5, 5),       mouseLine("top", kLeftDown, 1, 75, 75),
               mouseLine("outer", kLeftDown, 1, 25, 35), mouseLine("inner", kLeftDown, 1, 5, 5),
               mouseLine("top", kMove, 1, 200, 100),     mouseLine("outer", kMove, 1, 150, 60),
               mouseLine("top", kLeftUp, 1, 0, 0),       mouseLine("top", kMove, 1, 10, 10),
               mouseLine("top", kLeftUp, 1, 75, 75),     mouseLine("outer", kLeftUp, 1, 25, 35),
               mouseLine("inner", kLeftUp, 1, 5, 5),     mouseLine("top", kMove, 1, 10, 10),
               mouseLine("top", kRightUp, 2, 0, 0),      mouseLine("top", kMove, 1, 320, 210),
               mouseLine("side", kMove, 1, 20, 10),      mouseLine("top", kRightDown, 2, 320, 210),
               mouseLine("side", kRightDown, 2, 20, 10), mouseLine("top", kMove, 1, 20, 20),
               mouseLine("top", kMove, 1, 30, 30),       mouseLine("top", kRightUp, 2, 20, 20)}));
}

TEST_F(BackgroundInputTest, NamedChildAloneReceivesInputRelativeToItself) {
    backend.mouse(inner(), {75, 75}, MouseOp::LeftClick, 0, true);
    // Outside the child: nothing arrives anywhere.
    backend.mouse(inner(), {20, 20}, MouseOp::LeftClick, 0, true);
    EXPECT_EQ(mouseLines(),
              (Lines{mouseLine("inner", kMove, 1, 5, 5), mouseLine("inner", kLeftDown, 1, 5, 5),
                     mouseLine("inner", kLeftUp, 1, 5, 5)}));
}

TEST_F(BackgroundInputTest, NegativePointsAndMissingWindowsPostNothing) {
    backend.mouse(topLevel(), {-1, 10}, MouseOp::LeftClick, 0, true);
    backend.mouse(topLevel(), {10, -1}, MouseOp::LeftClick, 0, true);
    const InputTarget gone{0xDEAD0, 0};
    backend.mouse(gone, {10, 10}, MouseOp::LeftClick, 0, true);
    backend.wheel(gone, 1, {10, 10}, true);
    EXPECT_TRUE(mouseLines().empty());
    EXPECT_EQ(log, (std::vector<std::string>{"窗口不存在", "窗口不存在"}));
}

TEST_F(BackgroundInputTest, WheelGoesToEveryWindowWithTheTopLevelPoint) {
    backend.wheel(topLevel(), -2, {75, 75}, true);
    const std::uint32_t lParam = packPointLParam({75, 75});
    EXPECT_EQ(mouseLines(),
              (Lines{mouseLine("top", kMove, 1, 75, 75), mouseLine("outer", kMove, 1, 25, 35),
                     mouseLine("inner", kMove, 1, 5, 5), logLine("top", kWheel, 0xFF100000, lParam),
                     logLine("outer", kWheel, 0xFF100000, lParam),
                     logLine("inner", kWheel, 0xFF100000, lParam),
                     logLine("side", kWheel, 0xFF100000, lParam)}));
}

TEST_F(BackgroundInputTest, KeysGoDownToEveryWindowThenUp) {
    backend.key(topLevel(), 'A', KeyOp::Click, true);
    EXPECT_EQ(keyLines(), (Lines{keyLine("top", kKeyDown, 'A'), keyLine("outer", kKeyDown, 'A'),
                                 keyLine("inner", kKeyDown, 'A'), keyLine("side", kKeyDown, 'A'),
                                 keyLine("top", kKeyUp, 'A'), keyLine("outer", kKeyUp, 'A'),
                                 keyLine("inner", kKeyUp, 'A'), keyLine("side", kKeyUp, 'A')}));
}

TEST_F(BackgroundInputTest, ShiftControlAltAndSystemPressUseSystemKeyMessages) {
    backend.key(inner(), 0x10, KeyOp::Down, true);
    backend.key(inner(), 0x11, KeyOp::Up, true);
    backend.key(inner(), 0x12, KeyOp::Click, true);
    backend.key(inner(), 'B', KeyOp::System, true);
    backend.key(inner(), 'C', KeyOp::Down, true);
    // A Qt key code is no virtual key: nothing goes out (cut to 16 bits it would be PgUp).
    backend.key(inner(), 0x01000021, KeyOp::Click, true);
    backend.key(inner(), 0x01000021, KeyOp::Click, false);
    EXPECT_EQ(keyLines(),
              (Lines{keyLine("inner", kSysKeyDown, 0x10), keyLine("inner", kSysKeyUp, 0x11),
                     keyLine("inner", kSysKeyDown, 0x12), keyLine("inner", kSysKeyUp, 0x12),
                     keyLine("inner", kSysKeyDown, 'B'), keyLine("inner", kSysKeyUp, 'B'),
                     keyLine("inner", kKeyDown, 'C')}));
    EXPECT_EQ(log, (std::vector<std::string>{"invalid virtual key 16777249",
                                             "invalid virtual key 16777249"}));
}
