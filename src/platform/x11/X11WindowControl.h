#pragma once
// Window management on an X display: ICCCM requests, so that a window manager, where one
// runs, does the moving and closing.

#include <memory>

#include "desktop/WindowControl.h"

namespace autoscene::platform {

// Null when the display cannot be opened; `display` null means $DISPLAY.
std::unique_ptr<IWindowControl> makeX11WindowControl(const char* display);

}  // namespace autoscene::platform
