// autoscene-run as a user runs it: on a private Xvfb, against the demo target, checking
// what it prints, what the target received and how the program exits.

#include <gtest/gtest.h>
#include <signal.h>

#include <QDir>
#include <QJsonObject>
#include <QTemporaryDir>
#include <algorithm>
#include <set>
#include <thread>

#include "ClientProcess.h"
#include "DemoTargetProcess.h"
#include "FullDisk.h"
#include "LoopbackPort.h"
#include "ProgramRun.h"
#include "ReferenceScreen.h"
#include "TestFiles.h"
#include "XvfbServer.h"

using namespace autoscene::test;
using namespace autoscene::testing;
using namespace std::chrono_literals;

namespace {

using RunResult = ProgramResult;

class RunnerProgram : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(server.display().empty()); }

    void start(QProcess& process, const QStringList& arguments, const XvfbServer* on = nullptr) {
        process.setProcessEnvironment(onDisplay((on ? *on : server).display()));
        process.start(AUTOSCENE_RUN_PATH, arguments);
        ASSERT_TRUE(process.waitForStarted());
    }

    RunResult run(const QStringList& arguments) {
        return runProgram(AUTOSCENE_RUN_PATH, arguments, onDisplay(server.display()));
    }

    // A task folder holding only the given script.json.
    QString task(const QByteArray& json) {
        QString folder = tasks.filePath(QString::number(++taskCount));
        QDir().mkpath(folder);
        writeFile(folder + "/script.json", json);
        return folder;
    }

    XvfbServer server{1024, 768};
    QTemporaryDir tasks;
    int taskCount = 0;
};

// One event that runs `actions` every cycle, under `conditions`.
QByteArray everyCycle(const QString& conditions, const QString& actions,
                      const QString& resources = {}) {
    return QStringLiteral(R"({%1 "scene_list": [{"name": "s", "event_list": [{"name": "e",
        "item_group": {"type": 5, "item_list": [%2]}, "action_list": [%3]}]}]})")
        .arg(resources, conditions, actions)
        .toUtf8();
}

struct DemoMode {
    const char* inputMode;
    bool windowManager;
};

class DemoTask : public RunnerProgram, public ::testing::WithParamInterface<DemoMode> {};

// Another program's window covers the whole screen, as a user leaves one open: the
// background reaches the target under it, the foreground brings it forward.
TEST_P(DemoTask, PlaysTheCoveredDemoTargetToItsFinishScreen) {
    ReferenceScreen screen(server.display());
    Display* display = screen.display();
    std::unique_ptr<ClientProcess> windowManager;
    if (GetParam().windowManager) {
        windowManager = std::make_unique<ClientProcess>(
            server.display(), std::vector<std::string>{"evilwm", "-fn", "fixed"});
        ASSERT_TRUE(windowManager->started());
        const Atom check = XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False);
        bool announced = false;
        for (int wait = 0; wait < 100 && !announced; ++wait) {
            std::this_thread::sleep_for(100ms);
            int count = 0;
            Atom* names = XListProperties(display, DefaultRootWindow(display), &count);
            announced = std::find(names, names + count, check) != names + count;
            XFree(names);
        }
        ASSERT_TRUE(announced) << "no window manager announced itself in 10 s";
    }
    DemoTargetProcess target(server.display(), {});
    ASSERT_TRUE(target.started());
    const Window cover =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1024, 768, 0, 0, 0x808080);
    XMapRaised(display, cover);
    XSync(display, False);
    std::this_thread::sleep_for(300ms);  // let a window manager frame and raise it
    const RunResult result =
        run({AUTOSCENE_DEMO_TASK, "--json", "--time-limit", "60", GetParam().inputMode});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.summary()["ended"].toString(), "stop");
    EXPECT_GE(result.summary()["events_fired"].toInt(), 5);
    for (const char* line : {"choice GOLD", "field hello 世界", "slider 100", "screen FINISH"}) {
        EXPECT_TRUE(target.waitForLine(line, 0, 1000)) << line;
    }
    QStringList scenes;
    for (const QJsonObject& scene : result.lines("scene")) {
        scenes << scene["scene"].toString();
    }
    EXPECT_EQ(scenes, (QStringList{"start", "menu", "form", "finish"}));
}

INSTANTIATE_TEST_SUITE_P(InputModes, DemoTask,
                         ::testing::Values(DemoMode{"--background", false},
                                           DemoMode{"--foreground", false},
                                           DemoMode{"--foreground", true}),
                         [](const auto& info) {
                             return std::string(info.param.inputMode + 2) +
                                    (info.param.windowManager ? "WithAWindowManager" : "");
                         });

TEST_F(RunnerProgram, MissingWindowExitsWithThreeBadInputWithTwo) {
    const struct {
        QStringList arguments;
        int exitCode;
        QString message;
    } cases[] = {
        {{AUTOSCENE_DEMO_TASK, "--time-limit", "5"},
         3,
         R"(title "Autoscene Demo" (whole title) and class "AutosceneDemo")"},
        {{}, 2, "expected one task folder"},
        {{AUTOSCENE_DEMO_TASK, "--time-limit", "soon"}, 2, "--time-limit needs"},
        {{AUTOSCENE_DEMO_TASK, "--var", "x=1"}, 2, "--var needs ID=VALUE"},
        {{tasks.path() + "/nowhere"}, 2, "no script.json in " + tasks.path() + "/nowhere"},
        {{task(R"({"scene_list": [)")}, 2, "cannot open "},
        // An empty file opens as this does (TaskTool.CheckSaysAnEmptyFileIsEmpty...).
        {{task(R"({"scene_list": []})"), "--full-screen"}, 2, "nothing to run"},
    };
    for (const auto& c : cases) {
        const RunResult result = run(c.arguments);
        EXPECT_EQ(result.exitCode, c.exitCode) << c.arguments.join(' ').toStdString();
        EXPECT_TRUE(result.err.contains(c.message)) << result.err.toStdString();
    }
}

TEST_F(RunnerProgram, InterruptStopsTheRunCleanlyAndACrashLeavesAReport) {
    // Ctrl+C is CtrlCAndTheTimeLimitReach...'s, on busier runs.
    QTemporaryDir workingDirectory;
    const auto stopWith = [&](int signal) {
        QProcess process;
        process.setWorkingDirectory(workingDirectory.path());
        start(process, {task(everyCycle({}, {})), "--full-screen", "--json"});
        std::this_thread::sleep_for(1500ms);  // let it cycle
        ::kill(pid_t(process.processId()), signal);
        return finishProgram(process, 10000);
    };
    const RunResult terminated = stopWith(SIGTERM);
    EXPECT_EQ(terminated.exitCode, 0);
    EXPECT_EQ(terminated.summary()["ended"].toString(), "interrupted");
    EXPECT_EQ(stopWith(SIGSEGV).exitCode, -1) << "the crash still ends the program";
    const QByteArray report = readFile(workingDirectory.filePath("crash.dmp"));
    EXPECT_TRUE(report.startsWith("crash: SIGSEGV")) << report.toStdString();
}

TEST_F(RunnerProgram, VariablesGivenOnTheCommandLineStartTheRunAndAFullDiskLosesOnlyTheFrame) {
    // Stops at once when variable 1 starts as "go"; otherwise the time limit ends it.
    const QString folder = AUTOSCENE_FIXTURES "/tasks/stop-on-variable";
    const RunResult started = run({folder, "--full-screen", "--time-limit", "5", "--var", "1=go"});
    EXPECT_TRUE(started.out.contains("ended: stop")) << started.out.toStdString();

    // The last frame on a full disk: the run still ends as it would, and says why.
    QTemporaryDir full;
    QProcess process;
    process.setProcessEnvironment(onDisplay(server.display()));
    startOnAFullDisk(
        process, full.path(), AUTOSCENE_RUN_PATH,
        {folder, "--full-screen", "--time-limit", "1", "--save-frame", full.filePath("frame.png")});
    const RunResult unsaved = finishProgram(process);
    if (unsaved.exitCode == kNoFullDisk) {
        GTEST_SKIP() << "no user namespace to mount a full disk in";
    }
    EXPECT_EQ(unsaved.exitCode, 124);
    EXPECT_TRUE(unsaved.err.contains("could not save the last frame") &&
                unsaved.err.contains("No space left on device"))
        << unsaved.err.toStdString();
}

TEST_F(RunnerProgram, ScriptExampleCountsWritesItsReportAndScriptsHaveTheClipboard) {
    const QString report = tasks.filePath("report/count.txt");
    QDir().mkpath(tasks.filePath("report"));
    const RunResult result = run({AUTOSCENE_SCRIPT_TASK, "--full-screen", "--json", "--time-limit",
                                  "30", "--var", "2=" + report});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(readFile(report), "counted to 3, screen seen");

    // The first event puts a text on the clipboard; the second stops once it reads it back.
    const RunResult clipboard = run({QString(AUTOSCENE_FIXTURES) + "/tasks/clipboard-round-trip",
                                     "--full-screen", "--json", "--time-limit", "20"});
    EXPECT_EQ(clipboard.exitCode, 0) << clipboard.err.toStdString();
}

TEST_F(RunnerProgram, CtrlCAndTheTimeLimitReachKeyGroupsImageChecksScriptsAndTheTextService) {
    const QString keyGroup =
        task(everyCycle({}, QStringLiteral(R"({"type": 11, "event_type": 3, "group_key": [%1]})")
                                .arg(QStringList(400000, "65").join(','))));

    // Thousands of image checks a cycle, each of them real matching work.
    const QStringList images(4000, R"({"type": 1, "relation": 1, "image_id": 1, "state": 1})");
    const QString matching = task(everyCycle(images.join(','), {}, R"("image_list": [{"id": 1,
        "name": "start", "file": "1.png", "sim": 0.9, "type": 1}],)"));
    ASSERT_EQ(QProcess::execute("cp", {"-r", AUTOSCENE_DEMO_TASK "/image", matching}), 0);

    const QString stuck = task(everyCycle({}, R"({"type": 12, "js_code": "while (true) {}"})"));

    // A service that takes the request and never answers, as when it is stopped.
    const SilentListener hung;
    const QString reading = task(everyCycle(
        R"({"type": 6, "relation": 1, "text_info": {"value": "Start", "state": 1}})", {}));

    const struct {
        const char* name;
        QString folder;
        QStringList options;
    } cases[] = {{"key group", keyGroup, {}},
                 {"image checks", matching, {}},
                 {"script stuck in a loop", stuck, {}},
                 {"hung text service", reading, {"--ocr-port", QString::number(hung.port())}}};
    for (const auto& c : cases) {
        for (const bool byTimeLimit : {true, false}) {
            SCOPED_TRACE(std::string(c.name) + (byTimeLimit ? ", time limit" : ", Ctrl+C"));
            QProcess process;
            start(process, QStringList{c.folder, "--full-screen", "--json"} + c.options +
                               (byTimeLimit ? QStringList{"--time-limit", "1"} : QStringList{}));
            if (!byTimeLimit) {
                std::this_thread::sleep_for(1500ms);
                ::kill(pid_t(process.processId()), SIGINT);
            }
            // Each would hold the run for a minute or more if nothing looked at the stop.
            const RunResult result = finishProgram(process, 10000);
            EXPECT_EQ(result.exitCode, byTimeLimit ? 124 : 0) << result.err.toStdString();
            EXPECT_EQ(result.summary()["ended"].toString(),
                      byTimeLimit ? "time_limit" : "interrupted");
        }
    }
}

TEST_F(RunnerProgram, LosingTheDisplayEndsTheRunWithFourAndSaysSo) {
    // Scripts that use the clipboard run in a GUI application, whose own connection to the
    // display must not end the program first, nor leave a clipboard call waiting forever.
    const char* const scripts[] = {
        "",
        R"({"type": 9, "relation": 1, "js_code": "'false'"})",
        R"js({"type": 9, "relation": 1,
            "js_code": "auto.setClip('a'); String(auto.getClip() == 'b')"})js",
    };
    for (const char* script : scripts) {
        SCOPED_TRACE(script);
        XvfbServer display{640, 480};
        QProcess process;
        start(process, {task(everyCycle(script, {})), "--full-screen", "--json"}, &display);
        std::this_thread::sleep_for(1500ms);
        display.stop();
        const RunResult result = finishProgram(process, 10000);
        EXPECT_EQ(result.exitCode, 4) << result.err.toStdString();
        EXPECT_TRUE(result.err.contains("display") && result.err.contains("lost"))
            << result.err.toStdString();
        EXPECT_EQ(result.summary()["ended"].toString(), "display_lost");
    }
}

TEST_F(RunnerProgram, AClickOutsideTheWindowIsNotSentAndTheLastFrameOutlivesTheWindow) {
    DemoTargetProcess target(server.display(), {});
    ASSERT_TRUE(target.started());
    // Taps far to the right of the demo window, where the root window would take it.
    const QString frame = tasks.filePath("last-frame");  // no .png: saved as PNG all the same
    QProcess process;
    start(process, {QString(AUTOSCENE_FIXTURES) + "/tasks/click-outside-window", "--json",
                    "--foreground", "--time-limit", "4", "--save-frame", frame});
    QByteArray seen;
    for (int wait = 0; wait < 100 && !seen.contains("outside"); ++wait) {
        process.waitForReadyRead(100);
        seen += process.readAllStandardOutput();
    }
    target.stop();
    RunResult result = finishProgram(process);
    result.out.prepend(QString::fromUtf8(seen));
    EXPECT_EQ(result.exitCode, 124) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("is outside the window")) << result.out.toStdString();
    EXPECT_FALSE(result.out.contains(R"("points":[{)")) << "no point was clicked";
    EXPECT_TRUE(readFile(frame).startsWith("\x89PNG")) << result.err.toStdString();
}

// The demo task on an empty screen: its start screen never shows.
TEST_F(RunnerProgram, TimeLimitEndsWith124AndTheTraceExplainsASceneNeverRecognised) {
    const RunResult result =
        run({AUTOSCENE_DEMO_TASK, "--full-screen", "--json", "--trace", "--time-limit", "1"});
    EXPECT_EQ(result.exitCode, 124) << result.err.toStdString();
    EXPECT_EQ(result.summary()["ended"].toString(), "time_limit");
    EXPECT_GT(result.summary()["cycles"].toInt(), 0);
    int explained = 0;
    for (const QJsonObject& object : result.lines("trace")) {
        if (object["identification"] != "start") {
            continue;
        }
        EXPECT_FALSE(object["holds"].toBool());
        const QJsonValue image = object["conditions"]["item_state"][0];
        EXPECT_EQ(image["name"].toString(), "start button");
        EXPECT_LT(image["sim"].toDouble(), 0.9);
        EXPECT_TRUE(image.toObject().contains("rect"));
        ++explained;
    }
    EXPECT_GT(explained, 0) << result.out.toStdString();
}

// Side by side; running in turn is the runner's (Runner.EveryTargetRunsInBothMultiTargetModes...).
TEST_F(RunnerProgram, AllWindowsRunsTheTaskOnThreeDemoWindowsAndAWindowIdPicksOne) {
    std::vector<std::unique_ptr<DemoTargetProcess>> targets;
    for (int i = 0; i < 3; ++i) {
        const std::string place =
            "640x400+" + std::to_string(i * 150) + "+" + std::to_string(i * 100);
        targets.push_back(std::make_unique<DemoTargetProcess>(
            server.display(), std::vector<std::string>{"--geometry", place}));
        ASSERT_TRUE(targets.back()->started());
    }
    const QString folder = task(
        readFile(AUTOSCENE_DEMO_TASK "/script.json").replace(0, 1, R"({"concurrency": true, )"));
    ASSERT_EQ(QProcess::execute("cp", {"-r", AUTOSCENE_DEMO_TASK "/image", folder}), 0);

    const RunResult listed = run({folder, "--list-targets"});
    EXPECT_EQ(listed.exitCode, 0) << listed.err.toStdString();
    EXPECT_EQ(listed.out.count("window 0x"), 3) << listed.out.toStdString();

    const RunResult result =
        run({folder, "--all-windows", "--background", "--json", "--time-limit", "90"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    std::set<QString> windows;
    for (const QJsonObject& event : result.lines("event")) {
        windows.insert(event["window"].toString());
    }
    EXPECT_EQ(windows.size(), 3u) << "every window's events carry it";
    // The first window to finish stops the run; by then every one has made its choice.
    for (const auto& target : targets) {
        EXPECT_TRUE(target->waitForLine("choice GOLD", 0, 1000));
    }
    // Named by id, only that window is driven.
    const QString second = QString::number(targets[1]->window());
    const RunResult named =
        run({folder, "--window-id", second, "--background", "--json", "--time-limit", "60"});
    EXPECT_EQ(named.exitCode, 0) << named.err.toStdString();
    for (const QJsonObject& event : named.lines("event")) {
        EXPECT_EQ(event["window"].toString(), second);
    }
    EXPECT_EQ(run({folder, "--window-id", "0x1fffffff"}).exitCode, 3);
}

}  // namespace
