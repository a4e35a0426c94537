#pragma once
// Keeps a folder of recordings within its limits by deleting the oldest ones.

#include <QString>
#include <QStringList>

namespace autoscene::playback {

struct RecordingLimits {
    int maxCount = 0;     // 0: no limit
    qint64 maxBytes = 0;  // 0: no limit
};

// Deletes the least recently written recordings among the sub-folders of `root` that hold
// a cycles.jsonl until the rest keep within `limits`; `keep` (a recording being written)
// is never deleted but counts. Other folders and files are left alone. The folders
// deleted, oldest first.
QStringList pruneRecordings(const QString& root, const RecordingLimits& limits,
                            const QString& keep = {});

}  // namespace autoscene::playback
