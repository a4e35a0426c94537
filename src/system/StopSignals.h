#pragma once
// Ctrl+C and SIGTERM turned into a request the main thread waits for, so a run is
// stopped by ordinary code instead of inside a signal handler.

#include <chrono>

namespace autoscene::sys {

class StopSignals {
public:
    // Blocks the signals in the calling thread and in every thread started after it;
    // construct it before any worker thread exists.
    StopSignals();
    // Waits up to `timeout` for one of them; true when one arrived.
    bool wait(std::chrono::milliseconds timeout);
};

}  // namespace autoscene::sys
