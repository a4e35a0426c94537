#include "x11/InputTiming.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

namespace autoscene::platform::x11 {

int effectivePressMs(int requestedMs) {
    constexpr int kMaxPressMs = 60000;
    if (requestedMs > 0) {
        return std::min(requestedMs, kMaxPressMs);
    }
    thread_local std::mt19937 generator{std::random_device{}()};
    return std::uniform_int_distribution<int>(30, 50)(generator);
}

void sleepMs(int durationMs) {
    if (durationMs > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(durationMs));
    }
}

}  // namespace autoscene::platform::x11
