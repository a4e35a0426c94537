#pragma once
// State that a shared runtime object keeps for each worker thread, created on first
// use. A thread's own entry stays where it is while other threads add theirs, so it
// can be used without the lock once found.

#include <mutex>
#include <thread>
#include <unordered_map>

#include "system/ThreadKey.h"

namespace autoscene::sys {

template <class T>
class PerThread {
public:
    // This thread's entry; `init` builds it on first use.
    template <class Init>
    T& get(Init&& init) {
        std::lock_guard lock(mutex_);
        auto it = entries_.find(threadKey());
        if (it == entries_.end()) {
            it = entries_.emplace(threadKey(), init()).first;
        }
        return it->second;
    }

    T& get() {
        return get([] { return T{}; });
    }

    // Another thread's entry, or nullptr.
    const T* find(std::thread::id id) const {
        std::lock_guard lock(mutex_);
        const auto it = entries_.find(id);
        return it == entries_.end() ? nullptr : &it->second;
    }

    // Only while no worker thread uses its entry (a run's start, a reset).
    void clear() {
        std::lock_guard lock(mutex_);
        entries_.clear();
    }

    template <class Fn>
    void forEach(Fn&& fn) {
        std::lock_guard lock(mutex_);
        for (auto& [id, entry] : entries_) {
            fn(entry);
        }
    }

private:
    mutable std::mutex mutex_;
    std::unordered_map<std::thread::id, T> entries_;
};

}  // namespace autoscene::sys
