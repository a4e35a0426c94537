#pragma once
// The clocks a run reads: wall-clock milliseconds for run, scene, timer and screen
// item timings, the local date and time for alarms, and a monotonic clock for
// sleeps. Tests replace it to run timers and alarms without waiting.

#include <QDateTime>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace autoscene::engine {

class RunClock {
public:
    virtual ~RunClock() = default;
    virtual std::int64_t nowMs() const;  // since the epoch
    virtual QDateTime localNow() const;  // for alarms
    virtual std::chrono::nanoseconds monotonic() const;
    // Sleeps on the monotonic clock until `ms` have passed or `stop` is called.
    virtual void sleepMs(std::int64_t ms);
    // Wakes every sleeper; later sleeps return at once until resume().
    void stop();
    void resume();
    bool stopped() const { return stopped_.load(); }

protected:
    std::atomic<bool> stopped_{false};
    std::mutex mutex_;
    std::condition_variable wake_;
};

}  // namespace autoscene::engine
