#include "win32/Win32WindowPicker.h"

#include "win32/Win32Handles.h"

namespace autoscene::platform::win32 {

namespace {

constexpr wchar_t kOverlayClass[] = L"AutosceneWindowPicker";

LRESULT CALLBACK overlayProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* picker = reinterpret_cast<Win32WindowPicker*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (picker != nullptr) {
        picker->onMessage(message, wParam, lParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool registerOverlayClass() {
    static const bool registered = [] {
        WNDCLASSW overlayClass{};
        overlayClass.lpfnWndProc = overlayProc;
        overlayClass.hInstance = GetModuleHandleW(nullptr);
        overlayClass.hCursor = LoadCursorA(nullptr, IDC_CROSS);
        overlayClass.lpszClassName = kOverlayClass;
        return RegisterClassW(&overlayClass) != 0;
    }();
    return registered;
}

// The top-level window under the screen point, or 0 over the desktop itself.
WindowHandle topLevelAt(POINT point) {
    const HWND under = WindowFromPoint(point);
    const HWND top = under == nullptr ? nullptr : GetAncestor(under, GA_ROOT);
    if (top == nullptr || top == GetDesktopWindow() || top == GetShellWindow()) {
        return 0;
    }
    return toHandle(top);
}

}  // namespace

Win32WindowPicker::~Win32WindowPicker() {
    cancel();
}

bool Win32WindowPicker::begin() {
    cancel();
    if (!registerOverlayClass()) {
        return false;
    }
    const int x = GetSystemMetrics(SM_XVIRTUALSCREEN);
    const int y = GetSystemMetrics(SM_YVIRTUALSCREEN);
    const int width = GetSystemMetrics(SM_CXVIRTUALSCREEN);
    const int height = GetSystemMetrics(SM_CYVIRTUALSCREEN);
    const HWND overlay = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_LAYERED,
                                         kOverlayClass, L"", WS_POPUP, x, y, width, height, nullptr,
                                         nullptr, GetModuleHandleW(nullptr), nullptr);
    if (overlay == nullptr) {
        return false;
    }
    // Fully transparent windows let clicks through; one step above keeps them.
    SetLayeredWindowAttributes(overlay, 0, 1, LWA_ALPHA);
    SetWindowLongPtrW(overlay, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ShowWindow(overlay, SW_SHOW);
    SetForegroundWindow(overlay);
    SetCapture(overlay);
    overlay_ = overlay;
    pressed_ = false;
    result_ = {};
    return true;
}

void Win32WindowPicker::onMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (result_.state != WindowPick::State::Waiting) {
        return;
    }
    switch (message) {
        case WM_LBUTTONDOWN:
            pressed_ = true;
            break;
        case WM_LBUTTONUP:
            if (pressed_) {
                // Client coordinates of the overlay, which starts at the virtual screen's
                // corner; the overlay must be gone before looking under the point.
                POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
                ClientToScreen(static_cast<HWND>(overlay_), &point);
                cancel();
                const WindowHandle window = topLevelAt(point);
                result_ = {window == 0 ? WindowPick::State::Cancelled : WindowPick::State::Picked,
                           window};
            }
            break;
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_CAPTURECHANGED:
            result_ = {WindowPick::State::Cancelled, 0};
            break;
        case WM_KEYDOWN:
            if (wParam == VK_ESCAPE) {
                result_ = {WindowPick::State::Cancelled, 0};
            }
            break;
        default:
            break;
    }
}

WindowPick Win32WindowPicker::poll() {
    // The caller's event loop may dispatch the overlay's messages already; a caller without
    // one relies on this.
    MSG message;
    while (overlay_ != nullptr &&
           PeekMessageW(&message, static_cast<HWND>(overlay_), 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (overlay_ == nullptr && result_.state == WindowPick::State::Waiting) {
        return {WindowPick::State::Cancelled, 0};
    }
    if (result_.state != WindowPick::State::Waiting) {
        cancel();
    }
    return result_;
}

void Win32WindowPicker::cancel() {
    if (overlay_ == nullptr) {
        return;
    }
    const HWND overlay = static_cast<HWND>(overlay_);
    overlay_ = nullptr;  // before the messages that destroying sends
    SetWindowLongPtrW(overlay, GWLP_USERDATA, 0);
    ReleaseCapture();
    DestroyWindow(overlay);
}

}  // namespace autoscene::platform::win32
