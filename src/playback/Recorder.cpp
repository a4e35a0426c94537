#include "playback/Recorder.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include "playback/RecordingLayout.h"

namespace autoscene::playback {

namespace {

// Copies script.json, image/ and ori/ of the task; the first failure, or empty.
QString copyTask(const QString& from, const QString& to) {
    QStringList files{QStringLiteral("script.json")};
    for (const QString& folder : {QStringLiteral("image"), QStringLiteral("ori")}) {
        QDirIterator it(from + QLatin1Char('/') + folder, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            files << QDir(from).relativeFilePath(it.next());
        }
    }
    for (const QString& file : files) {
        const QString target = to + QLatin1Char('/') + file;
        if (!QDir().mkpath(QFileInfo(target).path()) ||
            !QFile::copy(from + QLatin1Char('/') + file, target)) {
            return QStringLiteral("cannot copy %1 to %2").arg(file, to);
        }
    }
    return {};
}

}  // namespace

std::unique_ptr<Recorder> Recorder::create(const QString& folder, const QString& taskFolder,
                                           QString* error) {
    const QDir dir(folder);
    if (dir.exists() && !dir.isEmpty()) {
        *error = folder + QStringLiteral(" is not empty: a recording goes into a new folder");
        return nullptr;
    }
    if (!QDir().mkpath(dir.filePath(kFramesFolder))) {
        *error = QStringLiteral("cannot create ") + dir.filePath(kFramesFolder);
        return nullptr;
    }
    if (QString copyError = copyTask(taskFolder, dir.filePath(kTaskFolder)); !copyError.isEmpty()) {
        *error = copyError;
        return nullptr;
    }
    auto writer = RecordingWriter::open(folder, error);
    if (!writer) {
        return nullptr;
    }
    writer->addLine({{"type", "recording"},
                     {"version", kRecordingVersion},
                     {"started_ms", double(QDateTime::currentMSecsSinceEpoch())}});
    return std::unique_ptr<Recorder>(new Recorder(std::move(writer)));
}

Recorder::Recorder(std::unique_ptr<RecordingWriter> writer) : writer_(std::move(writer)) {}

QString Recorder::storeFrame(QString& last, int target, std::int64_t cycle, const cv::Mat& frame,
                             bool changed) {
    if (!changed && !last.isEmpty()) {
        return last;
    }
    const QString path = QStringLiteral("%1/%2-%3.png").arg(kFramesFolder).arg(target).arg(cycle);
    last = writer_->addFrame(path, frame.clone()) ? path : QString();
    return last;
}

void Recorder::record(const CycleReport& report) {
    std::unique_lock lock(mutex_);
    TargetState& target = targets_[report.target];
    lock.unlock();  // each target's entry is only used by its own worker
    QJsonObject line = report.line;
    const QJsonValue cycle = line.take("cycle");
    const QJsonValue timeMs = line.take("time_ms");
    const QJsonValue start = line.take("start");
    QString frame;
    if (!report.frame.empty()) {
        frame = storeFrame(target.frame, report.target, std::int64_t(cycle.toDouble()),
                           report.frame, report.frameChanged);
        if (frame.isEmpty()) {
            line.insert("frame_dropped", true);
        }
    }
    line.insert("frame", frame.isEmpty() ? QJsonValue() : QJsonValue(frame));
    // A cycle that saw and decided what the one before did (a screen that stays) is written
    // as a reference to it: a fraction of the bytes and of the writer's time.
    if (line == target.decisions) {
        writer_->addLine({{"type", "cycle"},
                          {"target", report.target},
                          {"cycle", cycle},
                          {"time_ms", timeMs},
                          {"same_as", target.cycle}});
        return;
    }
    target.decisions = line;
    target.cycle = cycle.toDouble();
    line.insert("type", "cycle");
    line.insert("cycle", cycle);
    line.insert("time_ms", timeMs);
    if (!start.isUndefined()) {
        line.insert("start", start);
    }
    writer_->addLine(std::move(line));
}

}  // namespace autoscene::playback
