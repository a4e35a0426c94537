#pragma once
// Interrupts an evaluation once the run asks to stop. A script stuck in a loop never
// returns to the runner, so a thread of its own polls the run while the script runs.

#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

class QJSEngine;

namespace autoscene::script {

class EvaluationWatch {
public:
    // Polls `stopRequested` until destroyed; once it holds, interrupts `engine` and sets
    // the stop token, which ends the script's transfers under way.
    EvaluationWatch(QJSEngine& engine, std::function<bool()> stopRequested);
    ~EvaluationWatch();
    EvaluationWatch(const EvaluationWatch&) = delete;
    EvaluationWatch& operator=(const EvaluationWatch&) = delete;

    std::stop_token stopToken() const { return stop_.get_token(); }

private:
    void poll(QJSEngine& engine, const std::function<bool()>& stopRequested);

    std::mutex mutex_;
    std::condition_variable wake_;
    bool done_ = false;
    std::stop_source stop_;
    std::thread thread_;  // last: it uses the members above
};

}  // namespace autoscene::script
