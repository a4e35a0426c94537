#include "playback/RecordingPruning.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <algorithm>
#include <vector>

#include "playback/RecordingLayout.h"

namespace autoscene::playback {

namespace {

struct Found {
    QString path;
    QDateTime written;
    qint64 bytes = 0;
};

qint64 folderBytes(const QString& path) {
    qint64 bytes = 0;
    QDirIterator it(path, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        bytes += it.nextFileInfo().size();
    }
    return bytes;
}

}  // namespace

QStringList pruneRecordings(const QString& root, const RecordingLimits& limits,
                            const QString& keep) {
    std::vector<Found> found;
    qint64 total = 0;
    for (const QFileInfo& folder : QDir(root).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QFileInfo cycles(folder.filePath() + QLatin1Char('/') + kCyclesFile);
        if (cycles.isFile()) {
            found.push_back(
                {folder.absoluteFilePath(), cycles.lastModified(), folderBytes(folder.filePath())});
            total += found.back().bytes;
        }
    }
    std::sort(found.begin(), found.end(),
              [](const Found& a, const Found& b) { return a.written < b.written; });
    const QString kept = keep.isEmpty() ? QString() : QFileInfo(keep).absoluteFilePath();
    auto over = [&](size_t count) {
        return (limits.maxCount > 0 && count > size_t(limits.maxCount)) ||
               (limits.maxBytes > 0 && total > limits.maxBytes);
    };
    QStringList deleted;
    size_t count = found.size();
    for (const Found& recording : found) {
        if (!over(count)) {
            break;
        }
        if (recording.path == kept || !QDir(recording.path).removeRecursively()) {
            continue;
        }
        deleted << recording.path;
        total -= recording.bytes;
        --count;
    }
    return deleted;
}

}  // namespace autoscene::playback
