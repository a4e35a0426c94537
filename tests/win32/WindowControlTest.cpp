// Window management for scripts on the recorder's windows.

#include <gtest/gtest.h>

#include <algorithm>

#include "TestSupport.h"
#include "win32/Win32WindowControl.h"

using namespace autoscene::platform;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

class WindowControlTest : public RecorderTest {
protected:
    Win32WindowControl control;
};

// Listing, describing and resizing the client area are the back end's, which
// WindowDiscoveryTest covers; what is checked here is the control's own.
TEST_F(WindowControlTest, MovesResizesActivatesAndClosesAsTheCloseButtonDoes) {
    const auto children = control.childWindows(top());
    EXPECT_NE(std::find(children.begin(), children.end(), toHandle(recorder.child("inner"))),
              children.end());

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

}  // namespace
