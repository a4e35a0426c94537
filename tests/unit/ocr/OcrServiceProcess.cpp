#include "OcrServiceProcess.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <stdexcept>

#include "http/Http.h"

namespace autoscene::ocr::testkit {

ServiceAnswer readServiceAnswer(const std::string& body) {
    const QJsonObject json = QJsonDocument::fromJson(QByteArray::fromStdString(body)).object();
    return {json["strRes"].toString().toStdString(), json["engine"].toString().toStdString(),
            json["error"].toString().toStdString()};
}

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
    const QDeadlineTimer deadline(60'000);
    while (!process_->canReadLine() && process_->waitForReadyRead(int(deadline.remainingTime()))) {
    }
    const QByteArray line = process_->readLine();
    constexpr char kReadyText[] = "listening on 127.0.0.1:";
    const qsizetype at = line.indexOf(kReadyText);
    port_ = at < 0 ? 0 : line.mid(at + qsizetype(sizeof kReadyText) - 1).trimmed().toInt();
    if (port_ == 0) {
        stop();
        throw std::runtime_error("cannot start " + program + ": " + line.toStdString());
    }
    process_->closeReadChannel(QProcess::StandardOutput);
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

ServiceAnswer OcrServiceProcess::detect(std::string_view png, const std::string& engine,
                                        const std::string& fieldName) const {
    const http::HttpFilePart file{fieldName, "image.png", "image/png", png};
    const http::HttpFields fields =
        engine.empty() ? http::HttpFields{} : http::HttpFields{{"engine", engine}};
    return readServiceAnswer(http::httpPostMultipart(url(), {}, file, fields).body);
}

}  // namespace autoscene::ocr::testkit
