#pragma once
// Where a foreground capture reads the screen for a window's client rectangle.

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::x11 {

// The origin is clamped into the screen; the size is the client size, shortened where it
// would pass the right or bottom edge. A client rectangle starting left of or above the
// screen is therefore read from column or row 0 with its full size. A zero width or height
// means there is nothing to read.
Rect cropToScreen(Rect client, int screenWidth, int screenHeight);

}  // namespace autoscene::platform::x11
