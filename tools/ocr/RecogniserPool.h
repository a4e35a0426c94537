#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "TextRecogniser.h"

namespace autoscene::ocr {

// A fixed set of engines, loaded once at start-up; a request borrows one for its
// recognition, so models are never loaded per request and `count` requests run at once.
class RecogniserPool {
public:
    // Loads the engines side by side; throws what TextRecogniser throws.
    RecogniserPool(int count, const std::string& languages);

    // Returns its engine to the pool when it goes out of scope.
    class Lease {
    public:
        Lease(RecogniserPool& pool, TextRecogniser& recogniser)
            : pool_(pool), recogniser_(recogniser) {}
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        ~Lease() { pool_.giveBack(recogniser_); }

        TextRecogniser& operator*() const { return recogniser_; }
        TextRecogniser* operator->() const { return &recogniser_; }

    private:
        RecogniserPool& pool_;
        TextRecogniser& recogniser_;
    };

    // Waits until an engine is free.
    Lease acquire();

    int size() const { return static_cast<int>(all_.size()); }

private:
    void giveBack(TextRecogniser& recogniser);

    std::vector<std::unique_ptr<TextRecogniser>> all_;
    std::vector<TextRecogniser*> idle_;
    std::mutex mutex_;
    std::condition_variable returned_;
};

}  // namespace autoscene::ocr
