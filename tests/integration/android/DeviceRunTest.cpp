// autoscene-run as a user runs it on devices: the Android demo task on test devices
// through the real adb, and the ways a device run refuses to start.

#include <gtest/gtest.h>

#include <unistd.h>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <functional>
#include <limits>
#include <map>
#include <set>

#include "ProgramRun.h"
#include "TestDevice.h"
#include "TestFiles.h"

using autoscene::testing::PrivateAdb;
using autoscene::testing::TestDevice;

namespace {

using RunResult = autoscene::test::ProgramResult;

RunResult run(const QStringList& arguments) {
    return autoscene::test::runProgram(AUTOSCENE_RUN_PATH, arguments);
}

// A device service file for the run to push.
QString serviceFile(const QTemporaryDir& folder) {
    QString path = folder.filePath("localservice.jar");
    autoscene::test::writeFile(path, "service code");
    return path;
}

TEST(DeviceRun, TheDemoTaskPlaysOnEveryDeviceInParallelAndDevicesAreListedWithTheirState) {
    PrivateAdb adb;
    TestDevice first;
    TestDevice second({"--screencap-header", "12"});
    ASSERT_TRUE(adb.connect(first, second));

    const RunResult result =
        run({AUTOSCENE_ANDROID_TASK, "--all-devices", "--json", "--time-limit", "30"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    std::set<QString> serials;
    for (const QJsonObject& target : result.lines("target")) {
        EXPECT_EQ(target["route"].toString(), "adb");
        serials.insert(target["serial"].toString());
    }
    EXPECT_EQ(serials, (std::set<QString>{first.serial(), second.serial()}));
    // The stop action of whichever device got there first ends the run for both.
    EXPECT_TRUE(first.log().contains("screen DONE") || second.log().contains("screen DONE"));
    for (const TestDevice* device : {&first, &second}) {
        EXPECT_EQ(device->log().mid(0, 2),
                  QStringList({"start com.autoscene.testapp", "screen START"}));
    }

    // Listed with their states once one is gone; adb notices the closed connection at once,
    // but give it a moment on a loaded machine.
    second.kill();
    for (int i = 0; i < 50 && !adb.adb({"devices"}).contains("offline"); ++i) {
        QThread::msleep(50);
    }
    const RunResult listed = run({AUTOSCENE_ANDROID_TASK, "--list-targets", "--json"});
    EXPECT_EQ(listed.exitCode, 0);
    std::map<QString, QString> states;
    for (const QJsonObject& target : listed.lines("target")) {
        states[target["serial"].toString()] = target["state"].toString();
    }
    EXPECT_EQ(states, (std::map<QString, QString>{{first.serial(), "device"},
                                                  {second.serial(), "offline"}}));
    EXPECT_TRUE(run({AUTOSCENE_ANDROID_TASK, "--list-targets"})
                    .out.contains("device " + first.serial() + " (device)\n"));
}

TEST(DeviceRun, TheDemoTaskPlaysThroughTheDeviceService) {
    PrivateAdb adb;
    // A second device makes adb refuse any forward command that names no device.
    TestDevice device;
    TestDevice bystander;
    ASSERT_TRUE(adb.connect(device, bystander));
    QTemporaryDir folder;

    const RunResult result =
        run({AUTOSCENE_ANDROID_TASK, "--device", device.serial(), "--device-service",
             serviceFile(folder), "--json", "--time-limit", "30"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    const auto targets = result.lines("target");
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0]["route"].toString(), "service");
    const QStringList log = device.log();
    EXPECT_TRUE(log.contains("service started"));
    EXPECT_TRUE(log.contains("text hello world"));
    EXPECT_TRUE(log.contains("screen DONE"));
    // The service the run started ended with it, and its forward went with it.
    EXPECT_TRUE(device.waitForLine("service ended"));
    EXPECT_FALSE(adb.adb({"forward", "--list"}).contains(device.serial()));
}

// autoscene-run started with --json; reads its output until `ready` holds, by default
// until the target line.
class StartedRun {
public:
    explicit StartedRun(QStringList arguments, const std::function<bool()>& ready = {}) {
        process.start(AUTOSCENE_RUN_PATH, arguments << "--json");
        // Bounded generously: a loaded machine may take seconds to start the run.
        for (int wait = 0; wait < 300 && !(ready ? ready() : out.contains("\"target\"")); ++wait) {
            process.waitForReadyRead(100);
            out += process.readAllStandardOutput();
        }
        started.start();
    }
    // Milliseconds from the start seen to the end; the most there is when it did not end in
    // `limitMs`.
    qint64 msToEnd(int limitMs) {
        if (!process.waitForFinished(limitMs)) {
            return std::numeric_limits<qint64>::max();
        }
        out += process.readAllStandardOutput();
        return started.elapsed();
    }

    QProcess process;
    QByteArray out;
    QElapsedTimer started;
};

// The default route tries the device service before the run's first frame; a service that
// never answers is given up at once by Ctrl+C and by the time limit.
TEST(DeviceRun, StopAndTimeLimitCutShortTheWaitForTheDeviceService) {
    PrivateAdb adb;
    TestDevice device({"--service-broken"});
    ASSERT_TRUE(adb.connect(device));
    QTemporaryDir folder;
    const auto serviceStarts = [&] { return device.log().filter("service key ").size(); };

    for (const bool interrupt : {true, false}) {
        SCOPED_TRACE(interrupt ? "Ctrl+C" : "time limit");
        const QStringList arguments =
            QStringList{AUTOSCENE_ANDROID_TASK, "--device", device.serial(), "--device-service",
                        serviceFile(folder)} +
            (interrupt ? QStringList{} : QStringList{"--time-limit", "1"});
        const qsizetype before = serviceStarts();
        StartedRun run(arguments, [&] { return serviceStarts() > before; });
        if (interrupt) {
            QThread::msleep(300);
            ::kill(pid_t(run.process.processId()), SIGINT);
        }
        EXPECT_LT(run.msToEnd(4000), interrupt ? 800 : 1500);
        EXPECT_TRUE(
            run.out.contains(interrupt ? "\"ended\":\"interrupted\"" : "\"ended\":\"time_limit\""))
            << run.out.toStdString();
    }
}

// An adb that lists one device and then never answers: the time limit and Ctrl+C still end
// the run within half a second, killing the adb call they interrupt.
TEST(DeviceRun, AHungAdbCallIsEndedByTheTimeLimitAndByCtrlC) {
    // A sleep no other program runs, to look for afterwards.
    qputenv("SLEEP_TAG", QByteArray::number(::getpid()));
    const QStringList arguments{AUTOSCENE_ANDROID_TASK, "--device", "fake", "--adb",
                                QString(AUTOSCENE_FIXTURES) + "/adb/never-answers"};

    StartedRun limited(arguments + QStringList{"--time-limit", "1"});
    EXPECT_LT(limited.msToEnd(5000), 1500) << limited.out.toStdString();
    EXPECT_EQ(limited.process.exitCode(), 124);

    StartedRun interrupted(arguments);
    QThread::msleep(500);
    ::kill(pid_t(interrupted.process.processId()), SIGINT);
    interrupted.started.restart();
    EXPECT_LT(interrupted.msToEnd(5000), 500);
    EXPECT_TRUE(interrupted.out.contains("\"ended\":\"interrupted\""))
        << interrupted.out.toStdString();
    // Each ended adb call took its child along: nothing of the script is left sleeping.
    EXPECT_EQ(QProcess::execute("pgrep", {"-f", "sleep 1000." + qgetenv("SLEEP_TAG")}), 1);

    // A call that times out is said once, with what timed out; the run goes on.
    const RunResult timedOut =
        run({AUTOSCENE_ANDROID_TASK, "--device", "fake", "--adb",
             QString(AUTOSCENE_FIXTURES) + "/adb/wm-size-hangs", "--adb-timeout", "1",
             "--time-limit", "3", "--loop-interval", "200"});
    EXPECT_EQ(timedOut.exitCode, 124);
    EXPECT_EQ(timedOut.err.count("timed out"), 1) << timedOut.err.toStdString();
    EXPECT_TRUE(timedOut.err.contains("wm size")) << timedOut.err.toStdString();
}

TEST(DeviceRun, ADeviceGoneForGoodEndsTheRunWithExit4) {
    PrivateAdb adb;
    TestDevice device;
    ASSERT_TRUE(adb.connect(device));
    StartedRun running({AUTOSCENE_ANDROID_TASK, "--device", device.serial(), "--device-lost", "1",
                        "--loop-interval", "100", "--time-limit", "60"});
    device.kill();
    const qint64 endedMs = running.msToEnd(20000);
    EXPECT_TRUE(endedMs >= 1000 && endedMs < 8000) << endedMs;
    EXPECT_EQ(running.process.exitCode(), 4);
    EXPECT_TRUE(running.out.contains("\"ended\":\"device_lost\"")) << running.out.toStdString();
    EXPECT_TRUE(QString::fromUtf8(running.process.readAllStandardError())
                    .contains("device " + device.serial() + " has not been listed"));
}

TEST(DeviceRun, RefusesToStartWithoutADevice) {
    PrivateAdb adb;
    struct Case {
        QStringList arguments;
        int exitCode;
        const char* message;
    };
    const Case cases[] = {
        {{AUTOSCENE_ANDROID_TASK}, 3, "no ADB device found"},
        {{AUTOSCENE_ANDROID_TASK, "--device", "127.0.0.1:1"}, 3, "127.0.0.1:1 is not connected"},
        {{AUTOSCENE_ANDROID_TASK, "--adb", "/nonexistent/adb"}, 3, "adb is not available"},
        {{AUTOSCENE_ANDROID_TASK, "--list-targets", "--adb", "/nonexistent/adb"},
         3,
         "adb is not available"},
        {{AUTOSCENE_ANDROID_TASK, "--adb-timeout", "0"}, 2, "--adb-timeout"},
        {{AUTOSCENE_ANDROID_TASK, "--device-route", "usb"}, 2, "--device-route"},
        {{AUTOSCENE_ANDROID_TASK, "--all-devices", "--full-screen"}, 2, "cannot be combined"},
    };
    for (const Case& c : cases) {
        const RunResult result = run(c.arguments);
        EXPECT_EQ(result.exitCode, c.exitCode) << c.arguments.join(' ').toStdString();
        EXPECT_TRUE(result.err.contains(c.message)) << result.err.toStdString();
    }
}

}  // namespace
