#include "script/EvaluationWatch.h"

#include <QJSEngine>
#include <chrono>

namespace autoscene::script {

namespace {

// Well inside the half second a stop may take to reach a running script.
constexpr std::chrono::milliseconds kPollInterval{50};

}  // namespace

EvaluationWatch::EvaluationWatch(QJSEngine& engine, std::function<bool()> stopRequested)
    : thread_([this, &engine, stop = std::move(stopRequested)] { poll(engine, stop); }) {}

EvaluationWatch::~EvaluationWatch() {
    {
        std::lock_guard lock(mutex_);
        done_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void EvaluationWatch::poll(QJSEngine& engine, const std::function<bool()>& stopRequested) {
    std::unique_lock lock(mutex_);
    while (!wake_.wait_for(lock, kPollInterval, [this] { return done_; })) {
        if (stopRequested()) {
            stop_.request_stop();
            engine.setInterrupted(true);
            return;
        }
    }
}

}  // namespace autoscene::script
