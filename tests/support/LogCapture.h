#pragma once
// Collects the Qt log lines written while it lives, from any thread.

#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <mutex>

namespace autoscene::ocr::testkit {

class LogCapture {
public:
    LogCapture() {
        const std::lock_guard lock(mutex());
        lines().clear();
        previous_ = qInstallMessageHandler(&LogCapture::handle);
    }
    ~LogCapture() { qInstallMessageHandler(previous_); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // How many lines so far contain `text`.
    int count(const QString& text) const {
        const std::lock_guard lock(mutex());
        return int(lines().filter(text).size());
    }
    QString all() const {
        const std::lock_guard lock(mutex());
        return lines().join(QLatin1Char('\n'));
    }

private:
    static void handle(QtMsgType, const QMessageLogContext&, const QString& message) {
        const std::lock_guard lock(mutex());
        lines().append(message);
    }
    static std::mutex& mutex() {
        static std::mutex instance;
        return instance;
    }
    static QStringList& lines() {
        static QStringList instance;
        return instance;
    }

    QtMessageHandler previous_ = nullptr;
};

}  // namespace autoscene::ocr::testkit
