// Choosing the recorder's window with the crosshair: clicks made with SendInput, as a
// user's mouse would, while the pick waits.

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "win32/Win32WindowPicker.h"

using namespace autoscene::platform;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

void clickScreen(POINT point, DWORD down, DWORD up) {
    SetCursorPos(point.x, point.y);
    INPUT inputs[2]{};
    inputs[0].type = inputs[1].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = down;
    inputs[1].mi.dwFlags = up;
    SendInput(2, inputs, sizeof(INPUT));
}

WindowPick settle(Win32WindowPicker& picker) {
    WindowPick pick;
    waitUntil([&] {
        pick = picker.poll();
        return pick.state != WindowPick::State::Waiting;
    });
    return pick;
}

// Puts the pointer back: a window a later test opens under it would get a real mouse move.
struct PointerKeeper {
    PointerKeeper() { GetCursorPos(&point); }
    ~PointerKeeper() { SetCursorPos(point.x, point.y); }
    POINT point{};
};

using WindowPickerTest = RecorderTest;

TEST_F(WindowPickerTest, AClickOnAChildPicksItsTopLevelWindow) {
    const PointerKeeper pointer;
    RECT inner{};
    GetWindowRect(recorder.child("inner"), &inner);
    const POINT middle{(inner.left + inner.right) / 2, (inner.top + inner.bottom) / 2};

    Win32WindowPicker picker;
    ASSERT_TRUE(picker.begin());
    EXPECT_EQ(picker.poll().state, WindowPick::State::Waiting);
    recorder.drainPosted();
    clickScreen(middle, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(settle(picker).window, top());
    EXPECT_TRUE(onlyMessages(recorder.drainPosted(), {WM_LBUTTONDOWN}).empty())
        << "the click went to the picker";
}

}  // namespace
