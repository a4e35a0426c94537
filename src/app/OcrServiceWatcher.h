#pragma once
// Starts the local recognition service and keeps it running: a thread of its own waits
// for the process and starts it again whenever it ends, until stop().

#include <QString>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "system/Process.h"
#include "text/OcrClient.h"

namespace autoscene::app {

constexpr int kDefaultOcrPort = 8080;

// The service program in `programDir`, else in `workingDir`; nothing when neither has it.
std::optional<QString> findOcrProgram(const QString& programDir, const QString& workingDir);

// "port" of the INI file; the default when the file, the key or a valid port is missing.
int readOcrPort(const QString& iniPath);

// "connect_timeout_ms" and "request_timeout_ms" of the INI file; the client's defaults for
// what is missing or not a positive number.
text::OcrTimeouts readOcrTimeouts(const QString& iniPath);

// How long the watcher waits before starting the service again after it ended soon after
// its start `quickEnds` times in a row: a second, doubling each time, at most a minute.
std::chrono::milliseconds restartDelay(int quickEnds);

class OcrServiceWatcher {
public:
    explicit OcrServiceWatcher(std::shared_ptr<text::OcrClient> client);
    ~OcrServiceWatcher();
    OcrServiceWatcher(const OcrServiceWatcher&) = delete;
    OcrServiceWatcher& operator=(const OcrServiceWatcher&) = delete;

    // Finds the program, points the client at the port of "ocr.ini" in `programDir` (or
    // at `port` when given), sets the client's time-outs from that file and starts
    // watching. False, and nothing started, without a program or when already watching.
    bool start(const QString& programDir, const QString& workingDir,
               std::optional<int> port = std::nullopt);
    // Ends the service for good: the program is shutting down.
    void stop();

    // The running service's process id; 0 between runs.
    std::uint32_t processId() const;

private:
    void watch(const QString& commandLine);

    const std::shared_ptr<text::OcrClient> client_;
    mutable std::mutex mutex_;
    std::condition_variable stopping_;
    bool stopRequested_ = false;
    sys::HiddenProcess current_;
    std::thread thread_;
};

}  // namespace autoscene::app
