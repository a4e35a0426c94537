// Window discovery, description and matching against real X clients, with and without the
// hints a window manager publishes; and choosing a window with the crosshair, the test
// playing the user (XTest clicks and keys) and, where it needs one, the window manager that
// frames the demo target.

#include <X11/Xatom.h>
#include <unistd.h>

#include "DemoLayout.h"
#include "X11TestFixture.h"
#include "x11/X11WindowPicker.h"

#include <X11/keysym.h>
#include "FakeKeys.h"

namespace autoscene::testing {
namespace {

using platform::WindowHandle;
namespace demo = autoscene::demo;

class WindowDiscoveryTest : public X11TestFixture {
protected:
    // A window made by the test's own connection, as another program would make it.
    Window createWindow(bool map, bool overrideRedirect, long pid) {
        Display* d = reference_->display();
        XSetWindowAttributes attributes{};
        attributes.override_redirect = overrideRedirect ? True : False;
        const Window window =
            XCreateWindow(d, DefaultRootWindow(d), 10, 10, 50, 50, 0, CopyFromParent, InputOutput,
                          CopyFromParent, CWOverrideRedirect, &attributes);
        XChangeProperty(d, window, XInternAtom(d, "_NET_WM_PID", False), XA_CARDINAL, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(&pid), 1);
        if (map) {
            XMapWindow(d, window);
        }
        XSync(d, False);
        return window;
    }

    void setWindowsProperty(Window on, const char* name, const std::vector<Window>& windows) {
        Display* d = reference_->display();
        std::vector<long> ids(windows.begin(), windows.end());
        XChangeProperty(d, on, XInternAtom(d, name, False), XA_WINDOW, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(ids.data()),
                        static_cast<int>(ids.size()));
        XSync(d, False);
    }
};

std::vector<WindowHandle> handles(std::initializer_list<Window> windows) {
    return std::vector<WindowHandle>(windows.begin(), windows.end());
}

TEST_F(WindowDiscoveryTest, ListsOtherProgramsVisibleWindowsFocusedFirstThenTopDown) {
    const auto a = startDemo({"--title", "A"});
    const auto b = startDemo({"--title", "B"});
    const auto c = startDemo({"--title", "C"});
    createWindow(false, false, 1);        // unmapped
    createWindow(true, true, 1);          // override-redirect, like a menu
    createWindow(true, false, getpid());  // this process's own window
    EXPECT_EQ(backend_->topLevelWindows(), handles({c->window(), b->window(), a->window()}));

    XSetInputFocus(reference_->display(), a->window(), RevertToParent, CurrentTime);
    XSync(reference_->display(), False);
    EXPECT_EQ(backend_->topLevelWindows(), handles({a->window(), c->window(), b->window()}));

    // Once a window manager runs, its stacking list and active window decide.
    const Window root = DefaultRootWindow(reference_->display());
    const Window check = createWindow(false, false, 1);
    setWindowsProperty(check, "_NET_SUPPORTING_WM_CHECK", {check});
    setWindowsProperty(root, "_NET_CLIENT_LIST_STACKING", {b->window(), c->window(), a->window()});
    setWindowsProperty(root, "_NET_ACTIVE_WINDOW", {c->window()});
    EXPECT_EQ(backend_->topLevelWindows(), handles({a->window(), c->window(), b->window()}))
        << "without the check window the hints are not trusted yet";

    setWindowsProperty(root, "_NET_SUPPORTING_WM_CHECK", {check});
    EXPECT_EQ(backend_->topLevelWindows(), handles({c->window(), a->window(), b->window()}));
}

// The matching rules themselves are WindowMatchTest's; here the back end reads what they
// compare from real windows. That matches() compares the class as described, not the instance
// name, shows in every run of the demo task, which names its window by class.
TEST_F(WindowDiscoveryTest, DescribesMatchesAndResizesARealWindow) {
    const std::string title = "Démo 开始";
    const auto target = startDemo({"--title", title, "--geometry", "640x480+100+50"});
    const WindowHandle window = target->window();
    const auto info = backend_->describe(window);
    EXPECT_EQ(info.title, title);
    EXPECT_EQ(info.className, demo::kClassName);
    const platform::Rect& r = info.clientRect;
    EXPECT_EQ(std::tuple(r.x, r.y, r.width, r.height), std::tuple(100, 50, 640, 480));

    // Only the legacy Latin-1 WM_NAME: read as UTF-8.
    const Window legacy = createWindow(true, false, 1);
    XStoreName(reference_->display(), legacy, "Caf\xe9");
    XSync(reference_->display(), False);
    EXPECT_EQ(backend_->describe(legacy).title, "Café");

    EXPECT_EQ(backend_->findChild(window, {"", false, "", demo::kPanelTitle, ""}), target->panel());
    EXPECT_EQ(backend_->findChild(window, {"", false, "", "", demo::kPanelClassName}),
              target->panel());
    EXPECT_EQ(backend_->findChild(window, {"", false, "", "", "Other"}), 0u);

    ASSERT_TRUE(backend_->resizeClient(window, 500, 400));
    EXPECT_TRUE(eventually([&] {
        const platform::Rect resized = backend_->describe(window).clientRect;
        return std::pair(resized.width, resized.height) == std::pair(500, 400);
    }));
    EXPECT_EQ(backend_->capture(window, false).width, 500);
    EXPECT_FALSE(backend_->resizeClient(window, 0, 400));
    EXPECT_FALSE(backend_->resizeClient(window, 500, -1));
    EXPECT_FALSE(backend_->resizeClient(window, 100000, 400));

    target->stop();
    EXPECT_FALSE(backend_->resizeClient(window, 500, 400));
    EXPECT_FALSE(backend_->isWindow(window));
    EXPECT_EQ(backend_->describe(window).window, 0u);
    EXPECT_FALSE(backend_->isWindow(0));
    EXPECT_FALSE(backend_->isWindow(~0ULL));
    EXPECT_TRUE(backend_->isWindow(legacy));
}

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
        int x = 0;
        int y = 0;
        Window child = None;
        XTranslateCoordinates(user_, window, DefaultRootWindow(user_), attributes.width / 2,
                              attributes.height / 2, &x, &y, &child);
        return {x, y};
    }

    Display* user_ = nullptr;
    std::unique_ptr<platform::IWindowPicker> picker_;
};

// An unframed window picking itself is RunFromWindow.SeveralWindowsNeedAChoice...'s (tests/ui).
TEST_F(WindowPickerTest, AFramedWindowsChildPicksTheProgramsWindowAndTheRestCancel) {
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
    const auto panel = middleOf(demo->panel());  // not bound: the cancels capture it

    ASSERT_TRUE(picker_->begin());
    EXPECT_EQ(picker_->poll().state, WindowPick::State::Waiting);

    const std::size_t mark = demo->mark();
    clickAt(user_, panel.first, panel.second);
    EXPECT_EQ(settle().window, demo->window()) << "neither the frame nor the panel";
    EXPECT_FALSE(demo->waitForLine("panel", mark, 300)) << "the click went to the picker";

    SCOPED_TRACE("the other ways out cancel");
    const std::function<void()> cancels[] = {
        [&] { pressKeys(user_, {XK_Escape}); },
        [&] { clickAt(user_, panel.first, panel.second, 3); },
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
