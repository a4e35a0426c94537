#pragma once
// What autoscene-replay does between its command line and its exit: replays a recording
// with the recorded or another task and prints every cycle that decides differently.

#include <QStringList>

#include "app/TaskRun.h"

namespace autoscene::app {

// Exit codes of a replay.
enum ReplayExitCode : int {
    kSameDecisions = 0,
    kDecisionsDiffer = 1,
    kBadReplayInput = 2,
    kReplayInterrupted = 130,  // the shell's code for Ctrl+C: not every cycle was compared
};

int replayRecording(const QStringList& arguments, const RunIo& io);

}  // namespace autoscene::app
