#include "win32/Win32WindowControl.h"

#include "win32/Win32Handles.h"
#include "win32/WindowDiscovery.h"

namespace autoscene::platform::win32 {

std::vector<WindowHandle> Win32WindowControl::topLevelWindows() {
    return backend_.topLevelWindows();
}

std::vector<WindowHandle> Win32WindowControl::childWindows(WindowHandle window) {
    std::vector<WindowHandle> handles;
    if (backend_.isWindow(window)) {
        for (HWND child : descendantWindows(toHwnd(window))) {
            handles.push_back(toHandle(child));
        }
    }
    return handles;
}

WindowInfo Win32WindowControl::describe(WindowHandle window) {
    return backend_.describe(window);
}

std::optional<Rect> Win32WindowControl::outerRect(WindowHandle window) {
    RECT rect{};
    if (!backend_.isWindow(window) || !GetWindowRect(toHwnd(window), &rect)) {
        return std::nullopt;
    }
    return Rect{rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

bool Win32WindowControl::moveWindow(WindowHandle window, Point outerTopLeft) {
    return backend_.isWindow(window) &&
           SetWindowPos(toHwnd(window), nullptr, outerTopLeft.x, outerTopLeft.y, 0, 0,
                        SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != 0;
}

bool Win32WindowControl::resizeClient(WindowHandle window, int width, int height) {
    return backend_.resizeClient(window, width, height);
}

bool Win32WindowControl::closeWindow(WindowHandle window) {
    return backend_.isWindow(window) && PostMessageW(toHwnd(window), WM_CLOSE, 0, 0) != 0;
}

bool Win32WindowControl::activateWindow(WindowHandle window) {
    if (!backend_.isWindow(window)) {
        return false;
    }
    HWND hwnd = toHwnd(window);
    if (IsIconic(hwnd)) {
        ShowWindow(hwnd, SW_RESTORE);
    }
    return SetForegroundWindow(hwnd) != 0;
}

}  // namespace autoscene::platform::win32
