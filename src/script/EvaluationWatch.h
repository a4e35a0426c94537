#pragma once
// Interrupts an evaluation once the run asks to stop. A script stuck in a loop never
// returns to the runner, so a thread of its own polls the run while the script runs.

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class QJSEngine;

namespace autoscene::script {

class EvaluationWatch {
public:
    // Polls `stopRequested` until destroyed; once it holds, interrupts `engine`.
    EvaluationWatch(QJSEngine& engine, std::function<bool()> stopRequested);
    ~EvaluationWatch();
    EvaluationWatch(const EvaluationWatch&) = delete;
    EvaluationWatch& operator=(const EvaluationWatch&) = delete;

private:
    void poll(QJSEngine& engine, const std::function<bool()>& stopRequested);

    std::mutex mutex_;
    std::condition_variable wake_;
    bool done_ = false;
    std::thread thread_;
};

}  // namespace autoscene::script
