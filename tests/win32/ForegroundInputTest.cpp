#include <gtest/gtest.h>

#include <chrono>

#include "TestSupport.h"
#include "keys/KeyGroupPress.h"
#include "keys/QtKeyTable.h"

using namespace autoscene::platform;
using namespace autoscene::platform::keys;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

// The lines without their last field: real key messages carry scan codes and repeat
// counts in lParam.
Lines withoutLParam(const Lines& lines) {
    Lines cut;
    for (const std::string& line : lines) {
        cut.push_back(line.substr(0, line.find_last_of(' ')));
    }
    return cut;
}

using ForegroundInputTest = RecorderTest;

}  // namespace

TEST_F(ForegroundInputTest, ClicksDownsAndUpsArriveAtTheDeepestWindowUnderTheClientPoint) {
    backend.mouse(topLevel(), {75, 75}, MouseOp::LeftClick, 30, false);
    backend.mouse(topLevel(), {330, 220}, MouseOp::RightClick, 0, false);
    EXPECT_EQ(recorder.waitForMessages({0x201, 0x202, 0x204, 0x205}, 4),
              (Lines{mouseLine("inner", 0x201, 1, 5, 5), mouseLine("inner", 0x202, 0, 5, 5),
                     mouseLine("side", 0x204, 2, 30, 20), mouseLine("side", 0x205, 0, 30, 20)}));
    POINT cursor{};
    GetCursorPos(&cursor);
    ScreenToClient(recorder.top(), &cursor);
    EXPECT_EQ(std::pair(cursor.x, cursor.y), std::pair(330L, 220L));

    SCOPED_TRACE("separate downs, ups and moves use the cursor");
    backend.mouse(topLevel(), {80, 50}, MouseOp::LeftDown, 0, false);
    // Wine applies a cursor warp through the X server a moment later; a second warp
    // at once can be overtaken by the first one's echo.
    Sleep(100);
    backend.mouse(topLevel(), {90, 60}, MouseOp::Move, 0, false);
    Sleep(100);
    backend.mouse(topLevel(), {-1, -1}, MouseOp::LeftUp, 0, false);
    backend.mouse(topLevel(), {10, 10}, MouseOp::RightDown, 0, false);
    backend.mouse(topLevel(), {-1, -1}, MouseOp::RightUp, 0, false);
    EXPECT_EQ(recorder.waitForMessages({0x201, 0x202, 0x204, 0x205}, 4),
              (Lines{mouseLine("outer", 0x201, 1, 30, 10), mouseLine("outer", 0x202, 0, 40, 20),
                     mouseLine("top", 0x204, 2, 10, 10), mouseLine("top", 0x205, 0, 10, 10)}));
}

TEST_F(ForegroundInputTest, WheelKeysAndAKeyGroupReachTheFrontWindow) {
    backend.wheel(topLevel(), 2, {75, 75}, false);
    EXPECT_EQ(withoutLParam(recorder.waitForMessages({0x20A}, 1)), Lines{"inner 020a f00000"});

    backend.key(topLevel(), 'K', KeyOp::Down, false);
    backend.key(topLevel(), 'K', KeyOp::Up, false);
    backend.key(topLevel(), 0x24, KeyOp::Click, false);  // Home: no character
    EXPECT_EQ(withoutLParam(recorder.waitForMessages({0x100, 0x101}, 4)),
              (Lines{"top 0100 4b", "top 0101 4b", "top 0100 24", "top 0101 24"}));
    pressKeyGroup(backend, topLevel(), keyGroupFromEvent('Q', kQtShiftModifier), false);
    EXPECT_EQ(withoutLParam(recorder.waitForMessages({0x100, 0x101, 0x102}, 5)),
              (Lines{"top 0100 10", "top 0100 51", "top 0102 51", "top 0101 51", "top 0101 10"}));
}

TEST_F(ForegroundInputTest, UnicodeTextOfSeveralScriptsArrivesUnitByUnitWithItsPauses) {
    const std::string text = "Aé中ж😀";  // Latin, Han, Cyrillic and a surrogate pair
    const Lines units = {"top 0102 41",  "top 0102 e9",   "top 0102 4e2d",
                         "top 0102 436", "top 0102 d83d", "top 0102 de00"};
    const auto start = std::chrono::steady_clock::now();
    backend.inputText(topLevel(), text);
    const auto elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_GE(elapsed, std::chrono::milliseconds(5 + 10 * static_cast<int>(units.size())));
    EXPECT_EQ(withoutLParam(recorder.waitForMessages({0x102}, units.size())), units);
}
