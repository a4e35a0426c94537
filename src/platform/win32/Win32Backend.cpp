#include "win32/Win32Backend.h"

#include "win32/GdiCapture.h"
#include "win32/TextEncoding.h"
#include "win32/Win32Handles.h"
#include "win32/WindowDiscovery.h"

namespace autoscene::platform::win32 {
namespace {

constexpr int kMaxClientSidePixels = 32768;

LogSink debugOutputUnlessGiven(LogSink log) {
    if (log) {
        return log;
    }
    return [](const std::string& line) {
        const std::wstring wide = toUtf16(line + "\n", CP_UTF8);
        OutputDebugStringW(wide.c_str());
    };
}

}  // namespace

Win32Backend::Win32Backend(LogSink log)
    : log_(debugOutputUnlessGiven(std::move(log))),
      background_(inputMutex_, log_),
      foreground_(inputMutex_) {}

std::vector<WindowHandle> Win32Backend::topLevelWindows() {
    std::vector<WindowHandle> handles;
    for (HWND window : candidateTopLevelWindows()) {
        handles.push_back(toHandle(window));
    }
    return handles;
}

bool Win32Backend::isWindow(WindowHandle window) {
    return window != 0 && IsWindow(toHwnd(window));
}

WindowInfo Win32Backend::describe(WindowHandle window) {
    WindowInfo info;
    HWND hwnd = toHwnd(window);
    if (!isWindow(window)) {
        return info;
    }
    info.window = window;
    info.title = windowText(hwnd);
    info.className = windowClassName(hwnd);
    RECT client{};
    POINT origin{0, 0};
    if (GetClientRect(hwnd, &client) && ClientToScreen(hwnd, &origin)) {
        info.clientRect = Rect{origin.x, origin.y, client.right, client.bottom};
    }
    return info;
}

bool Win32Backend::matches(WindowHandle window, const WindowQuery& query) {
    return isWindow(window) && matchesTopLevel(toHwnd(window), query);
}

WindowHandle Win32Backend::findChild(WindowHandle window, const WindowQuery& query) {
    if (!isWindow(window)) {
        return 0;
    }
    return toHandle(findMatchingChild(toHwnd(window), query));
}

BgraFrame Win32Backend::capture(WindowHandle window, bool background) {
    if (background && window != 0) {
        return captureFromWindowDc(toHwnd(window));
    }
    return captureFromScreen(toHwnd(window), log_);
}

void Win32Backend::mouse(const InputTarget& target, Point point, MouseOp op, int pressMs,
                         bool background) {
    if (background) {
        background_.mouse(target, point, op, pressMs);
    } else {
        foreground_.mouse(toHwnd(target.window), point, op, pressMs);
    }
}

void Win32Backend::wheel(const InputTarget& target, int steps, Point point, bool background) {
    if (background) {
        background_.wheel(target, steps, point);
    } else {
        foreground_.wheel(toHwnd(target.window), steps, point);
    }
}

void Win32Backend::key(const InputTarget& target, int virtualKey, KeyOp op, bool background) {
    // Virtual keys are one byte; anything wider (a Qt key code, say) would be cut to a
    // different key by the 16-bit input record.
    if (virtualKey <= 0 || virtualKey > 0xFE) {
        log_("invalid virtual key " + std::to_string(virtualKey));
        return;
    }
    if (background) {
        background_.key(target, virtualKey, op);
    } else {
        foreground_.key(toHwnd(target.window), virtualKey, op);
    }
}

void Win32Backend::inputText(const InputTarget& target, const std::string& utf8) {
    foreground_.text(toHwnd(target.window), toUtf16(utf8, CP_UTF8));
}

bool Win32Backend::resizeClient(WindowHandle window, int width, int height) {
    HWND hwnd = toHwnd(window);
    if (!isWindow(window) || width <= 0 || height <= 0 || width > kMaxClientSidePixels ||
        height > kMaxClientSidePixels) {
        return false;
    }
    RECT frame{0, 0, width, height};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(hwnd, GWL_STYLE));
    const auto exStyle = static_cast<DWORD>(GetWindowLongPtrW(hwnd, GWL_EXSTYLE));
    const bool hasMenu = !(style & WS_CHILD) && GetMenu(hwnd) != nullptr;
    AdjustWindowRectEx(&frame, style, hasMenu, exStyle);
    return SetWindowPos(hwnd, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                        SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE) != 0;
}

}  // namespace autoscene::platform::win32
