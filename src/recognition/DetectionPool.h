#pragma once
// A few threads, one per core beside the caller's, that run a worker's
// independent detections side by side. Each job runs under the caller's thread key,
// so per-thread state lands where the caller would have put it.

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace autoscene::recognition {

class DetectionPool {
public:
    // `helpers` threads besides the callers; 0 runs every job on the caller.
    explicit DetectionPool(unsigned helpers);
    ~DetectionPool();
    DetectionPool(const DetectionPool&) = delete;
    DetectionPool& operator=(const DetectionPool&) = delete;

    // The process's pool: one helper per core but one.
    static DetectionPool& shared();

    // Runs job(0) .. job(count - 1), the caller among the runners, and returns when
    // all are done. Several callers may share the pool. A job must not throw.
    void run(size_t count, const std::function<void(size_t)>& job);

private:
    struct Batch;
    void helperLoop();
    static void work(Batch& batch);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::shared_ptr<Batch>> queue_;
    bool stopping_ = false;
    std::vector<std::thread> helpers_;
};

}  // namespace autoscene::recognition
