#include "x11/CropRect.h"

#include <algorithm>

namespace autoscene::platform::x11 {
namespace {

// One axis: returns the clamped start and writes the shortened length.
int clampAxis(int start, int length, int screenLength, int& clampedLength) {
    const int clampedStart = std::clamp(start, 0, screenLength - 1);
    clampedLength = std::max(0, std::min(length, screenLength - clampedStart));
    return clampedStart;
}

}  // namespace

Rect cropToScreen(Rect client, int screenWidth, int screenHeight) {
    Rect crop;
    if (screenWidth <= 0 || screenHeight <= 0) {
        return crop;
    }
    crop.x = clampAxis(client.x, client.width, screenWidth, crop.width);
    crop.y = clampAxis(client.y, client.height, screenHeight, crop.height);
    return crop;
}

}  // namespace autoscene::platform::x11
