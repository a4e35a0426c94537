#include "TestDevice.h"

#include <QDeadlineTimer>
#include <QThread>
#include <csignal>
#include <cstdlib>

#include "LoopbackPort.h"
#include "TestFiles.h"

namespace autoscene::testing {

TestDevice::TestDevice(QStringList options, int port) {
    options << "--port" << QString::number(port) << "--log" << folder_.filePath("device.log");
    process_.start(AUTOSCENE_TEST_DEVICE_PATH, options);
    if (!process_.waitForStarted() || !process_.waitForReadyRead(10000)) {
        return;
    }
    const QString first = QString::fromUtf8(process_.readLine()).trimmed();
    port_ = first.section(':', -1).toInt();
}

TestDevice::~TestDevice() {
    kill();
}

void TestDevice::kill() {
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished();
    }
}

void TestDevice::pause() {
    ::kill(pid_t(process_.processId()), SIGSTOP);
}

QStringList TestDevice::log() const {
    return autoscene::test::logLines(folder_.filePath("device.log"));
}

bool TestDevice::waitForLine(const QString& line, int timeoutMs) const {
    const QDeadlineTimer deadline(timeoutMs);
    while (!log().contains(line)) {
        if (deadline.hasExpired()) {
            return false;
        }
        QThread::msleep(20);
    }
    return true;
}

PrivateAdb::PrivateAdb() : port_(test::unusedLoopbackPort()) {
    ::setenv("ANDROID_ADB_SERVER_PORT", std::to_string(port_).c_str(), 1);
}

PrivateAdb::~PrivateAdb() {
    adb({"kill-server"});
    ::unsetenv("ANDROID_ADB_SERVER_PORT");
}

QString PrivateAdb::adb(const QStringList& arguments) const {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start("adb", arguments);
    process.waitForFinished(20000);
    return QString::fromUtf8(process.readAll());
}

bool PrivateAdb::connectOne(const TestDevice& device) const {
    return device.running() && adb({"connect", device.serial()}).contains("connected to");
}

}  // namespace autoscene::testing
