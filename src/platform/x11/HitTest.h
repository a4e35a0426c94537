#pragma once
// Which windows a background mouse event goes to.

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::x11 {

// Both edges are inclusive: a point on the right or bottom edge (x == x + width) is inside.
bool containsInclusive(Rect rect, Point point);

// The point in the coordinates of a window whose rectangle is `rect`.
Point toLocal(Rect rect, Point point);

}  // namespace autoscene::platform::x11
