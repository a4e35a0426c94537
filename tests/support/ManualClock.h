#pragma once
// A run clock whose time moves only when the run sleeps or the test says so.

#include <QDateTime>
#include <atomic>
#include <thread>

#include "engine/RunClock.h"

namespace autoscene::test {

class ManualClock : public engine::RunClock {
public:
    explicit ManualClock(QDateTime start = QDateTime(QDate(2026, 1, 5), QTime(8, 0)))
        : startMs_(start.toMSecsSinceEpoch()) {}

    std::int64_t nowMs() const override { return startMs_ + elapsedMs_.load(); }
    QDateTime localNow() const override { return QDateTime::fromMSecsSinceEpoch(nowMs()); }
    void sleepMs(std::int64_t ms) override {
        if (ms > 0 && !stopped()) {
            elapsedMs_ += ms;
        }
        std::this_thread::yield();
    }
    void advanceMs(std::int64_t ms) { elapsedMs_ += ms; }

private:
    const std::int64_t startMs_;
    std::atomic<std::int64_t> elapsedMs_{0};
};

}  // namespace autoscene::test
