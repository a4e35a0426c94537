#include "win32/ForegroundInput.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "desktop/MouseSteps.h"

namespace autoscene::platform::win32 {
namespace {

constexpr DWORD kLeftDown = 0x8002;  // MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_LEFTDOWN
constexpr DWORD kLeftUp = 0x8004;
constexpr DWORD kRightDown = 0x8008;
constexpr DWORD kRightUp = 0x8010;
constexpr DWORD kPlainLeftUp = 0x0004;
constexpr DWORD kPlainRightUp = 0x0010;
constexpr int kTextStartPauseMs = 5;
constexpr int kTextUnitPauseMs = 10;

void sleepMs(int durationMs) {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::max(durationMs, 0)));
}

// Brings the window to the front and places the cursor at the point, which is in client
// coordinates of the window or, without one, in screen coordinates. Returns the point
// in screen coordinates.
POINT bringToFrontAndPlaceCursor(HWND window, Point point) {
    POINT screen{point.x, point.y};
    if (IsWindow(window)) {
        SetForegroundWindow(window);
        ClientToScreen(window, &screen);
    }
    if (point.x >= 0 && point.y >= 0) {
        SetCursorPos(screen.x, screen.y);
    }
    return screen;
}

void sendMouse(DWORD flags, POINT screen) {
    mouse_event(flags, static_cast<DWORD>(screen.x), static_cast<DWORD>(screen.y), 0, 0);
}

void sendKeyboardRecord(WORD virtualKey, WORD scan, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof(INPUT));
}

}  // namespace

ForegroundInput::ForegroundInput(std::mutex& inputMutex) : inputMutex_(inputMutex) {}

void ForegroundInput::mouse(HWND window, Point point, MouseOp op, int pressMs) {
    const std::lock_guard lock(inputMutex_);
    const POINT screen = bringToFrontAndPlaceCursor(window, point);
    // No move flag is set, so the system ignores the coordinates; a separate up is sent
    // without them.
    for (const MouseStep& step : foregroundMouseSteps(op, point)) {
        const bool left = step.button == MouseButton::Left;
        switch (step.kind) {
            case MouseStepKind::Down:
                sendMouse(left ? kLeftDown : kRightDown, screen);
                break;
            case MouseStepKind::Hold:
                sleepMs(pressMs);
                break;
            case MouseStepKind::Release:
                sendMouse(left ? kLeftUp : kRightUp, screen);
                break;
            case MouseStepKind::Up:
                sendMouse(left ? kPlainLeftUp : kPlainRightUp, POINT{0, 0});
                break;
        }
    }
}

void ForegroundInput::wheel(HWND window, int steps, Point point) {
    const std::lock_guard lock(inputMutex_);
    bringToFrontAndPlaceCursor(window, point);
    const auto delta = static_cast<DWORD>(static_cast<long long>(steps) * WHEEL_DELTA);
    mouse_event(MOUSEEVENTF_WHEEL, 0, 0, delta, 0);
}

void ForegroundInput::key(HWND window, int virtualKey, KeyOp op) {
    const std::lock_guard lock(inputMutex_);
    if (IsWindow(window)) {
        SetForegroundWindow(window);
    }
    const auto code = static_cast<WORD>(virtualKey);
    if (op != KeyOp::Up) {
        sendKeyboardRecord(code, 0, 0);
    }
    if (op != KeyOp::Down) {
        sendKeyboardRecord(code, 0, KEYEVENTF_KEYUP);
    }
}

void ForegroundInput::text(HWND window, const std::wstring& text) {
    const std::lock_guard lock(inputMutex_);
    if (IsWindow(window)) {
        SetForegroundWindow(window);
    }
    sleepMs(kTextStartPauseMs);
    for (const wchar_t unit : text) {
        const auto scan = static_cast<WORD>(unit);
        sendKeyboardRecord(0, scan, KEYEVENTF_UNICODE);
        sendKeyboardRecord(0, scan, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
        sleepMs(kTextUnitPauseMs);
    }
}

}  // namespace autoscene::platform::win32
