#pragma once
// The test device started as a program, and a private adb server (its own port, killed
// at the end) connected to it, so tests never touch a user's adb server.

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace autoscene::testing {

class TestDevice {
public:
    // `port` 0 picks a free one.
    explicit TestDevice(QStringList options = {}, int port = 0);
    ~TestDevice();
    TestDevice(const TestDevice&) = delete;
    TestDevice& operator=(const TestDevice&) = delete;

    bool running() const { return port_ != 0; }
    int port() const { return port_; }
    QString serial() const { return QStringLiteral("127.0.0.1:%1").arg(port_); }
    // Every line the device logged so far.
    QStringList log() const;
    // Waits up to `timeoutMs` for a log line equal to `line`.
    bool waitForLine(const QString& line, int timeoutMs = 5000) const;
    void kill();
    // Stops the process where it is: adb keeps it listed, but it answers nothing.
    void pause();

private:
    QTemporaryDir folder_;
    QProcess process_;
    int port_ = 0;
};

// Sets ANDROID_ADB_SERVER_PORT for this process and its children for its lifetime.
class PrivateAdb {
public:
    PrivateAdb();
    ~PrivateAdb();
    PrivateAdb(const PrivateAdb&) = delete;
    PrivateAdb& operator=(const PrivateAdb&) = delete;

    // "adb ARGUMENTS..." on this server; what it printed.
    QString adb(const QStringList& arguments) const;
    // Connects every device; false when one does not connect.
    template <class... Devices>
    bool connect(const Devices&... devices) const {
        return (connectOne(devices) && ...);
    }

private:
    bool connectOne(const TestDevice& device) const;
    int port_ = 0;
};

}  // namespace autoscene::testing
