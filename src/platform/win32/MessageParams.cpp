#include "win32/MessageParams.h"

#include <algorithm>

namespace autoscene::platform::win32 {

std::uint32_t packPointLParam(Point clientPoint) {
    const auto x = static_cast<std::uint32_t>(clientPoint.x) & 0xFFFFu;
    const auto y = static_cast<std::uint32_t>(clientPoint.y) & 0xFFFFu;
    return (y << 16) | x;
}

std::uint32_t wheelWParam(int steps) {
    const auto delta = static_cast<std::uint16_t>(static_cast<std::int64_t>(steps) * 120);
    return static_cast<std::uint32_t>(delta) << 16;
}

bool containsInclusive(const Rect& rect, Point point) {
    return point.x >= rect.x && point.x <= rect.x + rect.width && point.y >= rect.y &&
           point.y <= rect.y + rect.height;
}

Rect screenCropOfClient(Point clientOrigin, int clientWidth, int clientHeight, int screenWidth,
                        int screenHeight) {
    Rect crop;
    if (screenWidth <= 0 || screenHeight <= 0 || clientWidth <= 0 || clientHeight <= 0) {
        return crop;
    }
    crop.x = std::clamp(clientOrigin.x, 0, screenWidth - 1);
    crop.y = std::clamp(clientOrigin.y, 0, screenHeight - 1);
    crop.width = std::min(clientWidth, screenWidth - crop.x);
    crop.height = std::min(clientHeight, screenHeight - crop.y);
    return crop;
}

bool isSystemKey(int virtualKey) {
    return virtualKey == 0x10 || virtualKey == 0x11 || virtualKey == 0x12;
}

}  // namespace autoscene::platform::win32
