#include "x11/X11Backend.h"

#include <algorithm>
#include <mutex>

#include "x11/Activation.h"
#include "x11/Capture.h"
#include "x11/Connection.h"
#include "x11/ErrorTrap.h"
#include "x11/ImageTransfer.h"
#include "x11/Input.h"
#include "x11/InputTiming.h"
#include "x11/VirtualKeys.h"
#include "x11/WindowMatch.h"
#include "x11/WindowTree.h"

namespace autoscene::platform {
namespace x11 {
namespace {

Window toWindow(WindowHandle handle) {
    return static_cast<Window>(handle);
}

// X resource ids are 29-bit; larger handles cannot name a window.
bool plausibleWindow(WindowHandle handle) {
    return handle != 0 && handle < (1ULL << 29);
}

constexpr int kMaxWindowSide = 32767;
constexpr int kMaxWheelSteps = 1000;
constexpr int kRepaintAfterRaiseMs = 100;

// The protocol carries 16-bit coordinates; clamping keeps the arithmetic on them in range.
Point protocolPoint(Point point) {
    return Point{std::clamp(point.x, -32768, 32767), std::clamp(point.y, -32768, 32767)};
}

class X11Backend final : public IDesktopBackend {
public:
    X11Backend(std::string displayName, LogSink log)
        : pool_(std::move(displayName)),
          log_(std::move(log)),
          background_(inputMutex_, pressedPoints_, log_),
          foreground_(inputMutex_) {}

    Connection* connection() { return pool_.forThisThread(); }

    std::vector<WindowHandle> topLevelWindows() override {
        std::vector<WindowHandle> handles;
        if (Connection* c = connection()) {
            for (Window window : topLevelCandidates(*c)) {
                handles.push_back(window);
            }
        }
        return handles;
    }

    bool isWindow(WindowHandle window) override {
        Connection* c = connection();
        return c != nullptr && plausibleWindow(window) && windowExists(*c, toWindow(window));
    }

    WindowInfo describe(WindowHandle window) override {
        WindowInfo info;
        Connection* c = connection();
        if (c == nullptr || !plausibleWindow(window)) {
            return info;
        }
        const auto rect = rectRelativeTo(*c, toWindow(window), c->root());
        if (!rect) {
            return info;
        }
        info.window = window;
        info.title = windowTitle(*c, toWindow(window));
        info.className = windowClass(*c, toWindow(window));
        info.clientRect = *rect;
        return info;
    }

    bool matches(WindowHandle window, const WindowQuery& query) override {
        Connection* c = connection();
        if (c == nullptr || !plausibleWindow(window)) {
            return false;
        }
        return topLevelMatches(windowTitle(*c, toWindow(window)), windowClass(*c, toWindow(window)),
                               query);
    }

    WindowHandle findChild(WindowHandle window, const WindowQuery& query) override {
        Connection* c = connection();
        if (c == nullptr || !plausibleWindow(window)) {
            return 0;
        }
        for (Window child : descendants(*c, toWindow(window))) {
            if (childMatches(windowTitle(*c, child), windowClass(*c, child), query)) {
                return child;
            }
        }
        return 0;
    }

    BgraFrame capture(WindowHandle window, bool background) override {
        BgraFrame frame;
        captureView(window, background,
                    [&frame](const BgraView& view) { copyOpaque(view, frame); });
        return frame;
    }

    // The view points into this thread's shared segment: a consumer must not capture again
    // on the same thread before it returns.
    bool captureView(WindowHandle window, bool background, const FrameConsumer& consume) override {
        Connection* c = connection();
        if (c == nullptr || (window != 0 && !plausibleWindow(window))) {
            return false;
        }
        if (background && window != 0) {
            return captureComposited(*c, toWindow(window), consume);
        }
        if (window != 0 && coveredByAnother(*c, toWindow(window))) {
            // A screen capture shows what is on top: bring the window forward first, and give
            // it a moment to paint what was hidden.
            std::lock_guard lock(inputMutex_);
            activate(*c, toWindow(window));
            XSync(c->display(), False);
            sleepMs(kRepaintAfterRaiseMs);
        }
        return captureScreen(*c, toWindow(window), log_, consume);
    }

    void mouse(const InputTarget& target, Point point, MouseOp op, int pressMs,
               bool background) override {
        Connection* c = connection();
        if (c == nullptr || !validTarget(target)) {
            return;
        }
        if (background) {
            background_.mouse(*c, target, protocolPoint(point), op, pressMs);
        } else {
            foreground_.mouse(*c, target, protocolPoint(point), op, pressMs);
        }
    }

    void wheel(const InputTarget& target, int steps, Point point, bool background) override {
        Connection* c = connection();
        if (c == nullptr || !validTarget(target)) {
            return;
        }
        const int clampedSteps = std::clamp(steps, -kMaxWheelSteps, kMaxWheelSteps);
        if (background) {
            background_.wheel(*c, target, clampedSteps, protocolPoint(point));
        } else {
            foreground_.wheel(*c, target, clampedSteps, protocolPoint(point));
        }
    }

    void key(const InputTarget& target, int virtualKey, KeyOp op, bool background) override {
        Connection* c = connection();
        const KeySym keysym = keysymForVirtualKey(virtualKey);
        if (c == nullptr || !validTarget(target) || keysym == NoSymbol) {
            return;
        }
        if (background) {
            background_.key(*c, target, keysym, op);
        } else {
            foreground_.key(*c, target, keysym, op);
        }
    }

    void inputText(const InputTarget& target, const std::string& utf8) override {
        Connection* c = connection();
        if (c != nullptr && validTarget(target)) {
            foreground_.text(*c, target, utf8);
        }
    }

    bool resizeClient(WindowHandle window, int width, int height) override {
        Connection* c = connection();
        if (c == nullptr || !plausibleWindow(window) || width <= 0 || height <= 0 ||
            width > kMaxWindowSide || height > kMaxWindowSide) {
            return false;
        }
        ErrorTrap trap(c->display());
        XResizeWindow(c->display(), toWindow(window), static_cast<unsigned>(width),
                      static_cast<unsigned>(height));
        return !trap.failed();
    }

    bool displayLost() override {
        // A round trip finds a server that went away; a lost connection is opened again
        // once, in case the server came back.
        Connection* c = connection();
        if (c == nullptr) {
            return true;
        }
        XSync(c->display(), False);
        return c->lost() && connection() == nullptr;
    }

private:
    static bool validTarget(const InputTarget& target) {
        return (target.window == 0 || plausibleWindow(target.window)) &&
               (target.child == 0 || plausibleWindow(target.child));
    }

    ConnectionPool pool_;
    LogSink log_;
    std::mutex inputMutex_;
    PressedPoints pressedPoints_;
    BackgroundInput background_;
    ForegroundInput foreground_;
};

}  // namespace

}  // namespace x11

std::unique_ptr<IDesktopBackend> makeX11Backend(const char* display, x11::LogSink log) {
    XInitThreads();
    x11::installErrorHandler();
    auto backend =
        std::make_unique<x11::X11Backend>(display != nullptr ? display : "", std::move(log));
    // Open the calling thread's connection now, so that a bad display fails here.
    if (backend->connection() == nullptr) {
        return nullptr;
    }
    return backend;
}

}  // namespace autoscene::platform
