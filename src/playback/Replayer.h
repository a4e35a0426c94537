#pragma once
// Evaluates a task on a recording: each recorded target's cycles in turn, each cycle on its
// recorded frame and time and starting from the run state recorded after the cycle before,
// and reports every cycle that decides differently.

#include <QJsonArray>
#include <QString>
#include <chrono>
#include <functional>
#include <vector>

#include "playback/RecordingReader.h"

namespace autoscene::engine {
class TaskRunner;
}

namespace autoscene::playback {

class ReplayClock;
class ReplayTarget;

struct CycleDifferences {
    const RecordedCycle* cycle = nullptr;
    QJsonArray differences;  // RecordingDifferences.h; "kind": "ended" when the replay
                             // ended before this cycle
};

struct ReplayResult {
    std::vector<CycleDifferences> cycles;  // only the cycles that differ
    std::int64_t replayed = 0;
    std::int64_t skipped = 0;  // recorded without their dropped frame
    QString error;             // a frame that does not decode; the replay stops there
    bool interrupted = false;  // the user stopped it before the recording's end
};

class Replayer {
public:
    // The runner must run on `target` and `clock`; all three outlive the replayer.
    Replayer(engine::TaskRunner& runner, ReplayTarget& target, ReplayClock& clock);

    // `stopRequested` waits up to its argument and says whether the user wants to stop.
    ReplayResult replay(const Recording& recording,
                        const std::function<bool(std::chrono::milliseconds)>& stopRequested);

private:
    void replayTarget(const Recording& recording, const std::vector<const RecordedCycle*>& cycles,
                      const std::function<bool(std::chrono::milliseconds)>& stopRequested,
                      ReplayResult& result);

    engine::TaskRunner& runner_;
    ReplayTarget& target_;
    ReplayClock& clock_;
};

}  // namespace autoscene::playback
