#pragma once
// Choosing a window with a crosshair on X11: an active grab of the pointer (and of the
// keyboard, for Escape) on a connection of its own.

#include <memory>

#include "desktop/WindowPicker.h"

namespace autoscene::platform {

// Null when the display cannot be opened; `display` null means $DISPLAY.
std::unique_ptr<IWindowPicker> makeX11WindowPicker(const char* display);

}  // namespace autoscene::platform
