#pragma once
// Hands a run's reports to the window's feed and, while playback is on in config.ini, to a
// recording in the playback/ folder beside it, which is then pruned to its limits.

#include <QString>
#include <memory>
#include <optional>

#include "engine/ObserverFanOut.h"
#include "playback/CycleLog.h"
#include "playback/Recorder.h"
#include "ui/AppConfig.h"

namespace autoscene::ui {

class RunFeed;

class RunRecording {
public:
    // Becomes `runner`'s observer; the recording holds the task saved in `taskFolder`. Must
    // outlive the run's workers.
    RunRecording(const AppConfig& config, const QString& taskFolder, engine::TaskRunner& runner,
                 RunFeed& feed);

    // The recording being written; empty when playback is off or the recording could not
    // start.
    const QString& folder() const { return folder_; }

private:
    engine::ObserverFanOut observers_;
    std::unique_ptr<playback::Recorder> recorder_;
    std::optional<playback::CycleLog> cycles_;
    QString folder_;
};

}  // namespace autoscene::ui
