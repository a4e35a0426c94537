#include "OcrServiceProcess.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <stdexcept>

#include "http/Http.h"

namespace autoscene::ocr::testkit {

namespace {

constexpr int kStartTimeoutMs = 60'000;
constexpr char kReadyText[] = "listening on 127.0.0.1:";

}  // namespace

OcrServiceProcess::OcrServiceProcess(const std::string& program, int engineCount,
                                     const std::string& modelFolder, const std::string& errorFile)
    : process_(std::make_unique<QProcess>()) {
    QStringList arguments{QStringLiteral("0"), QString::number(engineCount)};
    if (!modelFolder.empty()) {
        arguments << QString::fromStdString(modelFolder);
    }
    if (errorFile.empty()) {
        process_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    } else {
        process_->setStandardErrorFile(QString::fromStdString(errorFile));
    }
    process_->start(QString::fromStdString(program), arguments);
    if (!process_->waitForStarted()) {
        throw std::runtime_error("cannot start " + program);
    }
    QByteArray output;
    const QDeadlineTimer deadline(kStartTimeoutMs);
    while (!output.contains('\n')) {
        if (!process_->waitForReadyRead(int(deadline.remainingTime()))) {
            stop();
            throw std::runtime_error("morvane-ocr did not report its port: " +
                                     output.toStdString());
        }
        output += process_->readAllStandardOutput();
    }
    process_->closeReadChannel(QProcess::StandardOutput);
    const qsizetype at = output.indexOf(kReadyText);
    port_ = at < 0 ? 0 : output.mid(at + qsizetype(sizeof kReadyText) - 1).trimmed().toInt();
}

OcrServiceProcess::~OcrServiceProcess() {
    stop();
}

void OcrServiceProcess::stop() {
    if (process_->state() != QProcess::NotRunning) {
        process_->terminate();
        process_->waitForFinished();
    }
}

std::string OcrServiceProcess::url() const {
    return "http://127.0.0.1:" + std::to_string(port_) + "/ocr_detect";
}

std::string OcrServiceProcess::detect(std::string_view png, const std::string& engine,
                                      const std::string& fieldName) const {
    const http::HttpFilePart file{fieldName, "image.png", "image/png", png};
    const http::HttpFields fields =
        engine.empty() ? http::HttpFields{} : http::HttpFields{{"engine", engine}};
    return http::httpPostMultipart(url(), {}, file, fields).body;
}

}  // namespace autoscene::ocr::testkit
