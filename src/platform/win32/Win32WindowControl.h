#pragma once
// Window management on Windows: listing, moving, resizing, closing (WM_CLOSE, as the close
// button) and bringing windows to the foreground.

#include "desktop/WindowControl.h"
#include "win32/Win32Backend.h"

namespace autoscene::platform::win32 {

class Win32WindowControl final : public IWindowControl {
public:
    std::vector<WindowHandle> topLevelWindows() override;
    std::vector<WindowHandle> childWindows(WindowHandle window) override;
    WindowInfo describe(WindowHandle window) override;
    std::optional<Rect> outerRect(WindowHandle window) override;
    bool moveWindow(WindowHandle window, Point outerTopLeft) override;
    bool resizeClient(WindowHandle window, int width, int height) override;
    bool closeWindow(WindowHandle window) override;
    bool activateWindow(WindowHandle window) override;

private:
    // Discovery, description and client sizing are the back end's own.
    Win32Backend backend_;
};

}  // namespace autoscene::platform::win32
