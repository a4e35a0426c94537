#pragma once
// Window management that scripts ask for: listing, moving, resizing, closing and raising
// windows. Apart from the capture and input contract, which runs tasks without it.

#include <memory>
#include <optional>
#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform {

class IWindowControl {
public:
    virtual ~IWindowControl() = default;

    // Visible top-level windows of every process, in the order the desktop stacks them.
    virtual std::vector<WindowHandle> topLevelWindows() = 0;
    // Every descendant, depth first, each parent before its children.
    virtual std::vector<WindowHandle> childWindows(WindowHandle window) = 0;
    // Title, class and client rectangle; `window` 0 when it is gone.
    virtual WindowInfo describe(WindowHandle window) = 0;
    // Frame included, in screen coordinates; nothing when the window is gone.
    virtual std::optional<Rect> outerRect(WindowHandle window) = 0;
    // Each is false when the window is gone or the request was refused.
    virtual bool moveWindow(WindowHandle window, Point outerTopLeft) = 0;
    virtual bool resizeClient(WindowHandle window, int width, int height) = 0;
    // Asks the window to close, as its close button does; it may refuse or take its time.
    virtual bool closeWindow(WindowHandle window) = 0;
    // Raises the window and gives it the keyboard focus.
    virtual bool activateWindow(WindowHandle window) = 0;
};

}  // namespace autoscene::platform
