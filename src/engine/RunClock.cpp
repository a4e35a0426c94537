#include "engine/RunClock.h"

namespace autoscene::engine {

std::int64_t RunClock::nowMs() const {
    return QDateTime::currentMSecsSinceEpoch();
}

QDateTime RunClock::localNow() const {
    return QDateTime::currentDateTime();
}

std::chrono::nanoseconds RunClock::monotonic() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

void RunClock::sleepMs(std::int64_t ms) {
    if (ms <= 0) {
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    std::unique_lock lock(mutex_);
    wake_.wait_until(lock, deadline, [this] { return stopped_.load(); });
}

void RunClock::stop() {
    {
        std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    wake_.notify_all();
}

void RunClock::resume() {
    std::lock_guard lock(mutex_);
    stopped_ = false;
}

}  // namespace autoscene::engine
