#include "win32/BackgroundInput.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "desktop/MouseSteps.h"
#include "win32/MessageParams.h"
#include "win32/Win32Handles.h"
#include "win32/WindowDiscovery.h"

namespace autoscene::platform::win32 {
namespace {

void sleepMs(int durationMs) {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::max(durationMs, 0)));
}

}  // namespace

BackgroundInput::BackgroundInput(std::mutex& inputMutex, LogSink log)
    : inputMutex_(inputMutex), log_(std::move(log)) {}

std::vector<HWND> BackgroundInput::windowList(const InputTarget& target) {
    if (target.child != 0) {
        return {toHwnd(target.child)};
    }
    std::vector<HWND> windows{toHwnd(target.window)};
    for (HWND descendant : descendantWindows(windows.front())) {
        if (descendant != windows.front()) {
            windows.push_back(descendant);
        }
    }
    return windows;
}

bool BackgroundInput::windowExists(const InputTarget& target) const {
    if (target.window != 0 && IsWindow(toHwnd(target.window))) {
        return true;
    }
    if (log_) {
        log_("窗口不存在");
    }
    return false;
}

void BackgroundInput::postByHitTest(HWND topLevel, const std::vector<HWND>& windows, UINT message,
                                    WPARAM wParam, Point point) {
    if (point.x < 0 || point.y < 0) {
        return;
    }
    for (HWND window : windows) {
        RECT client{};
        if (!GetClientRect(window, &client)) {
            continue;
        }
        MapWindowPoints(window, topLevel, reinterpret_cast<POINT*>(&client), 2);
        const Rect rect{client.left, client.top, client.right - client.left,
                        client.bottom - client.top};
        if (containsInclusive(rect, point)) {
            const Point local{point.x - rect.x, point.y - rect.y};
            PostMessageW(window, message, wParam, static_cast<LPARAM>(packPointLParam(local)));
        }
    }
}

void BackgroundInput::mouse(const InputTarget& target, Point point, MouseOp op, int pressMs) {
    if (!windowExists(target)) {
        return;
    }
    HWND topLevel = toHwnd(target.window);
    const std::vector<HWND> windows = windowList(target);
    postByHitTest(topLevel, windows, WM_MOUSEMOVE, MK_LBUTTON, point);

    const std::lock_guard lock(inputMutex_);
    for (const MouseStep& step : backgroundMouseSteps(op, point, pressedPoints_)) {
        const bool left = step.button == MouseButton::Left;
        const WPARAM held = left ? MK_LBUTTON : MK_RBUTTON;
        switch (step.kind) {
            case MouseStepKind::Down:
                postByHitTest(topLevel, windows, left ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, held,
                              step.point);
                break;
            case MouseStepKind::Hold:
                sleepMs(pressMs);
                break;
            case MouseStepKind::Release:
            case MouseStepKind::Up:
                postByHitTest(topLevel, windows, left ? WM_LBUTTONUP : WM_RBUTTONUP, held,
                              step.point);
                break;
        }
    }
}

void BackgroundInput::wheel(const InputTarget& target, int steps, Point point) {
    if (!windowExists(target)) {
        return;
    }
    HWND topLevel = toHwnd(target.window);
    const std::vector<HWND> windows = windowList(target);
    postByHitTest(topLevel, windows, WM_MOUSEMOVE, MK_LBUTTON, point);
    for (HWND window : windows) {
        PostMessageW(window, WM_MOUSEWHEEL, static_cast<WPARAM>(wheelWParam(steps)),
                     static_cast<LPARAM>(packPointLParam(point)));
    }
}

void BackgroundInput::key(const InputTarget& target, int virtualKey, KeyOp op) {
    if (target.window == 0 && target.child == 0) {
        return;  // a null window would post to this thread's own queue
    }
    const bool system = isSystemKey(virtualKey) || op == KeyOp::System;
    const UINT down = system ? WM_SYSKEYDOWN : WM_KEYDOWN;
    const UINT up = system ? WM_SYSKEYUP : WM_KEYUP;
    const auto wParam = static_cast<WPARAM>(virtualKey);
    const std::vector<HWND> windows = windowList(target);
    const auto postToAll = [&windows, wParam](UINT message) {
        for (HWND window : windows) {
            PostMessageW(window, message, wParam, 0);
        }
    };
    if (op != KeyOp::Up) {
        postToAll(down);
    }
    if (op != KeyOp::Down) {
        postToAll(up);
    }
}

}  // namespace autoscene::platform::win32
