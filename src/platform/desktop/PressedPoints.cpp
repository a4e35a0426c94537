#include "desktop/PressedPoints.h"

namespace autoscene::platform {

void PressedPoints::record(Point point) {
    std::lock_guard lock(mutex_);
    points_[std::this_thread::get_id()] = point;
}

Point PressedPoints::take() {
    std::lock_guard lock(mutex_);
    const auto found = points_.find(std::this_thread::get_id());
    if (found == points_.end()) {
        return Point{};
    }
    const Point point = found->second;
    points_.erase(found);
    return point;
}

}  // namespace autoscene::platform
