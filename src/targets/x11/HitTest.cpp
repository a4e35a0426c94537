#include "HitTest.h"

namespace autoscene::targets::x11 {

bool containsInclusive(Rect rect, Point point) {
    return point.x >= rect.x && point.x <= rect.x + rect.width && point.y >= rect.y &&
           point.y <= rect.y + rect.height;
}

Point toLocal(Rect rect, Point point) {
    return Point{point.x - rect.x, point.y - rect.y};
}

}  // namespace autoscene::targets::x11
