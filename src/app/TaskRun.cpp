#include "app/TaskRun.h"

#include "actions/RuntimeItems.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <optional>
#include <variant>

#include "app/DeviceChoice.h"
#include "app/OcrServiceWatcher.h"
#include "app/RunReporter.h"
#include "engine/BgraConversion.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"
#include "model/TaskDocument.h"
#include "plugins/BackgroundPlugin.h"
#include "plugins/PluginCall.h"
#include "recognition/DetectionPool.h"
#include "targets/DeviceTarget.h"
#include "targets/WindowTarget.h"
#include "text/OcrClient.h"

namespace autoscene::app {

using engine::RunEnd;
using engine::RunTarget;
using engine::TargetKind;
using model::TaskMode;

namespace {

platform::WindowQuery windowQuery(const model::WindowInfo& info, const RunOptions& options) {
    platform::WindowQuery query;
    query.title = info.title.toStdString();
    query.fullMatchTitle = info.isFullmatchTitle;
    query.className = info.className.toStdString();
    query.childTitle = info.childTitle.toStdString();
    query.childClassName = info.childClassName.toStdString();
    if (options.windowTitle || options.className) {
        query.title = options.windowTitle.value_or(QString()).toStdString();
        query.fullMatchTitle = options.windowTitle.has_value();
        query.className = options.className.value_or(QString()).toStdString();
    }
    return query;
}

QString describeQuery(const platform::WindowQuery& query) {
    return QStringLiteral("title \"%1\" (%2) and class \"%3\"")
        .arg(QString::fromStdString(query.title),
             query.fullMatchTitle ? QStringLiteral("whole title") : QStringLiteral("contained"),
             QString::fromStdString(query.className));
}

QString endName(RunEnd end) {
    switch (end) {
        case RunEnd::TimeLimit:
            return QStringLiteral("time_limit");
        case RunEnd::Stopped:
            return QStringLiteral("interrupted");
        default:
            return QStringLiteral("stop");
    }
}

bool saveFrame(engine::ITargetService& targets, const RunTarget& target, const QString& path) {
    engine::TaskInfo task;
    task.kind = target.kind;
    task.window = target.window;
    task.serial = target.serial;
    bool saved = false;
    targets.capture(task, [&](const platform::BgraView& view) {
        cv::Mat bgr;
        saved = engine::convertBgraToBgr(view, bgr) && cv::imwrite(path.toStdString(), bgr);
    });
    return saved;
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
    return std::nullopt;
}

bool drivesDevices(const RunOptions& options, const model::TaskSettings& settings) {
    return options.namesDevices() ||
           (!options.fullScreen && !options.windowTitle && !options.className &&
            settings.taskMode == int(TaskMode::AndroidDevice));
}

bool drivesWindow(const RunOptions& options, const model::TaskSettings& settings) {
    return !options.fullScreen &&
           (options.windowTitle || options.className || settings.taskMode == int(TaskMode::Window));
}

// The first window the query accepts, resized as the task asks; the desktop when the run
// drives the whole screen. Exit code kNoTarget when no window matches.
std::variant<RunTarget, int> chooseTarget(bool windowMode, const model::WindowInfo& info,
                                          platform::IDesktopBackend& backend,
                                          const platform::WindowQuery& query,
                                          targets::WindowQueryMatcher& matcher, QTextStream& err) {
    RunTarget target{TargetKind::Desktop};
    if (!windowMode) {
        return target;
    }
    const auto windows = backend.topLevelWindows();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [&](platform::WindowHandle w) { return matcher.accepts(w); });
    if (found == windows.end()) {
        err << "no window found with " << describeQuery(query) << '\n';
        return kNoTarget;
    }
    target.kind = TargetKind::Window;
    target.window = *found;
    target.child = backend.findChild(*found, query);
    if (info.modifySize && !backend.resizeClient(*found, info.width, info.height)) {
        err << "could not resize the window to " << info.width << "x" << info.height << '\n';
    }
    return target;
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
             const StopRequest& stopRequested, const std::function<void()>& ending) {
    QElapsedTimer elapsed;
    elapsed.start();
    runner.start(targets);
    bool endingTold = false;
    while (!runner.idle()) {
        // Serves what scripts on the workers ask of the application's thread (the clipboard).
        QCoreApplication::processEvents();
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
         engine::IWindowMatcher* matcher, const RunIo& io,
         std::map<QString, QString> deviceRoutes = {}, const std::function<void()>& ending = {}) {
    const auto ocr = std::make_shared<text::OcrClient>();
    OcrServiceWatcher ocrService(ocr);
    if (task.usesScreenText() &&
        !ocrService.start(QCoreApplication::applicationDirPath(), QDir::currentPath())) {
        io.err << "morvane-ocr is neither beside autoscene-run nor in the working directory: "
                  "screen text reads as empty\n";
    }
    engine::RuntimeFactory factory;
    actions::registerAllRuntimeItems(factory, ocr, io.windows);
    engine::TaskRunner runner(task, factory, service);
    runner.setJobRunner([](size_t count, const std::function<void(size_t)>& job) {
        recognition::DetectionPool::shared().run(count, job);
    });
    RunReporter reporter(io.out, options.json);
    reporter.setDeviceRoutes(std::move(deviceRoutes));
    runner.setSceneObserver(&reporter);
    runner.setRunObserver(&reporter);
    runner.setWindowMatcher(matcher);
    applyOptions(options, runner);

    const double seconds = drive(runner, targets, io.stopRequested, ending);
    if (!options.saveFrame.isEmpty() && !saveFrame(service, targets.front(), options.saveFrame)) {
        io.err << "could not save the last frame to " << options.saveFrame << '\n';
    }
    reporter.printSummary({runner.cyclesCompleted(), seconds, endName(runner.runEnd())});
    return runner.runEnd() == RunEnd::TimeLimit ? kTimeLimit : kRunEnded;
}

int playOnDevices(const RunOptions& options, const model::TaskDocument& task, const RunIo& io) {
    const platform::android::AdbClient adb = adbClientFor(options);
    auto chosen = chooseDevices(options, adb, io.err);
    if (const int* code = std::get_if<int>(&chosen)) {
        return *code;
    }
    targets::DeviceTarget target(adb, deviceTargetOptions(options));
    const auto& devices = std::get<std::vector<RunTarget>>(chosen);
    std::map<QString, QString> routes;
    for (const RunTarget& device : devices) {
        routes[device.serial] = target.routeOf(device.serial);
    }
    return play(options, task, target, devices, nullptr, io, std::move(routes),
                [&target] { target.cancelWaits(); });
}

}  // namespace

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
    std::unique_ptr<plugins::BackgroundPlugin> plugin;
    if (!task.funcPluginFile.isEmpty()) {
        const QString path = plugins::taskFilePath(task.folderPath, task.funcPluginFile);
        QString error;
        plugin = plugins::BackgroundPlugin::load(
            path, plugins::servicesFromJson(task.enabledPluginFunc.text), &error);
        if (!plugin) {
            io.err << "the task's background plug-in does not load: " << error << '\n';
            return kBadArguments;
        }
        target.setPlugin(plugin.get());
    }

    auto chosen = chooseTarget(drivesWindow(options, settings), settings.windowInfo, *backend,
                               query, matcher, io.err);
    if (const int* code = std::get_if<int>(&chosen)) {
        return *code;
    }
    RunTarget runTarget = std::get<RunTarget>(std::move(chosen));
    runTarget.variableOverrides = options.variables;
    return play(options, task, target, {runTarget}, &matcher, io);
}

}  // namespace autoscene::app
