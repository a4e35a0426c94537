#pragma once
// Where each runner thread last pressed or moved in the background, so that a later
// "up" on the same thread lands at the same place.

#include <map>
#include <mutex>
#include <thread>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform {

class PressedPoints {
public:
    void record(Point point);
    // The calling thread's record, erased; (0,0) when it has none.
    Point take();

private:
    std::mutex mutex_;
    std::map<std::thread::id, Point> points_;
};

}  // namespace autoscene::platform
