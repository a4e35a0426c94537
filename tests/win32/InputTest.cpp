// Input posted in the background and sent in the foreground, as the recorder's windows
// received it.

#include <gtest/gtest.h>

#include <chrono>

#include "RecorderLayout.h"
#include "TestSupport.h"
#include "keys/KeyGroupPress.h"
#include "keys/QtKeyTable.h"
#include "win32/MessageParams.h"

using namespace autoscene::platform;
using namespace autoscene::platform::keys;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

constexpr unsigned kMove = 0x200, kLeftDown = 0x201, kLeftUp = 0x202, kRightDown = 0x204,
                   kRightUp = 0x205, kWheel = 0x20A, kKeyDown = 0x100, kKeyUp = 0x101,
                   kSysKeyDown = 0x104, kSysKeyUp = 0x105;

// A window that receives a mouse message, and the point in its own client coordinates.
struct Hit {
    const char* window;
    int x, y;
};
using Hits = std::vector<Hit>;
// The windows holding top-level points (75,75) and (320,210).
const Hits kAtInner = {{"top", 75, 75}, {"outer", 25, 35}, {"inner", 5, 5}};
const Hits kAtSide = {{"top", 320, 210}, {"side", 20, 10}};

// The lines of one mouse message at each hit; the button held shows in wParam as the
// left one for all but right-button messages.
Lines at(const Hits& hits, unsigned message) {
    const unsigned wParam = message == kRightDown || message == kRightUp ? 2 : 1;
    Lines lines;
    for (const Hit& hit : hits) {
        lines.push_back(mouseLine(hit.window, message, wParam, hit.x, hit.y));
    }
    return lines;
}

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class BackgroundInputTest : public RecorderTest {
protected:
    InputTarget inner() const { return InputTarget{top(), toHandle(recorder.child("inner"))}; }
    Lines mouseLines() {
        return onlyMessages(recorder.drainPosted(),
                            {kMove, kLeftDown, kLeftUp, kRightDown, kRightUp, kWheel});
    }
    Lines keyLines() {
        return onlyMessages(recorder.drainPosted(), {kKeyDown, kKeyUp, kSysKeyDown, kSysKeyUp});
    }
};

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

TEST_F(BackgroundInputTest, MouseReachesEveryNestedWindowHoldingThePoint) {
    backend.mouse(topLevel(), {75, 75}, MouseOp::LeftClick, 20, true);
    EXPECT_EQ(mouseLines(), at(kAtInner, kMove) + at(kAtInner, kLeftDown) + at(kAtInner, kLeftUp));

    SCOPED_TRACE("the hit test includes a child's right and bottom edge");
    backend.mouse(topLevel(), {130, 120}, MouseOp::Move, 0, true);
    backend.mouse(topLevel(), {131, 120}, MouseOp::Move, 0, true);
    EXPECT_EQ(mouseLines(), at({{"top", 130, 120}, {"outer", 80, 80}, {"inner", 60, 50}}, kMove) +
                                at({{"top", 131, 120}, {"outer", 81, 80}}, kMove));

    // A right click pressing twice is MouseSteps' table; an up goes where pressed.
    backend.mouse(topLevel(), {320, 210}, MouseOp::RightDown, 0, true);
    backend.mouse(topLevel(), {10, 10}, MouseOp::RightUp, 0, true);
    EXPECT_EQ(mouseLines(), at(kAtSide, kMove) + at(kAtSide, kRightDown) +
                                at({{"top", 10, 10}}, kMove) + at(kAtSide, kRightUp));

    SCOPED_TRACE("the wheel goes to every window with the top-level point");
    backend.wheel(topLevel(), -2, {75, 75}, true);
    Lines wheel = at(kAtInner, kMove);
    for (const char* window : {"top", "outer", "inner", "side"}) {
        wheel.push_back(logLine(window, kWheel, 0xFF100000, packPointLParam({75, 75})));
    }
    EXPECT_EQ(mouseLines(), wheel);
}

TEST_F(BackgroundInputTest, NamedChildAloneGetsInputAndBadTargetsGetNothing) {
    backend.mouse(inner(), {75, 75}, MouseOp::LeftClick, 0, true);
    // Outside the child: nothing arrives anywhere.
    backend.mouse(inner(), {20, 20}, MouseOp::LeftClick, 0, true);
    const Hits inside = {{"inner", 5, 5}};
    EXPECT_EQ(mouseLines(), at(inside, kMove) + at(inside, kLeftDown) + at(inside, kLeftUp));

    backend.mouse(topLevel(), {-1, 10}, MouseOp::LeftClick, 0, true);
    backend.mouse(topLevel(), {10, -1}, MouseOp::LeftClick, 0, true);
    const InputTarget gone{0xDEAD0, 0};
    backend.mouse(gone, {10, 10}, MouseOp::LeftClick, 0, true);
    backend.wheel(gone, 1, {10, 10}, true);
    EXPECT_TRUE(mouseLines().empty());
    EXPECT_EQ(log, (Lines{"窗口不存在", "窗口不存在"}));
}

// Posted key lines read "window message virtual-key lParam", all in hex.
TEST_F(BackgroundInputTest, KeysGoToEveryWindowAndModifiersUseSystemKeyMessages) {
    backend.key(topLevel(), 'A', KeyOp::Click, true);
    EXPECT_EQ(keyLines(),
              (Lines{"top 0100 41 0", "outer 0100 41 0", "inner 0100 41 0", "side 0100 41 0",
                     "top 0101 41 0", "outer 0101 41 0", "inner 0101 41 0", "side 0101 41 0"}));

    backend.key(inner(), 0x10, KeyOp::Down, true);
    backend.key(inner(), 0x11, KeyOp::Up, true);
    backend.key(inner(), 0x12, KeyOp::Click, true);
    backend.key(inner(), 'B', KeyOp::System, true);
    backend.key(inner(), 'C', KeyOp::Down, true);
    // A Qt key code is no virtual key: nothing goes out (cut to 16 bits it would be PgUp).
    backend.key(inner(), 0x01000021, KeyOp::Click, true);
    backend.key(inner(), 0x01000021, KeyOp::Click, false);
    EXPECT_EQ(keyLines(),
              (Lines{"inner 0104 10 0", "inner 0105 11 0", "inner 0104 12 0", "inner 0105 12 0",
                     "inner 0104 42 0", "inner 0105 42 0", "inner 0100 43 0"}));
    EXPECT_EQ(log, (Lines{"invalid virtual key 16777249", "invalid virtual key 16777249"}));
    // Key groups: their order is InputActions.KeyModesAndGroupOrder's, see also the foreground.
}

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
    const Lines units = {"top 0102 41",  "top 0102 e9",   "top 0102 4e2d",
                         "top 0102 436", "top 0102 d83d", "top 0102 de00"};
    const auto start = std::chrono::steady_clock::now();
    backend.inputText(topLevel(), "Aé中ж😀");  // Latin, Han, Cyrillic and a surrogate pair
    EXPECT_GE(std::chrono::steady_clock::now() - start,
              std::chrono::milliseconds(5 + 10 * static_cast<int>(units.size())));
    EXPECT_EQ(withoutLParam(recorder.waitForMessages({0x102}, units.size())), units);
}

// Wheel steps, the inclusive hit test and the system keys show in the messages checked above.

TEST(MessageParams, PointsPackIntoSixteenBitWords) {
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
    EXPECT_EQ(crop({900, 700}, 400), "900,700 124x68");
    // Left of or above the screen: starts at column and row 0 with the full size.
    EXPECT_EQ(crop({-60, -10}, 400), "0,0 400x300");
    // Entirely past the right edge: clamped to the last column, one pixel wide.
    EXPECT_EQ(crop({5000, 0}, 400), "1023,0 1x300");
    EXPECT_EQ(crop({0, 0}, 0), "0,0 0x0");  // nothing left
}
