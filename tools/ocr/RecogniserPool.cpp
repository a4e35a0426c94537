#include "RecogniserPool.h"

#include <exception>
#include <thread>

namespace autoscene::ocr {

RecogniserPool::RecogniserPool(int count, const std::string& languages,
                               const AccurateModels* models) {
    const std::size_t engineCount = count > 0 ? static_cast<std::size_t>(count) : 1;
    all_.resize(engineCount);
    std::vector<std::exception_ptr> failures(engineCount);
    std::vector<std::thread> loaders;
    for (std::size_t i = 0; i < engineCount; ++i) {
        loaders.emplace_back([&, i] {
            try {
                all_[i].fast = std::make_unique<TextRecogniser>(languages);
                if (models) {
                    all_[i].accurate = std::make_unique<AccurateRecogniser>(*models);
                }
            } catch (...) {
                failures[i] = std::current_exception();
            }
        });
    }
    for (std::thread& loader : loaders) {
        loader.join();
    }
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
    for (OcrEngines& engines : all_) {
        idle_.push_back(&engines);
    }
}

RecogniserPool::Lease RecogniserPool::acquire() {
    std::unique_lock lock(mutex_);
    returned_.wait(lock, [this] { return !idle_.empty(); });
    OcrEngines* engines = idle_.back();
    idle_.pop_back();
    return Lease(*this, *engines);
}

std::optional<RecogniserPool::Lease> RecogniserPool::tryAcquire() {
    const std::lock_guard lock(mutex_);
    if (idle_.empty()) {
        return std::nullopt;
    }
    OcrEngines* engines = idle_.back();
    idle_.pop_back();
    return std::optional<Lease>(std::in_place, *this, *engines);
}

void RecogniserPool::giveBack(OcrEngines& engines) {
    {
        const std::lock_guard lock(mutex_);
        idle_.push_back(&engines);
    }
    returned_.notify_one();
}

}  // namespace autoscene::ocr
