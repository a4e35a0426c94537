#include "engine/RandomPick.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>

namespace autoscene::engine {

std::int64_t randomUpTo(std::int64_t n) {
    if (n <= 0) {
        return 0;
    }
    std::mt19937_64 generator(
        std::uint64_t(std::chrono::high_resolution_clock::now().time_since_epoch().count()));
    return std::uniform_int_distribution<std::int64_t>(0, n)(generator);
}

QPoint randomPointIn(const QRect& rect) {
    // In 64 bits and clamped, so that a rectangle at the edge of the int range gives a point
    // at that edge rather than one wrapped to the other side.
    const auto pick = [](int origin, int size) {
        const std::int64_t value = std::int64_t(origin) + randomUpTo(size);
        return int(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                            std::numeric_limits<int>::max()));
    };
    return {pick(rect.x(), rect.width()), pick(rect.y(), rect.height())};
}

int pressTimeMs(float pressSeconds) {
    const std::int64_t ms = secondsToMs(pressSeconds);
    return ms == 0 ? int(30 + randomUpTo(20)) : int(std::clamp<std::int64_t>(ms, 0, 3600000));
}

std::int64_t secondsToMs(float seconds) {
    const double ms = double(seconds) * 1000.0;
    if (!std::isfinite(ms)) {
        return 0;
    }
    constexpr double kLimit = double(std::numeric_limits<std::int32_t>::max());
    return std::int64_t(std::trunc(std::clamp(ms, -kLimit, kLimit)));
}

}  // namespace autoscene::engine
