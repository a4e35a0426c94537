#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "AccurateModels.h"
#include "AccurateRecogniser.h"
#include "TextRecogniser.h"

namespace autoscene::ocr {

// What one request recognises with: Tesseract, and the accurate network pair when
// its models are loaded.
struct OcrEngines {
    std::unique_ptr<TextRecogniser> fast;
    std::unique_ptr<AccurateRecogniser> accurate;
};

// A fixed set of engines, loaded once at start-up; a request borrows one set for its
// recognition, so models are never loaded per request and `count` requests run at once.
class RecogniserPool {
public:
    // Loads the sets side by side, the accurate engine only when `models` is given (it
    // must outlive the pool); throws what the engines throw.
    RecogniserPool(int count, const std::string& languages, const AccurateModels* models = nullptr);

    // Returns its set to the pool when it goes out of scope.
    class Lease {
    public:
        Lease(RecogniserPool& pool, OcrEngines& engines) : pool_(pool), engines_(engines) {}
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        ~Lease() { pool_.giveBack(engines_); }

        OcrEngines& operator*() const { return engines_; }
        OcrEngines* operator->() const { return &engines_; }

    private:
        RecogniserPool& pool_;
        OcrEngines& engines_;
    };

    // Waits until a set is free.
    Lease acquire();

    // A set that is free right now, none when all are busy: for a request that can
    // spread its work without holding up the others.
    std::optional<Lease> tryAcquire();

    int size() const { return static_cast<int>(all_.size()); }

private:
    void giveBack(OcrEngines& engines);

    std::vector<OcrEngines> all_;
    std::vector<OcrEngines*> idle_;
    std::mutex mutex_;
    std::condition_variable returned_;
};

}  // namespace autoscene::ocr
