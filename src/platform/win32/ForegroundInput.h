#pragma once
// Real input through the system input queue after bringing the window to the front.
// Every call holds the input mutex for its whole sequence.

#include <windows.h>

#include <mutex>
#include <string>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::win32 {

class ForegroundInput {
public:
    explicit ForegroundInput(std::mutex& inputMutex);

    void mouse(HWND window, Point point, MouseOp op, int pressMs);
    void wheel(HWND window, int steps, Point point);
    void key(HWND window, int virtualKey, KeyOp op);
    // One Unicode key down and up per UTF-16 unit, 10 ms apart, after a 5 ms pause.
    void text(HWND window, const std::wstring& text);

private:
    std::mutex& inputMutex_;
};

}  // namespace autoscene::platform::win32
