#include "app/TaskRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <optional>
#include <variant>

#include "app/DeviceChoice.h"
#include "app/RunReporter.h"
#include "app/RunSession.h"
#include "app/TaskPlugin.h"
#include "app/WindowChoice.h"
#include "engine/ObserverFanOut.h"
#include "engine/TaskRunner.h"
#include "model/AtomicFile.h"
#include "model/TaskDocument.h"
#include "model/TaskSummary.h"
#include "playback/Recorder.h"
#include "script/Clipboard.h"
#include "script/TaskScripts.h"
#include "targets/DeviceTarget.h"
#include "targets/WindowTarget.h"

namespace autoscene::app {

using engine::RunEnd;
using engine::RunTarget;
using engine::TargetKind;
using model::TaskMode;

namespace {

platform::WindowQuery windowQuery(const model::WindowInfo& info, const RunOptions& options) {
    platform::WindowQuery query = windowQueryOf(info);
    if (options.windowTitle || options.className) {
        query.title = options.windowTitle.value_or(QString()).toStdString();
        query.fullMatchTitle = options.windowTitle.has_value();
        query.className = options.className.value_or(QString()).toStdString();
    }
    return query;
}

QString endName(RunEnd end, bool devices) {
    switch (end) {
        case RunEnd::TimeLimit:
            return QStringLiteral("time_limit");
        case RunEnd::Stopped:
            return QStringLiteral("interrupted");
        case RunEnd::DisplayLost:
            return devices ? QStringLiteral("device_lost") : QStringLiteral("display_lost");
        default:
            return QStringLiteral("stop");
    }
}

// Saves the frame as PNG whatever the file's name; the reason when it cannot.
QString saveFrame(const cv::Mat& frame, const QString& path) {
    if (frame.empty()) {
        return QStringLiteral("no frame was captured");
    }
    std::vector<uchar> png;
    try {
        cv::imencode(".png", frame, png);
    } catch (const cv::Exception& error) {
        return QString::fromStdString(error.what());
    }
    QString error;
    model::writeFileAtomically(
        path, QByteArray(reinterpret_cast<const char*>(png.data()), qsizetype(png.size())), &error);
    return error;
}

// Opens the task folder; nothing when it cannot run here (said on `err`).
std::optional<int> openTask(const RunOptions& options, model::TaskDocument& task,
                            QTextStream& err) {
    if (!QFileInfo(options.taskFolder + "/script.json").isFile()) {
        err << "no script.json in " << options.taskFolder << '\n';
        return kBadArguments;
    }
    const model::OpenResult opened = task.openFolder(options.taskFolder);
    if (!opened.ok) {
        err << "cannot open " << options.taskFolder << ": " << opened.error << '\n';
        return kBadArguments;
    }
    const model::TaskSummary summary = model::summarise(task);
    if (summary.events == 0 && summary.conditions == 0 && summary.actions == 0) {
        err << "the task in " << options.taskFolder
            << " has nothing to run: no scene has an event, condition or action\n";
        return kBadArguments;
    }
    return std::nullopt;
}

bool drivesDevices(const RunOptions& options, const model::TaskSettings& settings) {
    return options.namesDevices() ||
           (!options.fullScreen && !options.windowTitle && !options.className &&
            settings.taskMode == int(TaskMode::AndroidDevice));
}

bool drivesWindow(const RunOptions& options, const model::TaskSettings& settings) {
    return !options.fullScreen &&
           (options.windowTitle || options.className || options.allWindows ||
            !options.windowIds.empty() || settings.taskMode == int(TaskMode::Window));
}

// What --list-targets prints: the windows the task would drive, or the desktop.
int listTargets(bool windowMode, platform::IDesktopBackend& backend,
                targets::WindowQueryMatcher& matcher, QTextStream& out) {
    if (!windowMode) {
        out << "desktop\n";
        return kRunEnded;
    }
    const std::vector<platform::WindowHandle> windows = matchingWindows(backend, matcher);
    for (const platform::WindowHandle window : windows) {
        out << describeWindow(backend, window) << '\n';
    }
    return windows.empty() ? kNoTarget : kRunEnded;
}

void applyOptions(const RunOptions& options, engine::TaskRunner& runner) {
    if (options.loopMode) {
        runner.setLoopMode(*options.loopMode);
    }
    if (options.loopIntervalMs) {
        runner.setLoopIntervalMs(*options.loopIntervalMs);
    }
    runner.setRunTimeLimitSeconds(options.timeLimitSeconds);
}

// Runs until the run ends or the user asks it to stop; the seconds it took. `ending` is
// called once as soon as the run is ending, to cut short what the targets wait for.
double drive(engine::TaskRunner& runner, const std::vector<RunTarget>& targets,
             const StopRequest& stopRequested, engine::ITargetService& service,
             const std::function<void()>& ending) {
    QElapsedTimer elapsed;
    elapsed.start();
    runner.start(targets);
    bool endingTold = false;
    bool displayLost = false;
    // A GUI application exists only for the scripts' clipboard, whose calls on the workers
    // this thread serves. Not once the display is gone: Qt's own connection ends the
    // program with exit code 1 when its event processing finds the server gone, so the
    // runner's connection is asked first; on a lost display the clipboard calls give up
    // and the run ends saying so.
    const bool serveClipboard = QCoreApplication::instance() != nullptr &&
                                QCoreApplication::instance()->inherits("QGuiApplication");
    while (!runner.idle()) {
        if (serveClipboard && !displayLost) {
            displayLost = service.displayLost();
            if (displayLost) {
                script::closeApplicationClipboard();
                runner.stop(RunEnd::DisplayLost);
            } else {
                QCoreApplication::processEvents();
            }
        }
        if (stopRequested(std::chrono::milliseconds(100))) {
            runner.stop();
        }
        if (!endingTold && ending && runner.runEnd() != RunEnd::Running) {
            endingTold = true;
            ending();
        }
    }
    runner.waitUntilIdle(std::chrono::seconds(30));
    return double(elapsed.nsecsElapsed()) / 1e9;
}

// Plays the task on `targets` through `service` until the run ends.
int play(const RunOptions& options, const model::TaskDocument& task,
         engine::ITargetService& service, const std::vector<RunTarget>& targets,
         engine::IWindowMatcher* matcher, const RunIo& io, RunReporter::RouteOf deviceRoutes = {},
         const std::function<void()>& ending = {}) {
    RunSession session(task, service, io.windows);
    if (!session.startOcrService(options.ocrPort)) {
        io.err << "morvane-ocr is neither beside autoscene-run nor in the working directory: "
                  "screen text reads as empty\n";
    }
    engine::TaskRunner& runner = session.runner();
    RunReporter reporter(io.out, options.json, options.trace);
    reporter.setDeviceRoutes(std::move(deviceRoutes));
    engine::ObserverFanOut observers;
    observers.add(&reporter, &reporter);
    std::unique_ptr<playback::Recorder> recorder;
    std::optional<playback::CycleLog> cycles;
    if (!options.recordFolder.isEmpty()) {
        QString error;
        recorder = playback::Recorder::create(options.recordFolder, options.taskFolder, &error);
        if (!recorder) {
            io.err << "cannot record the run: " << error << '\n';
            return kBadArguments;
        }
        cycles.emplace(
            runner, [&recorder](const playback::CycleReport& cycle) { recorder->record(cycle); });
        observers.add(&*cycles, &*cycles);
    }
    runner.setSceneObserver(&observers);
    runner.setRunObserver(&observers);
    runner.setWindowMatcher(matcher);
    applyOptions(options, runner);

    const double seconds = drive(runner, targets, io.stopRequested, service, ending);
    if (!options.saveFrame.isEmpty()) {
        if (const QString error = saveFrame(reporter.lastFrame(), options.saveFrame);
            !error.isEmpty()) {
            io.err << "could not save the last frame to " << options.saveFrame << ": " << error
                   << '\n';
        }
    }
    const bool devices = !targets.empty() && targets.front().kind == TargetKind::AndroidDevice;
    reporter.printSummary({runner.cyclesCompleted(), seconds, endName(runner.runEnd(), devices)});
    if (runner.runEnd() == RunEnd::DisplayLost) {
        const QString lost = service.lostTargetText();
        io.err << (lost.isEmpty() ? "the display " + qEnvironmentVariable("DISPLAY") +
                                        " was lost (the X server went away)"
                                  : lost)
               << "; the run ended\n";
        return kDisplayLost;
    }
    return runner.runEnd() == RunEnd::TimeLimit ? kTimeLimit : kRunEnded;
}

int playOnDevices(const RunOptions& options, const model::TaskDocument& task, const RunIo& io) {
    const platform::android::AdbClient adb = adbClientFor(options);
    if (options.listTargets) {
        return printDeviceTargets(adb, options.json, io.out, io.err) ? kRunEnded : kNoTarget;
    }
    auto chosen = chooseDevices(options, adb, io.err);
    if (const int* code = std::get_if<int>(&chosen)) {
        return *code;
    }
    targets::DeviceTarget target(adb, deviceTargetOptions(options));
    const auto& devices = std::get<std::vector<RunTarget>>(chosen);
    return play(
        options, task, target, devices, nullptr, io,
        [&target](const QString& serial) { return target.routeOf(serial); },
        [&target] { target.cancelWaits(); });
}

}  // namespace

ScriptNeeds taskScriptNeeds(const QString& folder) {
    model::TaskDocument task;
    if (!task.openFolder(folder).ok) {
        return {};
    }
    return {!script::taskScripts(task).empty(), script::scriptsMayUseClipboard(task)};
}

int runTask(const RunOptions& options, platform::IDesktopBackend* backend, const RunIo& io) {
    model::TaskDocument task;
    if (const auto refused = openTask(options, task, io.err)) {
        return *refused;
    }
    const model::TaskSettings& settings = task.settings;
    if (drivesDevices(options, settings)) {
        return playOnDevices(options, task, io);
    }
    if (backend == nullptr) {
        io.err << "cannot open the X display " << qEnvironmentVariable("DISPLAY") << '\n';
        return kNoTarget;
    }
    targets::WindowTarget::Modes modes;
    modes.backgroundInput = options.background.value_or(settings.backAct);
    modes.backgroundCapture = options.background.value_or(settings.backCapture);
    const platform::WindowQuery query = windowQuery(settings.windowInfo, options);
    targets::WindowTarget target(*backend, modes, query);
    targets::WindowQueryMatcher matcher(*backend, query);
    const TaskPlugin plugin = loadTaskPlugin(task);
    if (!plugin.error.isEmpty()) {
        io.err << "the task's background plug-in does not load: " << plugin.error << '\n';
        return kBadArguments;
    }
    target.setPlugin(plugin.plugin.get());

    if (options.listTargets) {
        return listTargets(drivesWindow(options, settings), *backend, matcher, io.out);
    }
    std::vector<RunTarget> runTargets{RunTarget{TargetKind::Desktop}};
    runTargets.front().variableOverrides = options.variables;
    if (drivesWindow(options, settings)) {
        auto chosen = chooseWindows(options, settings.windowInfo, *backend, query, matcher, io.err);
        if (const int* code = std::get_if<int>(&chosen)) {
            return *code;
        }
        runTargets = std::get<std::vector<RunTarget>>(std::move(chosen));
    }
    return play(options, task, target, runTargets, &matcher, io);
}

}  // namespace autoscene::app
