#pragma once
// Choosing a window with a crosshair on Windows: a nearly transparent top-most window over
// the whole virtual screen takes the click, then steps aside for WindowFromPoint.

#include <cstdint>

#include "desktop/WindowPicker.h"

namespace autoscene::platform::win32 {

class Win32WindowPicker final : public IWindowPicker {
public:
    Win32WindowPicker() = default;
    ~Win32WindowPicker() override;
    Win32WindowPicker(const Win32WindowPicker&) = delete;
    Win32WindowPicker& operator=(const Win32WindowPicker&) = delete;

    bool begin() override;
    WindowPick poll() override;
    void cancel() override;

    // The overlay's messages; public for its window procedure.
    void onMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);

private:
    void* overlay_ = nullptr;  // HWND
    bool pressed_ = false;
    WindowPick result_;
};

}  // namespace autoscene::platform::win32
