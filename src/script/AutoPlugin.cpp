#include "script/AutoPlugin.h"

#include <QJSEngine>
#include <chrono>
#include <cmath>
#include <thread>

namespace autoscene::script {

namespace {

constexpr std::chrono::milliseconds kSlice{20};
// Keeps the end time representable; a run that long is stopped long before.
constexpr double kLongestSleepSeconds = 1e7;

}  // namespace

void AutoPlugin::sleep(double seconds) {
    if (!std::isfinite(seconds) || seconds <= 0) {
        return;
    }
    using Clock = std::chrono::steady_clock;
    const auto end =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(
                           std::chrono::duration<double>(std::min(seconds, kLongestSleepSeconds)));
    const QJSEngine* engine = qjsEngine(this);
    // Slices, so that a stop of the run reaches a sleeping script too.
    for (auto now = Clock::now(); now < end; now = Clock::now()) {
        if (engine && engine->isInterrupted()) {
            return;
        }
        std::this_thread::sleep_for(std::min<Clock::duration>(end - now, kSlice));
    }
}

}  // namespace autoscene::script
