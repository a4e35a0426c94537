#pragma once
// Writes a recording on its own thread so that no cycle waits for the disk: frames as
// lossless PNG files and the cycle lines appended to cycles.jsonl in whole lines, flushed at
// least every 0.1 s and before each frame, so that what a killed run wrote stays readable
// (it loses at most its last 0.1 s). Frames wait in a bounded queue;
// when it is full they are dropped (said once). A write error stops the recording (said
// once), never the run.

#include <QFile>
#include <QJsonObject>
#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <thread>

namespace autoscene::playback {

class RecordingWriter {
public:
    static constexpr int kMaxQueuedFrames = 8;
    static constexpr size_t kBatchLines = 256;
    static constexpr std::chrono::milliseconds kBatchTime{100};

    // Appends to `folder`/cycles.jsonl, which it creates; nothing, with the reason in `error`,
    // when the file cannot be opened.
    static std::unique_ptr<RecordingWriter> open(const QString& folder, QString* error);
    // Writes what is queued, then stops.
    ~RecordingWriter();
    RecordingWriter(const RecordingWriter&) = delete;
    RecordingWriter& operator=(const RecordingWriter&) = delete;

    // Queues `frame` (which the writer now owns) as `folder`/`relativePath`; false when it
    // is dropped because the queue is full or the recording stopped.
    bool addFrame(const QString& relativePath, cv::Mat frame);
    // Queues one line, written after the frames queued before it.
    void addLine(QJsonObject line);
    bool failed() const { return failed_; }
    int droppedFrames() const { return dropped_; }

private:
    struct Job {
        QString framePath;  // empty for a line
        cv::Mat frame;
        QJsonObject line;
    };
    explicit RecordingWriter(QString folder);
    void writeLoop();
    bool writeBatch(const std::deque<Job>& batch, QString& error);
    bool writeFrame(const Job& job, QString& error);
    void fail(const QString& error);

    const QString folder_;
    QFile lines_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Job> queue_;
    int queuedFrames_ = 0;
    bool closing_ = false;
    std::atomic<bool> failed_{false};
    std::atomic<int> dropped_{0};
    std::thread thread_;
};

}  // namespace autoscene::playback
