#include "playback/Replayer.h"

#include <QDir>
#include <atomic>
#include <map>
#include <opencv2/imgcodecs.hpp>
#include <optional>

#include "engine/TaskRunner.h"
#include "playback/CycleLog.h"
#include "playback/RecordingDifferences.h"
#include "playback/ReplayTarget.h"
#include "playback/RunStateSnapshot.h"

namespace autoscene::playback {

namespace {

// When the live run judged the cycle's timers. The cycle's time is that of its capture, and
// its conditions were judged a little later: a timer that fired then kept that later time
// as its mark, so the latest such mark stands for the cycle. Marks outside the cycle (before
// its capture, or at or after the next one's) are not the cycle's.
std::int64_t judgedAtMs(const QJsonObject& before, const QJsonObject& after,
                        std::int64_t capturedMs, std::optional<std::int64_t> nextMs) {
    std::int64_t at = capturedMs;
    const QJsonObject was = before["variables"].toObject();
    const QJsonObject now = after["variables"].toObject();
    for (auto it = now.begin(); it != now.end(); ++it) {
        const QJsonObject timer = it.value().toObject();
        const double mark = timer["mark_ms"].toDouble(-1.0);
        const bool fired = timer["fired_once"].toBool() &&
                           mark != was[it.key()].toObject()["mark_ms"].toDouble(-1.0);
        if (fired && mark > double(at) && (!nextMs || mark < double(*nextMs))) {
            at = std::int64_t(mark);
        }
    }
    return at;
}

}  // namespace

Replayer::Replayer(engine::TaskRunner& runner, ReplayTarget& target, ReplayClock& clock)
    : runner_(runner), target_(target), clock_(clock) {}

ReplayResult Replayer::replay(const Recording& recording,
                              const std::function<bool(std::chrono::milliseconds)>& stopRequested) {
    std::map<int, std::vector<const RecordedCycle*>> targets;
    for (const RecordedCycle& cycle : recording.cycles) {
        targets[cycle.target].push_back(&cycle);
    }
    runner_.setLoopIntervalMs(0);
    runner_.setRunTimeLimitSeconds(-1);
    ReplayResult result;
    for (const auto& [target, cycles] : targets) {
        replayTarget(recording, cycles, stopRequested, result);
        if (!result.error.isEmpty() || result.interrupted) {
            break;
        }
    }
    return result;
}

void Replayer::replayTarget(const Recording& recording,
                            const std::vector<const RecordedCycle*>& cycles,
                            const std::function<bool(std::chrono::milliseconds)>& stopRequested,
                            ReplayResult& result) {
    const QDir folder(recording.folder);
    size_t next = 0;
    QString shownFrame = QStringLiteral("-");
    runner_.setCycleStartHook([&](engine::TaskInfo& task) {
        if (next >= cycles.size() || !result.error.isEmpty()) {
            target_.setFrame({});
            runner_.stop();
            return;
        }
        const RecordedCycle& cycle = *cycles[next];
        const QJsonObject state = next > 0 ? cycles[next - 1]->line["state"].toObject()
                                           : cycle.line["start"].toObject()["state"].toObject();
        clock_.setNowMs(judgedAtMs(
            state, cycle.line["state"].toObject(), cycle.timeMs,
            next + 1 < cycles.size() ? std::optional(cycles[next + 1]->timeMs) : std::nullopt));
        restoreRunState(state, task, runner_.definitions(), runner_.scenes());
        if (cycle.frame == shownFrame) {
            return;
        }
        shownFrame = cycle.frame;
        cv::Mat bgr;
        if (!cycle.frame.isEmpty()) {
            bgr = cv::imread(folder.filePath(cycle.frame).toStdString(), cv::IMREAD_COLOR);
            if (bgr.empty()) {
                result.error = QStringLiteral("%1: frame %2 of line %3 does not decode as PNG")
                                   .arg(folder.filePath(cycle.frame))
                                   .arg(cycle.cycle)
                                   .arg(cycle.lineNumber);
                runner_.stop();
            }
        }
        target_.setFrame(bgr);
    });
    // Set on this thread, read on the worker's: a cycle that ends after the user stopped
    // the replay may have been cut short, so it is not compared.
    std::atomic<bool> interrupted = false;
    CycleLog log(runner_, [&](const CycleReport& report) {
        const RecordedCycle& cycle = *cycles[next++];
        if (interrupted) {
            return;
        }
        if (cycle.frameDropped) {
            ++result.skipped;
            return;
        }
        ++result.replayed;
        const QJsonArray differences = cycleDifferences(cycle.line, report.line);
        if (!differences.isEmpty()) {
            result.cycles.push_back({&cycle, differences});
        }
    });
    runner_.setSceneObserver(&log);
    runner_.setRunObserver(&log);
    clock_.setNowMs(std::int64_t(cycles.front()->line["start"].toObject()["time_ms"].toDouble(
        double(cycles.front()->timeMs))));
    runner_.start({engine::RunTarget{engine::TargetKind::Desktop}});
    while (!runner_.waitUntilIdle(std::chrono::milliseconds(0))) {
        if (stopRequested(std::chrono::milliseconds(50))) {
            interrupted = true;
            runner_.stop();
        }
    }
    runner_.setSceneObserver(nullptr);
    runner_.setRunObserver(nullptr);
    runner_.setCycleStartHook({});
    result.interrupted = interrupted;
    if (next < cycles.size() && result.error.isEmpty() && !result.interrupted) {
        result.cycles.push_back(
            {cycles[next],
             QJsonArray{QJsonObject{{"kind", "ended"},
                                    {"recorded_cycles_left", double(cycles.size() - next)}}}});
    }
}

}  // namespace autoscene::playback
