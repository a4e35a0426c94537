#include "recognition/DetectionPool.h"

#include <algorithm>
#include <atomic>

#include "system/ThreadKey.h"

namespace autoscene::recognition {

struct DetectionPool::Batch {
    const std::function<void(size_t)>* job = nullptr;
    size_t count = 0;
    std::thread::id key;
    std::atomic<size_t> next{0};
    std::atomic<size_t> done{0};
    std::mutex mutex;
    std::condition_variable finished;
};

DetectionPool::DetectionPool(unsigned helpers) {
    for (unsigned i = 0; i < helpers; ++i) {
        helpers_.emplace_back(&DetectionPool::helperLoop, this);
    }
}

DetectionPool::~DetectionPool() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    for (std::thread& helper : helpers_) {
        helper.join();
    }
}

DetectionPool& DetectionPool::shared() {
    static DetectionPool pool(std::max(std::thread::hardware_concurrency(), 1u) - 1);
    return pool;
}

void DetectionPool::work(Batch& batch) {
    const sys::ThreadKeyScope scope(batch.key);
    for (size_t i = batch.next++; i < batch.count; i = batch.next++) {
        (*batch.job)(i);
        if (++batch.done == batch.count) {
            std::lock_guard lock(batch.mutex);
            batch.finished.notify_all();
        }
    }
}

void DetectionPool::helperLoop() {
    std::unique_lock lock(mutex_);
    while (true) {
        wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
        if (stopping_) {
            return;
        }
        const std::shared_ptr<Batch> batch = queue_.front();
        if (batch->next >= batch->count) {
            // Every job is taken; the batch's caller waits for the last to end.
            queue_.pop_front();
            continue;
        }
        lock.unlock();
        work(*batch);
        lock.lock();
    }
}

void DetectionPool::run(size_t count, const std::function<void(size_t)>& job) {
    if (count == 0) {
        return;
    }
    auto batch = std::make_shared<Batch>();
    batch->job = &job;
    batch->count = count;
    batch->key = sys::threadKey();
    if (count > 1 && !helpers_.empty()) {
        {
            std::lock_guard lock(mutex_);
            queue_.push_back(batch);
        }
        wake_.notify_all();
    }
    work(*batch);
    std::unique_lock lock(batch->mutex);
    batch->finished.wait(lock, [&] { return batch->done == batch->count; });
}

}  // namespace autoscene::recognition
