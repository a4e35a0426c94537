// Window discovery, description and matching against real X clients, with and without the
// hints a window manager publishes.

#include <X11/Xatom.h>
#include <unistd.h>

#include "DemoLayout.h"
#include "X11TestFixture.h"

namespace autoscene::testing {
namespace {

using platform::WindowHandle;
using platform::WindowQuery;
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
    EXPECT_EQ(info.window, window);
    EXPECT_EQ(info.title, title);
    EXPECT_EQ(info.className, demo::kClassName);
    const platform::Rect& r = info.clientRect;
    EXPECT_EQ(std::tuple(r.x, r.y, r.width, r.height), std::tuple(100, 50, 640, 480));

    // Only the legacy Latin-1 WM_NAME: read as UTF-8.
    const Window legacy = createWindow(true, false, 1);
    XStoreName(reference_->display(), legacy, "Caf\xe9");
    XSync(reference_->display(), False);
    EXPECT_EQ(backend_->describe(legacy).title, "Café");

    EXPECT_EQ(backend_->findChild(window, {}), 0u) << "no child named";
    EXPECT_EQ(backend_->findChild(window, {"", false, "", demo::kPanelTitle, ""}), target->panel());
    EXPECT_EQ(backend_->findChild(window, {"", false, "", "", demo::kPanelClassName}),
              target->panel());
    EXPECT_EQ(backend_->findChild(window, {"", false, "", "", "Other"}), 0u);

    ASSERT_TRUE(backend_->resizeClient(window, 500, 400));
    platform::WindowInfo resized;
    eventually([&] {
        resized = backend_->describe(window);
        return resized.clientRect.width == 500;
    });
    EXPECT_EQ(std::pair(resized.clientRect.width, resized.clientRect.height), std::pair(500, 400));
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

}  // namespace
}  // namespace autoscene::testing
