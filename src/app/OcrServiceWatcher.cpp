#include "app/OcrServiceWatcher.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>
#include <algorithm>
#include <chrono>
#include <cstdint>

#include "system/ProcessEnd.h"
#include "text/OcrClient.h"

namespace autoscene::app {

Q_LOGGING_CATEGORY(lcOcrService, "autoscene.engine.ocr.service")

namespace {

#ifdef Q_OS_WIN
const QString kProgramName = QStringLiteral("morvane-ocr.exe");
#else
const QString kProgramName = QStringLiteral("morvane-ocr");
#endif

// A service that ends this soon after starting (a busy port, missing models) counts as a
// quick end: it is started again ever more slowly, so that a broken install neither spins
// nor reloads its models every second.
constexpr auto kSettledLifetime = std::chrono::seconds(10);
constexpr auto kLongestRestartDelay = std::chrono::seconds(60);
// How often a service shared with another window or run is checked for still answering.
constexpr auto kSharedServiceCheck = std::chrono::seconds(2);

}  // namespace

std::optional<QString> findOcrProgram(const QString& programDir, const QString& workingDir) {
    for (const QString& dir : {programDir, workingDir}) {
        const QFileInfo program(QDir(dir).filePath(kProgramName));
        if (!dir.isEmpty() && program.isFile() && program.isExecutable()) {
            return program.absoluteFilePath();
        }
    }
    return std::nullopt;
}

int readOcrPort(const QString& iniPath) {
    const QSettings ini(iniPath, QSettings::IniFormat);
    bool ok = false;
    const int port = ini.value(QStringLiteral("port")).toInt(&ok);
    return ok && port > 0 && port <= 65535 ? port : kDefaultOcrPort;
}

std::chrono::milliseconds restartDelay(int quickEnds) {
    if (quickEnds <= 0) {
        return std::chrono::milliseconds(0);
    }
    const auto delay = std::chrono::seconds(1) * (std::int64_t(1) << std::min(quickEnds - 1, 6));
    return std::min<std::chrono::milliseconds>(delay, kLongestRestartDelay);
}

text::OcrTimeouts readOcrTimeouts(const QString& iniPath) {
    const QSettings ini(iniPath, QSettings::IniFormat);
    text::OcrTimeouts timeouts;
    const auto readMs = [&ini](const char* key, std::chrono::milliseconds& value) {
        bool ok = false;
        const int ms = ini.value(QLatin1String(key)).toInt(&ok);
        if (ok && ms > 0) {
            value = std::chrono::milliseconds(ms);
        }
    };
    readMs("connect_timeout_ms", timeouts.connect);
    readMs("request_timeout_ms", timeouts.request);
    return timeouts;
}

OcrServiceWatcher::OcrServiceWatcher(std::shared_ptr<text::OcrClient> client)
    : client_(std::move(client)) {}

OcrServiceWatcher::~OcrServiceWatcher() {
    stop();
}

bool OcrServiceWatcher::start(const QString& programDir, const QString& workingDir,
                              std::optional<int> port) {
    const std::lock_guard lock(mutex_);
    if (thread_.joinable()) {
        return false;
    }
    const std::optional<QString> program = findOcrProgram(programDir, workingDir);
    if (!program || program->contains(QLatin1Char('"'))) {
        qCWarning(lcOcrService).noquote()
            << QStringLiteral("no %1 in %2 or %3; screen text will not be recognised")
                   .arg(kProgramName, programDir, workingDir);
        return false;
    }
    const QString ini = QDir(programDir).filePath(QStringLiteral("ocr.ini"));
    const int servicePort = port.value_or(readOcrPort(ini));
    client_->setUrl(text::ocrServiceUrl(servicePort));
    client_->setTimeouts(readOcrTimeouts(ini));
    stopRequested_ = false;
    const QString commandLine = QStringLiteral("\"%1\" %2").arg(*program).arg(servicePort);
    thread_ = std::thread([this, commandLine] { watch(commandLine); });
    return true;
}

void OcrServiceWatcher::watch(const QString& commandLine) {
    const std::string command = commandLine.toStdString();
    std::unique_lock lock(mutex_);
    int quickEnds = 0;
    while (!stopRequested_) {
        lock.unlock();
        // A service that another window or run started on the port serves this client
        // too; a second one could not take the port. Watched until it ends.
        const bool shared = client_->answers();
        lock.lock();
        if (shared) {
            stopping_.wait_for(lock, kSharedServiceCheck, [this] { return stopRequested_; });
            continue;
        }
        current_ = sys::startHiddenProcess(command);
        const auto startedAt = std::chrono::steady_clock::now();
        const sys::HiddenProcess process = current_;
        lock.unlock();
        if (process.started()) {
            sys::waitForProcessEnd(process);
        }
        lock.lock();
        // Released under the lock, so stop() never signals a reused process id.
        current_ = {};
        const int exitCode = sys::releaseProcess(process);
        qCInfo(lcOcrService).noquote() << "waitforsingleObject return...."
                                       << "exit code" << exitCode;
        const bool quick = std::chrono::steady_clock::now() - startedAt < kSettledLifetime;
        quickEnds = quick ? quickEnds + 1 : 0;
        const std::chrono::milliseconds delay = restartDelay(quickEnds);
        if (delay.count() > 0) {
            qCWarning(lcOcrService).noquote()
                << QStringLiteral(
                       "the service ended %1 times in a row soon after starting; "
                       "starting it again in %2 s")
                       .arg(quickEnds)
                       .arg(delay.count() / 1000);
        }
        stopping_.wait_for(lock, delay, [this] { return stopRequested_; });
    }
}

void OcrServiceWatcher::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopRequested_ = true;
        sys::terminateProcess(current_);
    }
    stopping_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

std::uint32_t OcrServiceWatcher::processId() const {
    const std::lock_guard lock(mutex_);
    return current_.processId;
}

}  // namespace autoscene::app
