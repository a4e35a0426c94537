// autoscene-run as a user runs it: on a private Xvfb, against the demo target, checking
// what it prints, what the target received and how the program exits.

#include <gtest/gtest.h>
#include <signal.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include "DemoTargetProcess.h"
#include "XvfbServer.h"

using autoscene::testing::DemoTargetProcess;
using autoscene::testing::XvfbServer;

namespace {

struct RunResult {
    int exitCode = -1;
    QString out;
    QString err;

    // The last line of a --json run.
    QJsonObject summary() const {
        const QStringList lines = out.trimmed().split('\n');
        return QJsonDocument::fromJson(lines.last().toUtf8()).object();
    }
};

class RunnerProgram : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(server.display().empty()); }

    void start(QProcess& process, const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", QString::fromStdString(server.display()));
        process.setProcessEnvironment(environment);
        process.start(AUTOSCENE_RUN_PATH, arguments);
        ASSERT_TRUE(process.waitForStarted());
    }

    RunResult finish(QProcess& process, int timeoutMs = 60000) {
        EXPECT_TRUE(process.waitForFinished(timeoutMs));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    RunResult run(const QStringList& arguments) {
        QProcess process;
        start(process, arguments);
        return finish(process);
    }

    // A task folder holding only the given script.json.
    QString task(const QByteArray& json) {
        const QString folder = tasks.filePath(QString::number(++taskCount));
        QDir().mkpath(folder);
        QFile file(folder + "/script.json");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
        return folder;
    }

    XvfbServer server{1024, 768};
    QTemporaryDir tasks;
    int taskCount = 0;
};

class DemoTask : public RunnerProgram, public ::testing::WithParamInterface<const char*> {};

TEST_P(DemoTask, PlaysTheDemoTargetToItsFinishScreen) {
    DemoTargetProcess target(server.display(), {});
    ASSERT_TRUE(target.started());
    const QString frame = tasks.filePath("final.png");
    const RunResult result = run(
        {AUTOSCENE_DEMO_TASK, "--json", "--time-limit", "60", "--save-frame", frame, GetParam()});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.summary()["type"].toString(), "summary");
    EXPECT_EQ(result.summary()["ended"].toString(), "stop");
    EXPECT_GE(result.summary()["events_fired"].toInt(), 5);
    for (const char* line : {"choice GOLD", "field hello 世界", "slider 100", "screen FINISH"}) {
        EXPECT_TRUE(target.waitForLine(line, 0, 1000)) << line;
    }
    QStringList scenes;
    for (const QString& line : result.out.split('\n', Qt::SkipEmptyParts)) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        if (object["type"] == "scene") {
            scenes << object["scene"].toString();
        }
    }
    EXPECT_EQ(scenes, (QStringList{"start", "menu", "form", "finish"}));
    EXPECT_TRUE(QFileInfo(frame).size() > 0);
}

INSTANTIATE_TEST_SUITE_P(BothInputModes, DemoTask,
                         ::testing::Values("--foreground", "--background"));

TEST_F(RunnerProgram, MissingWindowExitsWithThreeBadInputWithTwo) {
    const RunResult missing = run({AUTOSCENE_DEMO_TASK, "--time-limit", "5"});
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_TRUE(missing.err.contains("Autoscene Demo")) << missing.err.toStdString();
    EXPECT_TRUE(missing.err.contains("AutosceneDemo")) << "names the window it looked for";

    EXPECT_EQ(run({}).exitCode, 2);
    EXPECT_EQ(run({AUTOSCENE_DEMO_TASK, "--time-limit", "soon"}).exitCode, 2);
    EXPECT_EQ(run({AUTOSCENE_DEMO_TASK, "--var", "x=1"}).exitCode, 2);
    EXPECT_EQ(run({tasks.path() + "/nowhere"}).exitCode, 2);
    const RunResult broken = run({task(R"({"scene_list": [)")});
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_FALSE(broken.err.isEmpty());
}

TEST_F(RunnerProgram, InterruptStopsTheRunCleanlyAndACrashLeavesAReport) {
    const QString idle = task(R"({"scene_list": []})");
    for (int signal : {SIGINT, SIGTERM, SIGSEGV}) {
        QTemporaryDir workingDirectory;
        QProcess process;
        process.setWorkingDirectory(workingDirectory.path());
        QStringList arguments{idle, "--full-screen"};
        if (signal != SIGSEGV) {
            arguments << "--json";
        }
        start(process, arguments);
        process.waitForReadyRead(1500);  // the run prints nothing before the end; let it cycle
        ::kill(pid_t(process.processId()), signal);
        const RunResult result = finish(process, 10000);
        if (signal != SIGSEGV) {
            EXPECT_EQ(result.exitCode, 0) << signal;
            EXPECT_EQ(result.summary()["ended"].toString(), "interrupted");
            continue;
        }
        EXPECT_EQ(result.exitCode, -1) << "the crash still ends the program";
        QFile report(workingDirectory.filePath("crash.dmp"));
        ASSERT_TRUE(report.open(QIODevice::ReadOnly));
        const QByteArray text = report.readAll();
        EXPECT_TRUE(text.startsWith("crash: SIGSEGV")) << text.toStdString();
        EXPECT_TRUE(text.contains("backtrace:"));
    }
}

TEST_F(RunnerProgram, TimeLimitEndsTheRunWith124AndVariablesGivenOnTheCommandLineStartIt) {
    // Stops at once when variable 1 starts as "go"; otherwise the time limit ends it.
    const QString folder = task(R"({"var_list": [{"type": 1, "id": 1, "name": "v",
        "value": "wait"}], "scene_list": [{"name": "s", "event_list": [{"name": "e",
        "item_group": {"type": 5, "item_list": [{"type": 2, "relation": 1, "variable_id": 1,
        "compare_value": "go", "state": 0}]}, "action_list": [{"type": 10}]}]}]})");
    const RunResult limited = run({folder, "--full-screen", "--json", "--time-limit", "1"});
    EXPECT_EQ(limited.exitCode, 124);
    EXPECT_EQ(limited.summary()["ended"].toString(), "time_limit");
    EXPECT_GT(limited.summary()["cycles"].toInt(), 0);
    const RunResult started = run({folder, "--full-screen", "--time-limit", "5", "--var", "1=go"});
    EXPECT_EQ(started.exitCode, 0);
    EXPECT_TRUE(started.out.contains("ended: stop")) << started.out.toStdString();
}

TEST_F(RunnerProgram, ScriptExampleCountsWritesItsReportAndStops) {
    const QString report = tasks.filePath("report/count.txt");
    QDir().mkpath(tasks.filePath("report"));
    const RunResult result = run({AUTOSCENE_SCRIPT_TASK, "--full-screen", "--json", "--time-limit",
                                  "30", "--var", "2=" + report});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.summary()["ended"].toString(), "stop");
    EXPECT_TRUE(result.out.contains(R"("result":"written")")) << result.out.toStdString();
    QFile file(report);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "counted to 3, screen seen");
}

TEST_F(RunnerProgram, CtrlCAndTheTimeLimitReachAScriptStuckInALoop) {
    // The script marks that it runs before it loops, so that Ctrl+C reaches it mid-loop
    // rather than before the action starts.
    const QString started = tasks.filePath(QStringLiteral("started"));
    const QString stuck = task(QStringLiteral(R"({"scene_list": [{"name": "s", "event_list": [
        {"name": "e", "item_group": {"type": 5, "item_list": [{"type": 9, "relation": 1,
        "js_code": "'true'"}]}, "action_list": [{"type": 12,
        "js_code": "file.write('%1', 'x'); while (true) {}"}]}]}]})")
                                   .arg(started)
                                   .toUtf8());
    EXPECT_EQ(run({stuck, "--full-screen", "--time-limit", "1"}).exitCode, 124);
    QFile::remove(started);

    QProcess process;
    start(process, {stuck, "--full-screen", "--json"});
    // Bounded generously: a loaded machine may take seconds to start the run.
    for (int wait = 0; wait < 600 && !QFile::exists(started); ++wait) {
        process.waitForReadyRead(100);
    }
    ::kill(pid_t(process.processId()), SIGINT);
    const RunResult result = finish(process, 10000);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.summary()["ended"].toString(), "interrupted");
    EXPECT_TRUE(result.out.contains("interrupted: the run stopped")) << result.out.toStdString();
}

TEST_F(RunnerProgram, ScriptsHaveTheDesktopClipboard) {
    // The first event puts a text on the clipboard; the second stops once it reads it back.
    const QString folder = task(R"json({"scene_list": [{"name": "s", "event_list": [
        {"name": "set", "item_group": {"type": 5, "item_list": [{"type": 9, "relation": 1,
            "js_code": "String(auto.getClip() != 'clip ü')"}]},
         "action_list": [{"type": 12, "js_code": "auto.setClip('clip ü')"}]},
        {"name": "read", "item_group": {"type": 5, "item_list": [{"type": 9, "relation": 1,
            "js_code": "String(auto.getClip() == 'clip ü')"}]},
         "action_list": [{"type": 10}]}]}]})json");
    const RunResult result = run({folder, "--full-screen", "--json", "--time-limit", "20"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.summary()["ended"].toString(), "stop");
}

}  // namespace
