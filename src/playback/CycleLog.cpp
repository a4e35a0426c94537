#include "playback/CycleLog.h"

#include "engine/Scene.h"
#include "engine/TaskRunner.h"
#include "playback/CycleEvidence.h"
#include "playback/RunStateSnapshot.h"

namespace autoscene::playback {

CycleLog::CycleLog(engine::TaskRunner& runner, CycleSink sink)
    : runner_(runner), sink_(std::move(sink)) {}

CycleLog::Pending& CycleLog::pending() {
    return pending_.get([this] {
        std::lock_guard lock(targetsMutex_);
        return Pending{++targets_};
    });
}

void CycleLog::identificationResult(const engine::Scene& scene, const engine::ItemGroup* conditions,
                                    bool recognised) {
    pending().checks.append(conditionCheck(scene, QStringLiteral("identification"), scene.name,
                                           conditions, recognised));
}

void CycleLog::sceneEntered(const engine::Scene& scene, const engine::ItemGroup*) {
    pending().fired.append(QJsonObject{{"scene", scene.name},
                                       {"entered", true},
                                       {"actions", actionResults(*scene.identification)}});
}

void CycleLog::eventEvaluated(const engine::Scene& scene, const engine::RuntimeEvent& event,
                              bool fired) {
    pending().checks.append(
        conditionCheck(scene, QStringLiteral("event"), event.name, event.conditions.get(), fired));
}

void CycleLog::actionsDone(const engine::Scene& scene, const engine::RuntimeEvent& event) {
    pending().fired.append(QJsonObject{
        {"scene", scene.name}, {"event", event.name}, {"actions", actionResults(event)}});
}

void CycleLog::noteStart() {
    const engine::TaskInfo beforeAnyCycle;
    pending().start = {
        {"time_ms", double(runner_.clock().nowMs())},
        {"state", saveRunState(beforeAnyCycle, runner_.definitions(), runner_.scenes())}};
}

void CycleLog::frameCaptured(const cv::Mat& frame) {
    Pending& own = pending();
    own.frame = frame;
    own.timeMs = runner_.clock().nowMs();
}

void CycleLog::cycleEnded(const engine::TaskInfo& task) {
    Pending& own = pending();
    const engine::Scene* scene = task.currentScene;
    CycleReport report{own.target,
                       {{"target", own.target},
                        {"cycle", double(own.cycles)},
                        {"time_ms", double(own.timeMs >= 0 ? own.timeMs : runner_.clock().nowMs())},
                        {"scene", scene ? QJsonValue(scene->name) : QJsonValue()},
                        {"checks", own.checks},
                        {"fired", own.fired},
                        {"state", saveRunState(task, runner_.definitions(), runner_.scenes())}},
                       own.frame,
                       task.frameChanged};
    if (!own.start.isEmpty()) {
        report.line.insert("start", own.start);
    }
    own = Pending{own.target, own.cycles + 1};
    sink_(report);
}

}  // namespace autoscene::playback
