#pragma once
// The arithmetic of posted input messages and screen cropping, kept apart from the
// calls that use it so that tests can check it directly. No Windows headers.

#include <cstdint>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::win32 {

// lParam of a mouse message: y in the high word, x in the low word, each cut to 16 bits.
std::uint32_t packPointLParam(Point clientPoint);

// wParam of WM_MOUSEWHEEL: steps of 120 as a 16-bit value in the high word.
std::uint32_t wheelWParam(int steps);

// True when the point lies inside the rectangle, right and bottom edges included.
bool containsInclusive(const Rect& rect, Point point);

// The part of the screen that a foreground capture of a client area returns: the origin
// clamped onto the screen, the size cut only where it would pass the right or bottom
// edge. Width or height 0 when nothing is left.
Rect screenCropOfClient(Point clientOrigin, int clientWidth, int clientHeight, int screenWidth,
                        int screenHeight);

// Shift, Control and Alt go out as system-key messages in the background.
bool isSystemKey(int virtualKey);

}  // namespace autoscene::platform::win32
