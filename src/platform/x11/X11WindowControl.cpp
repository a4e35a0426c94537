#include "x11/X11WindowControl.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <algorithm>

#include "x11/Connection.h"
#include "x11/ErrorTrap.h"
#include "x11/WindowTree.h"

namespace autoscene::platform {
namespace x11 {
namespace {

constexpr int kMaxWindowSide = 32767;

// X resource ids are 29-bit; larger handles cannot name a window.
bool plausible(WindowHandle handle) {
    return handle != 0 && handle < (1ULL << 29);
}

// The ancestor just below the root: the window manager's frame, or the window itself.
Window frameOf(Connection& c, Window window) {
    ErrorTrap trap(c.display());
    Window current = window;
    for (int depth = 0; depth < 64; ++depth) {
        Window root = None;
        Window parent = None;
        Window* children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(c.display(), current, &root, &parent, &children, &count)) {
            return None;
        }
        if (children != nullptr) {
            XFree(children);
        }
        if (parent == root || parent == None) {
            return trap.failed() ? None : current;
        }
        current = parent;
    }
    return None;
}

void sendClientMessage(Connection& c, Window to, Window about, Atom type, long data0, long data1,
                       long mask) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = about;
    event.xclient.message_type = type;
    event.xclient.format = 32;
    event.xclient.data.l[0] = data0;
    event.xclient.data.l[1] = data1;
    XSendEvent(c.display(), to, False, mask, &event);
}

class X11WindowControl final : public IWindowControl {
public:
    explicit X11WindowControl(std::string displayName) : pool_(std::move(displayName)) {}

    bool connected() { return pool_.forThisThread() != nullptr; }

    std::vector<WindowHandle> topLevelWindows() override {
        std::vector<WindowHandle> handles;
        if (Connection* c = pool_.forThisThread()) {
            for (Window window : topLevelCandidates(*c)) {
                handles.push_back(window);
            }
        }
        return handles;
    }

    std::vector<WindowHandle> childWindows(WindowHandle window) override {
        std::vector<WindowHandle> handles;
        if (Connection* c = pool_.forThisThread(); c && plausible(window)) {
            for (Window child : descendants(*c, Window(window))) {
                handles.push_back(child);
            }
        }
        return handles;
    }

    WindowInfo describe(WindowHandle window) override {
        WindowInfo info;
        Connection* c = pool_.forThisThread();
        if (c == nullptr || !plausible(window)) {
            return info;
        }
        if (const auto rect = rectRelativeTo(*c, Window(window), c->root())) {
            info.window = window;
            info.title = windowTitle(*c, Window(window));
            info.className = windowClass(*c, Window(window));
            info.clientRect = *rect;
        }
        return info;
    }

    std::optional<Rect> outerRect(WindowHandle window) override {
        Connection* c = pool_.forThisThread();
        if (c == nullptr || !plausible(window)) {
            return std::nullopt;
        }
        const Window frame = frameOf(*c, Window(window));
        return frame == None ? std::nullopt : rectRelativeTo(*c, frame, c->root());
    }

    bool moveWindow(WindowHandle window, Point outerTopLeft) override {
        Connection* c = pool_.forThisThread();
        if (c == nullptr || !plausible(window) || !windowExists(*c, Window(window))) {
            return false;
        }
        // With the default north-west gravity a window manager puts the frame's corner where
        // the client asks; without one the window is its own frame.
        ErrorTrap trap(c->display());
        XMoveWindow(c->display(), Window(window), std::clamp(outerTopLeft.x, -32768, 32767),
                    std::clamp(outerTopLeft.y, -32768, 32767));
        XSync(c->display(), False);
        return !trap.failed();
    }

    bool resizeClient(WindowHandle window, int width, int height) override {
        Connection* c = pool_.forThisThread();
        if (c == nullptr || !plausible(window) || width <= 0 || height <= 0 ||
            width > kMaxWindowSide || height > kMaxWindowSide) {
            return false;
        }
        ErrorTrap trap(c->display());
        XResizeWindow(c->display(), Window(window), unsigned(width), unsigned(height));
        XSync(c->display(), False);
        return !trap.failed();
    }

    bool closeWindow(WindowHandle window) override {
        Connection* c = pool_.forThisThread();
        if (c == nullptr || !plausible(window) || !windowExists(*c, Window(window))) {
            return false;
        }
        ErrorTrap trap(c->display());
        const Atom protocols = XInternAtom(c->display(), "WM_PROTOCOLS", False);
        const Atom deleteWindow = XInternAtom(c->display(), "WM_DELETE_WINDOW", False);
        sendClientMessage(*c, Window(window), Window(window), protocols, long(deleteWindow),
                          CurrentTime, NoEventMask);
        XSync(c->display(), False);
        return !trap.failed();
    }

    bool activateWindow(WindowHandle window) override {
        Connection* c = pool_.forThisThread();
        if (c == nullptr || !plausible(window) || !isViewable(*c, Window(window))) {
            return false;
        }
        ErrorTrap trap(c->display());
        // A window manager decides through _NET_ACTIVE_WINDOW; on a bare server nobody
        // answers that, so the window is raised and focused directly as well.
        sendClientMessage(*c, c->root(), Window(window), c->atoms().netActiveWindow, 2, CurrentTime,
                          SubstructureRedirectMask | SubstructureNotifyMask);
        XRaiseWindow(c->display(), frameOf(*c, Window(window)));
        XSetInputFocus(c->display(), Window(window), RevertToParent, CurrentTime);
        XSync(c->display(), False);
        return !trap.failed();
    }

private:
    ConnectionPool pool_;
};

}  // namespace
}  // namespace x11

std::unique_ptr<IWindowControl> makeX11WindowControl(const char* display) {
    XInitThreads();
    x11::installErrorHandler();
    auto control = std::make_unique<x11::X11WindowControl>(display != nullptr ? display : "");
    // Open the calling thread's connection now, so that a bad display fails here.
    return control->connected() ? std::move(control) : nullptr;
}

}  // namespace autoscene::platform
