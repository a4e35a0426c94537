#include "x11/HitTest.h"

namespace autoscene::platform::x11 {

bool containsInclusive(Rect rect, Point point) {
    return point.x >= rect.x && point.x <= rect.x + rect.width && point.y >= rect.y &&
           point.y <= rect.y + rect.height;
}

Point toLocal(Rect rect, Point point) {
    return Point{point.x - rect.x, point.y - rect.y};
}

}  // namespace autoscene::platform::x11
