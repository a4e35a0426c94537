#pragma once
// Records a run: a copy of the task, then each cycle that CycleLog reports, with its frame
// stored only when it differs from its target's previous one. The layout is in
// RecordingLayout.h.

#include <QString>
#include <map>
#include <memory>
#include <mutex>

#include "playback/CycleLog.h"
#include "playback/RecordingWriter.h"

namespace autoscene::playback {

class Recorder {
public:
    // Creates `folder` (absent or empty), copies the task in `taskFolder` into it and starts
    // the writer; nothing, with the reason in `error`, when any of that fails.
    static std::unique_ptr<Recorder> create(const QString& folder, const QString& taskFolder,
                                            QString* error);

    // Called on the worker thread with each finished cycle.
    void record(const CycleReport& report);
    const RecordingWriter& writer() const { return *writer_; }

private:
    explicit Recorder(std::unique_ptr<RecordingWriter> writer);
    // The frame's file name within the recording, queueing it when it is new; empty when it
    // was dropped.
    QString storeFrame(QString& last, int target, std::int64_t cycle, const cv::Mat& frame,
                       bool changed);

    struct TargetState {
        QString frame;          // the last frame stored; empty when none was
        QJsonObject decisions;  // the last full line but its cycle and times
        double cycle = -1;      // and its cycle
    };

    std::unique_ptr<RecordingWriter> writer_;
    std::mutex mutex_;
    std::map<int, TargetState> targets_;
};

}  // namespace autoscene::playback
