#include "playback/RecordingWriter.h"

#include <QJsonDocument>
#include <QLoggingCategory>
#include <opencv2/imgcodecs.hpp>

namespace autoscene::playback {

Q_LOGGING_CATEGORY(lcRecording, "autoscene.playback.recording")

std::unique_ptr<RecordingWriter> RecordingWriter::open(const QString& folder, QString* error) {
    std::unique_ptr<RecordingWriter> writer(new RecordingWriter(folder));
    writer->lines_.setFileName(folder + QStringLiteral("/cycles.jsonl"));
    if (!writer->lines_.open(QIODevice::WriteOnly | QIODevice::Append)) {
        if (error) {
            *error =
                writer->lines_.fileName() + QStringLiteral(": ") + writer->lines_.errorString();
        }
        return nullptr;
    }
    writer->thread_ = std::thread(&RecordingWriter::writeLoop, writer.get());
    return writer;
}

RecordingWriter::RecordingWriter(QString folder) : folder_(std::move(folder)) {}

RecordingWriter::~RecordingWriter() {
    {
        std::lock_guard lock(mutex_);
        closing_ = true;
    }
    wake_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

bool RecordingWriter::addFrame(const QString& relativePath, cv::Mat frame) {
    {
        std::lock_guard lock(mutex_);
        if (failed_) {
            return false;
        }
        if (queuedFrames_ >= kMaxQueuedFrames) {
            if (dropped_++ == 0) {
                qCWarning(lcRecording).noquote()
                    << "recording: the disk does not keep up with the run; frames are left out "
                       "of the recording (said once)";
            }
            return false;
        }
        ++queuedFrames_;
        queue_.push_back({relativePath, std::move(frame), {}});
    }
    wake_.notify_one();
    return true;
}

void RecordingWriter::addLine(QJsonObject line) {
    {
        std::lock_guard lock(mutex_);
        if (failed_) {
            return;
        }
        queue_.push_back({{}, {}, std::move(line)});
        if (queue_.size() < kBatchLines) {
            return;
        }
    }
    wake_.notify_one();
}

void RecordingWriter::writeLoop() {
    std::unique_lock lock(mutex_);
    while (!closing_ || !queue_.empty()) {
        // Lines wait for a frame, a full batch or the batch time: a thread that shares the
        // cores with the run wakes a few times a second rather than once a cycle.
        wake_.wait_for(lock, kBatchTime, [this] {
            return closing_ || queuedFrames_ > 0 || queue_.size() >= kBatchLines;
        });
        std::deque<Job> batch;
        batch.swap(queue_);
        lock.unlock();
        QString error;
        const bool written = failed_ || writeBatch(batch, error);
        lock.lock();
        for (const Job& job : batch) {
            queuedFrames_ -= job.framePath.isEmpty() ? 0 : 1;
        }
        if (!written) {
            queue_.clear();
            queuedFrames_ = 0;
            lock.unlock();
            fail(error);
            lock.lock();
        }
    }
}

bool RecordingWriter::writeBatch(const std::deque<Job>& batch, QString& error) {
    // Whole lines only, and each frame before the lines that come after it.
    QByteArray lines;
    const auto appendLines = [&] {
        const bool ok = lines.isEmpty() || (lines_.write(lines) == lines.size() && lines_.flush());
        if (!ok) {
            error = lines_.fileName() + QStringLiteral(": ") + lines_.errorString();
        }
        lines.clear();
        return ok;
    };
    for (const Job& job : batch) {
        if (job.framePath.isEmpty()) {
            lines += QJsonDocument(job.line).toJson(QJsonDocument::Compact) + '\n';
        } else if (!appendLines() || !writeFrame(job, error)) {
            return false;
        }
    }
    return appendLines();
}

bool RecordingWriter::writeFrame(const Job& job, QString& error) {
    std::vector<uchar> png;
    // Level 1: most of the size for a fraction of the time of the default.
    if (!cv::imencode(".png", job.frame, png, {cv::IMWRITE_PNG_COMPRESSION, 1})) {
        error = job.framePath + QStringLiteral(": the frame does not encode as PNG");
        return false;
    }
    QFile file(folder_ + QLatin1Char('/') + job.framePath);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(png.data()), qint64(png.size())) !=
            qint64(png.size()) ||
        !file.flush()) {
        error = file.fileName() + QStringLiteral(": ") + file.errorString();
        return false;
    }
    return true;
}

void RecordingWriter::fail(const QString& error) {
    if (!failed_.exchange(true)) {
        qCWarning(lcRecording).noquote()
            << "recording stopped, the run goes on: cannot write" << error;
    }
}

}  // namespace autoscene::playback
