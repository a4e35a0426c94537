#pragma once
// The thread id under which per-thread runtime state is kept. A pool thread that
// detects for a worker works under that worker's id, so what it records lands
// where the worker would have put it.

#include <thread>

namespace autoscene::sys {

namespace detail {
inline thread_local std::thread::id threadKeyOverride;
}

inline std::thread::id threadKey() {
    const std::thread::id key = detail::threadKeyOverride;
    return key == std::thread::id() ? std::this_thread::get_id() : key;
}

// Makes the calling thread act for `key` until the scope ends.
class ThreadKeyScope {
public:
    explicit ThreadKeyScope(std::thread::id key) : previous_(detail::threadKeyOverride) {
        detail::threadKeyOverride = key;
    }
    ~ThreadKeyScope() { detail::threadKeyOverride = previous_; }
    ThreadKeyScope(const ThreadKeyScope&) = delete;
    ThreadKeyScope& operator=(const ThreadKeyScope&) = delete;

private:
    const std::thread::id previous_;
};

}  // namespace autoscene::sys
