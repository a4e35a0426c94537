// Finding and describing windows through the back end, the window control scripts use and
// the crosshair pick (clicks made with SendInput, as a user's mouse would), on the
// recorder's windows.

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "RecorderLayout.h"
#include "TestSupport.h"
#include "win32/Win32WindowControl.h"
#include "win32/Win32WindowPicker.h"

using namespace autoscene::platform;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

using WindowDiscoveryTest = RecorderTest;
using WindowControlTest = RecorderTest;
using WindowPickerTest = RecorderTest;

bool contains(const std::vector<WindowHandle>& windows, HWND window) {
    return std::find(windows.begin(), windows.end(), toHandle(window)) != windows.end();
}

// Puts the pointer back: a window a later test opens under it would get a real mouse move.
struct PointerKeeper {
    PointerKeeper() { GetCursorPos(&point); }
    ~PointerKeeper() { SetCursorPos(point.x, point.y); }
    POINT point{};
};

}  // namespace

TEST_F(WindowDiscoveryTest, CandidatesSkipOwnAndHiddenWindowsAndTheRecorderIsMatchedAndResized) {
    // A visible window of this process must be left out.
    HWND own =
        CreateWindowExW(0, L"STATIC", L"Autoscene Recorder (own)", WS_OVERLAPPED | WS_VISIBLE, 0, 0,
                        50, 50, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(own, nullptr);
    SetForegroundWindow(recorder.top());
    ASSERT_TRUE(waitUntil([&] { return GetForegroundWindow() == recorder.top(); }));

    const std::vector<WindowHandle> windows = backend.topLevelWindows();
    ASSERT_FALSE(windows.empty());
    EXPECT_EQ(windows.front(), top());
    EXPECT_FALSE(contains(windows, own));
    HWND hidden = FindWindowW(kRecorderClass, kHiddenTitle);
    ASSERT_NE(hidden, nullptr);
    EXPECT_FALSE(contains(windows, hidden));
    DestroyWindow(own);

    SCOPED_TRACE("a top-level title is contained, its class equal");
    EXPECT_TRUE(backend.matches(top(), WindowQuery{}));
    EXPECT_TRUE(backend.matches(top(), WindowQuery{"Recorder", false, "", "", ""}));
    EXPECT_FALSE(backend.matches(top(), WindowQuery{"Recorder", true, "", "", ""}));
    EXPECT_TRUE(backend.matches(top(), WindowQuery{kRecorderTitle, true, "", "", ""}));
    EXPECT_FALSE(backend.matches(top(), WindowQuery{"recorder", false, "", "", ""}));
    EXPECT_TRUE(backend.matches(top(), WindowQuery{"", false, "AutosceneRecorder", "", ""}));
    EXPECT_FALSE(backend.matches(top(), WindowQuery{"", false, "AutosceneRecord", "", ""}));
    EXPECT_FALSE(backend.matches(0, WindowQuery{}));

    SCOPED_TRACE("a child matches title and class exactly, among all descendants");
    EXPECT_EQ(backend.findChild(top(), WindowQuery{"", false, "", "inner", "RecorderChild"}),
              toHandle(recorder.child("inner")));
    EXPECT_EQ(backend.findChild(top(), WindowQuery{"", false, "", "", "RecorderChild"}),
              toHandle(recorder.child("outer")));
    EXPECT_EQ(backend.findChild(top(), WindowQuery{"", false, "", "inne", ""}), 0u);
    EXPECT_EQ(backend.findChild(top(), WindowQuery{"", false, "", "side", "Static"}), 0u);
    EXPECT_EQ(backend.findChild(top(), WindowQuery{}), 0u);

    SCOPED_TRACE("describe gives text, class and the client rectangle on screen");
    const WindowInfo info = backend.describe(top());
    EXPECT_EQ(info.title, kRecorderTitle);
    EXPECT_EQ(info.className, "AutosceneRecorder");
    POINT origin{0, 0};
    ClientToScreen(recorder.top(), &origin);
    const Rect& r = info.clientRect;
    EXPECT_EQ(std::tuple(r.x, r.y, r.width, r.height),
              std::tuple(origin.x, origin.y, kClientWidth, kClientHeight));
    EXPECT_EQ(backend.describe(0).window, 0u);

    SCOPED_TRACE("resizing sets the client area size");
    ASSERT_TRUE(backend.resizeClient(top(), 320, 240));
    RECT client{};
    ASSERT_TRUE(waitUntil([&] {
        GetClientRect(recorder.top(), &client);
        return client.right == 320 && client.bottom == 240;
    })) << client.right
        << "x" << client.bottom;
    EXPECT_FALSE(backend.resizeClient(top(), 0, 240));
    EXPECT_FALSE(backend.resizeClient(0, 320, 240));
}

// What the control shares with the back end (describing, resizing the client area) is checked
// above; here is what is its own.
TEST_F(WindowControlTest, MovesResizesActivatesAndClosesAsTheCloseButtonDoes) {
    Win32WindowControl control;
    EXPECT_TRUE(contains(control.childWindows(top()), recorder.child("inner")));
    ASSERT_TRUE(control.moveWindow(top(), {120, 80}));
    const Rect outer = control.outerRect(top()).value_or(Rect{});
    EXPECT_EQ(std::pair(outer.x, outer.y), std::pair(120, 80));
    ASSERT_TRUE(control.resizeClient(top(), 300, 200));
    const Rect framed = control.outerRect(top()).value_or(Rect{});
    EXPECT_EQ(framed.x, 120) << "resizing keeps the position";
    EXPECT_GE(framed.width, 300);
    EXPECT_GT(framed.height, 200) << "a caption at least";
    EXPECT_FALSE(control.moveWindow(0, {1, 1}));
    EXPECT_FALSE(control.outerRect(0).has_value());
    EXPECT_TRUE(control.childWindows(0).empty());

    EXPECT_TRUE(control.activateWindow(top()));
    EXPECT_TRUE(waitUntil([&] { return GetForegroundWindow() == recorder.top(); }));
    EXPECT_TRUE(control.closeWindow(top()));
    EXPECT_TRUE(waitUntil([&] { return !IsWindow(recorder.top()); }));
    EXPECT_FALSE(control.closeWindow(top()));
    EXPECT_FALSE(control.activateWindow(top()));
}

TEST_F(WindowPickerTest, AClickOnAChildPicksItsTopLevelWindow) {
    const PointerKeeper pointer;
    RECT inner{};
    GetWindowRect(recorder.child("inner"), &inner);
    Win32WindowPicker picker;
    ASSERT_TRUE(picker.begin());
    EXPECT_EQ(picker.poll().state, WindowPick::State::Waiting);
    recorder.drainPosted();
    SetCursorPos((inner.left + inner.right) / 2, (inner.top + inner.bottom) / 2);
    INPUT click[2]{};
    click[0].type = click[1].type = INPUT_MOUSE;
    click[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    click[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(2, click, sizeof(INPUT));
    WindowPick pick;
    waitUntil([&] { return (pick = picker.poll()).state != WindowPick::State::Waiting; });
    EXPECT_EQ(pick.window, top());
    EXPECT_TRUE(onlyMessages(recorder.drainPosted(), {WM_LBUTTONDOWN}).empty())
        << "the click went to the picker";
}
