#pragma once
// Reads a recording's cycles.jsonl, checking every line before anything uses it.

#include <QJsonObject>
#include <QString>
#include <optional>
#include <vector>

namespace autoscene::playback {

struct RecordedCycle {
    int lineNumber = 0;  // in cycles.jsonl, from 1
    int target = 0;
    std::int64_t cycle = 0;
    std::int64_t timeMs = 0;
    QString frame;  // relative to the recording; empty when the cycle has none
    bool frameDropped = false;
    QJsonObject line;
};

struct Recording {
    QString folder;
    std::vector<RecordedCycle> cycles;  // in the order they were written
    // Set when the last line was cut short (a killed run): the cycles before it are read.
    QString warning;
};

// The recording in `folder`; nothing, with "FILE:LINE: what is wrong" in `error`, when a
// line is not a cycle record, names a frame that is missing or outside frames/, or the
// file is not a recording.
std::optional<Recording> readRecording(const QString& folder, QString* error);

}  // namespace autoscene::playback
