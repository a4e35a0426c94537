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

QString Recorder::storeFrame(int target, std::int64_t cycle, const cv::Mat& frame, bool changed) {
    std::unique_lock lock(mutex_);
    QString& last = lastFrames_[target];
    lock.unlock();  // each target's entry is only used by its own worker
    if (!changed && !last.isEmpty()) {
        return last;
    }
    const QString path = QStringLiteral("%1/%2-%3.png").arg(kFramesFolder).arg(target).arg(cycle);
    last = writer_->addFrame(path, frame.clone()) ? path : QString();
    return last;
}

void Recorder::record(const CycleReport& report) {
    QJsonObject line = report.line;
    line.insert("type", "cycle");
    QString frame;
    if (!report.frame.empty()) {
        frame = storeFrame(report.target, std::int64_t(line["cycle"].toDouble()), report.frame,
                           report.frameChanged);
        if (frame.isEmpty()) {
            line.insert("frame_dropped", true);
        }
    }
    line.insert("frame", frame.isEmpty() ? QJsonValue() : QJsonValue(frame));
    writer_->addLine(std::move(line));
}

}  // namespace autoscene::playback
