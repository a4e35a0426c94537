#pragma once
// Starts the local recognition service and keeps it running: a thread of its own waits
// for the process and starts it again whenever it ends, until stop().

#include <QString>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "system/Process.h"

namespace autoscene::text {
class OcrClient;
}

namespace autoscene::app {

constexpr int kDefaultOcrPort = 8080;

// The service program in `programDir`, else in `workingDir`; nothing when neither has it.
std::optional<QString> findOcrProgram(const QString& programDir, const QString& workingDir);

// "port" of the INI file; the default when the file, the key or a valid port is missing.
int readOcrPort(const QString& iniPath);

class OcrServiceWatcher {
public:
    explicit OcrServiceWatcher(std::shared_ptr<text::OcrClient> client);
    ~OcrServiceWatcher();
    OcrServiceWatcher(const OcrServiceWatcher&) = delete;
    OcrServiceWatcher& operator=(const OcrServiceWatcher&) = delete;

    // Finds the program, points the client at the port of "ocr.ini" in `programDir`
    // and starts watching. False, and nothing started, without a program or when
    // already watching.
    bool start(const QString& programDir, const QString& workingDir);
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
