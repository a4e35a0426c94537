#pragma once
// The contract between the portable window target and the platform back ends
// (x11/, win32/). Standard C++ only: the back ends know nothing of Qt or OpenCV.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/MouseOp.h"

namespace autoscene::platform {

// A native window (X11 Window, Win32 HWND) as an opaque integer; 0 is no window.
using WindowHandle = std::uint64_t;

struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

struct Rect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// 8-bit BGRA, rows top-down, `stride` bytes per row. Empty means no frame. The portable
// core wraps `pixels` as a cv::Mat without copying.
struct BgraFrame {
    int width = 0;
    int height = 0;
    int stride = 0;
    std::vector<std::uint8_t> pixels;

    bool empty() const { return width <= 0 || height <= 0 || pixels.empty(); }
};

// Borrowed BGRA pixels, valid only while the consumer runs.
struct BgraView {
    int width = 0;
    int height = 0;
    int stride = 0;
    const std::uint8_t* pixels = nullptr;
};
using FrameConsumer = std::function<void(const BgraView&)>;

enum class KeyOp : int {
    Click = 0,  // press and release
    Down = 1,
    Up = 2,
    System = 3,  // background: system-key down and up whatever the key
};

// Which windows a task drives. Strings are in the system's local 8-bit encoding
// (UTF-8 on X11, the ANSI code page on Windows), compared case-sensitively.
struct WindowQuery {
    std::string title;
    bool fullMatchTitle = false;
    std::string className;
    std::string childTitle;
    std::string childClassName;
};

// Where input goes: the top-level window and, when the task names one, the child
// window that receives background input instead.
struct InputTarget {
    WindowHandle window = 0;
    WindowHandle child = 0;
};

struct WindowInfo {
    WindowHandle window = 0;
    std::string title;
    std::string className;
    Rect clientRect;  // client area in screen coordinates
};

// One desktop session's capture and input. Coordinates of input calls are client
// coordinates of the top-level window; a null window means screen coordinates.
// Implementations are safe to call from several runner threads at once.
class IDesktopBackend {
public:
    virtual ~IDesktopBackend() = default;

    // Visible top-level windows not owned by this process, in candidate order
    // (foreground window first, then z-order).
    virtual std::vector<WindowHandle> topLevelWindows() = 0;
    virtual bool isWindow(WindowHandle window) = 0;
    virtual WindowInfo describe(WindowHandle window) = 0;
    // True when the window matches the top-level part of the query.
    virtual bool matches(WindowHandle window, const WindowQuery& query) = 0;
    // The first descendant matching the query's child part, or 0.
    virtual WindowHandle findChild(WindowHandle window, const WindowQuery& query) = 0;

    // Window 0 captures the whole screen. Empty frame on failure.
    virtual BgraFrame capture(WindowHandle window, bool background) = 0;
    // Hands the captured pixels to `consume` straight from the back end's own buffer where it
    // keeps one (a shared-memory segment), saving a full-frame copy per cycle. False, and
    // `consume` not called, when nothing could be captured.
    virtual bool captureView(WindowHandle window, bool background, const FrameConsumer& consume) {
        const BgraFrame frame = capture(window, background);
        if (frame.empty()) {
            return false;
        }
        consume(BgraView{frame.width, frame.height, frame.stride, frame.pixels.data()});
        return true;
    }

    // Foreground input is only called on the thread that owns foreground input;
    // the portable layer enforces that rule.
    virtual void mouse(const InputTarget& target, Point point, MouseOp op, int pressMs,
                       bool background) = 0;
    virtual void wheel(const InputTarget& target, int steps, Point point, bool background) = 0;
    virtual void key(const InputTarget& target, int virtualKey, KeyOp op, bool background) = 0;
    // Always typed in the foreground; UTF-8 text.
    virtual void inputText(const InputTarget& target, const std::string& utf8) = 0;

    // Resizes the window's client area; false when the window is gone.
    virtual bool resizeClient(WindowHandle window, int width, int height) = 0;

    // True once the display server has gone away and cannot be reached again.
    virtual bool displayLost() { return false; }
};

}  // namespace autoscene::platform
