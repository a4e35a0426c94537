#include <pthread.h>
#include <signal.h>

#include <cerrno>
#include <ctime>

#include "system/StopSignals.h"

namespace autoscene::sys {

namespace {

sigset_t stopSet() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

}  // namespace

StopSignals::StopSignals() {
    const sigset_t set = stopSet();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

bool StopSignals::wait(std::chrono::milliseconds timeout) {
    const sigset_t set = stopSet();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(timeout);
    const timespec wait{time_t(seconds.count()),
                        long(std::chrono::nanoseconds(timeout - seconds).count())};
    int signal = -1;
    do {
        signal = sigtimedwait(&set, nullptr, &wait);
    } while (signal < 0 && errno == EINTR);
    return signal > 0;
}

}  // namespace autoscene::sys
