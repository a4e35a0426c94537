// Choosing a window with the crosshair on a private Xvfb: the test plays the user (XTest
// clicks and keys) and, where it needs one, the window manager that frames the demo target.
#include <chrono>
#include <thread>

#include "X11TestFixture.h"
#include "x11/X11WindowPicker.h"

// After gtest: Xlib defines None, a name gtest uses.
#include <X11/Xatom.h>

#include <X11/keysym.h>
#include "FakeKeys.h"

namespace autoscene::testing {
namespace {

using platform::WindowPick;

class WindowPickerTest : public X11TestFixture {
protected:
    void SetUp() override {
        X11TestFixture::SetUp();
        user_ = reference_->display();
        picker_ = platform::makeX11WindowPicker(server_.display().c_str());
        ASSERT_NE(picker_, nullptr);
    }

    // Polls the pick for a while, as the window's timer does.
    WindowPick settle() {
        WindowPick pick;
        for (int i = 0; i < 100 && pick.state == WindowPick::State::Waiting; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            pick = picker_->poll();
        }
        return pick;
    }

    // The middle of `window` on the screen.
    std::pair<int, int> middleOf(Window window) {
        XWindowAttributes attributes{};
        XGetWindowAttributes(user_, window, &attributes);
        int x = 0, y = 0;
        Window child = None;
        XTranslateCoordinates(user_, window, DefaultRootWindow(user_), attributes.width / 2,
                              attributes.height / 2, &x, &y, &child);
        return {x, y};
    }

    Display* user_ = nullptr;
    std::unique_ptr<platform::IWindowPicker> picker_;
};

TEST_F(WindowPickerTest,
       AFramedWindowsChildPicksTheProgramsWindowAnUnframedOneItselfAndTheRestCancel) {
    const auto demo = startDemo({"--geometry", "800x600+0+0"});
    // What a window manager does to a client it manages: a frame around it, WM_STATE on it.
    const Window framed =
        XCreateSimpleWindow(user_, DefaultRootWindow(user_), 100, 80, 900, 700, 0, 0, 0x336699);
    XMapWindow(user_, framed);
    XReparentWindow(user_, demo->window(), framed, 8, 24);
    const Atom wmState = XInternAtom(user_, "WM_STATE", False);
    const long normal[2] = {1, 0};
    XChangeProperty(user_, demo->window(), wmState, wmState, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(normal), 2);
    XSync(user_, False);
    const auto [panelX, panelY] = middleOf(demo->panel());

    ASSERT_TRUE(picker_->begin());
    EXPECT_EQ(picker_->poll().state, WindowPick::State::Waiting);

    const std::size_t mark = demo->mark();
    clickAt(user_, panelX, panelY);
    EXPECT_EQ(settle().window, demo->window()) << "neither the frame nor the panel";
    EXPECT_FALSE(demo->waitForLine("panel", mark, 300)) << "the click went to the picker";

    SCOPED_TRACE("an unframed window is picked itself; the other ways out cancel");
    demo->stop();
    XDestroyWindow(user_, framed);
    const auto unframed = startDemo({"--geometry", "400x300+50+50", "--title", "Unframed"});
    const auto middle = middleOf(unframed->window());  // not bound: the cancels capture it
    ASSERT_TRUE(picker_->begin());
    clickAt(user_, middle.first, middle.second);
    EXPECT_EQ(settle().window, unframed->window());

    const std::function<void()> cancels[] = {
        [&] { pressKeys(user_, {XK_Escape}); },
        [&] { clickAt(user_, middle.first, middle.second, 3); },
        [&] { clickAt(user_, 1200, 700); },  // the bare desktop
    };
    for (const auto& cancel : cancels) {
        ASSERT_TRUE(picker_->begin());
        cancel();
        EXPECT_EQ(settle().state, WindowPick::State::Cancelled);
    }
    ASSERT_TRUE(picker_->begin());
    picker_->cancel();
    const auto other = platform::makeX11WindowPicker(server_.display().c_str());
    EXPECT_TRUE(other->begin()) << "cancel gives the pointer back";
}

}  // namespace
}  // namespace autoscene::testing
