#include <gtest/gtest.h>

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

}  // namespace

TEST_F(BackgroundInputTest, MouseReachesEveryNestedWindowHoldingThePoint) {
    backend.mouse(topLevel(), {75, 75}, MouseOp::LeftClick, 20, true);
    EXPECT_EQ(mouseLines(), at(kAtInner, kMove) + at(kAtInner, kLeftDown) + at(kAtInner, kLeftUp));

    SCOPED_TRACE("the hit test includes a child's right and bottom edge");
    backend.mouse(topLevel(), {130, 120}, MouseOp::Move, 0, true);
    backend.mouse(topLevel(), {131, 120}, MouseOp::Move, 0, true);
    EXPECT_EQ(mouseLines(), at({{"top", 130, 120}, {"outer", 80, 80}, {"inner", 60, 50}}, kMove) +
                                at({{"top", 131, 120}, {"outer", 81, 80}}, kMove));

    SCOPED_TRACE("a right click is two button downs and no up; an up goes where pressed");
    backend.mouse(topLevel(), {320, 210}, MouseOp::RightClick, 0, true);
    backend.mouse(topLevel(), {320, 210}, MouseOp::RightDown, 0, true);
    backend.mouse(topLevel(), {10, 10}, MouseOp::RightUp, 0, true);
    EXPECT_EQ(mouseLines(), at(kAtSide, kMove) + at(kAtSide, kRightDown) + at(kAtSide, kRightDown) +
                                at(kAtSide, kMove) + at(kAtSide, kRightDown) +
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

    SCOPED_TRACE("a key group: downs in order, ups in reverse, modifiers as virtual keys");
    pressKeyGroup(backend, inner(), keyGroupFromEvent('C', kQtControlModifier | kQtShiftModifier),
                  true);
    EXPECT_EQ(keyLines(), (Lines{"inner 0104 11 0", "inner 0104 10 0", "inner 0100 43 0",
                                 "inner 0101 43 0", "inner 0105 10 0", "inner 0105 11 0"}));
}
