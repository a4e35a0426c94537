#pragma once
// Gathers what a worker saw and decided in each cycle into one JSON record: its time, the
// conditions evaluated with their evidence, the events fired with their actions' results,
// the scene it ends on and the run state after it. Hands each finished cycle, with its
// frame, to a sink on the worker thread.

#include <QJsonArray>
#include <QJsonObject>
#include <functional>
#include <mutex>
#include <opencv2/core/mat.hpp>

#include "engine/RunObservers.h"
#include "system/PerThread.h"

namespace autoscene::engine {
class TaskRunner;
}

namespace autoscene::playback {

struct CycleReport {
    int target = 0;  // 1, 2, ... in the order the workers first report
    // {"target", "cycle", "time_ms", "scene", "checks", "fired", "state"}, and "start" in a
    // worker's first cycle
    QJsonObject line;
    cv::Mat frame;             // the worker's own pixels, valid during the call; empty when none
    bool frameChanged = true;  // whether it differs from the worker's previous frame
};

using CycleSink = std::function<void(const CycleReport&)>;

class CycleLog : public engine::IMVSceneEvent, public engine::IRunObserver {
public:
    // The runner must outlive the log.
    CycleLog(engine::TaskRunner& runner, CycleSink sink);

    void identificationResult(const engine::Scene& scene, const engine::ItemGroup* conditions,
                              bool recognised) override;
    void sceneEntered(const engine::Scene& scene, const engine::ItemGroup*) override;
    void eventEvaluated(const engine::Scene& scene, const engine::RuntimeEvent& event,
                        bool fired) override;
    void actionsDone(const engine::Scene& scene, const engine::RuntimeEvent& event) override;
    void threadStartedOnWindow(platform::WindowHandle) override { noteStart(); }
    void threadStartedOnDevice(const QString&) override { noteStart(); }
    void frameCaptured(const cv::Mat& frame) override;
    void cycleEnded(const engine::TaskInfo& task) override;

private:
    struct Pending {
        int target = 0;
        std::int64_t cycles = 0;
        std::int64_t timeMs = -1;
        QJsonArray checks;
        QJsonArray fired;
        QJsonObject start;
        cv::Mat frame;
    };
    Pending& pending();
    // The time and state a worker starts from, which its first cycle's line carries as
    // "start": {"time_ms", "state"}.
    void noteStart();

    engine::TaskRunner& runner_;
    CycleSink sink_;
    std::mutex targetsMutex_;
    int targets_ = 0;
    sys::PerThread<Pending> pending_;
};

}  // namespace autoscene::playback
