#include "app/OcrServiceWatcher.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>
#include <chrono>

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

// A service that ends this soon after starting (a busy port, missing models) is not
// started again at once, so that a broken install does not spin.
constexpr auto kMinimumLifetime = std::chrono::seconds(1);

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

OcrServiceWatcher::OcrServiceWatcher(std::shared_ptr<text::OcrClient> client)
    : client_(std::move(client)) {}

OcrServiceWatcher::~OcrServiceWatcher() {
    stop();
}

bool OcrServiceWatcher::start(const QString& programDir, const QString& workingDir) {
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
    const int port = readOcrPort(QDir(programDir).filePath(QStringLiteral("ocr.ini")));
    client_->setUrl(text::ocrServiceUrl(port));
    stopRequested_ = false;
    const QString commandLine = QStringLiteral("\"%1\" %2").arg(*program).arg(port);
    thread_ = std::thread([this, commandLine] { watch(commandLine); });
    return true;
}

void OcrServiceWatcher::watch(const QString& commandLine) {
    const std::string command = commandLine.toStdString();
    std::unique_lock lock(mutex_);
    while (!stopRequested_) {
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
        stopping_.wait_until(lock, startedAt + kMinimumLifetime, [this] { return stopRequested_; });
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
