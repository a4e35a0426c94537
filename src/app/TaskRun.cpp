#include "app/TaskRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <optional>
#include <variant>

#include "app/RunReporter.h"
#include "app/RunSession.h"
#include "engine/BgraConversion.h"
#include "engine/TaskRunner.h"
#include "model/TaskDocument.h"
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

bool saveFrame(platform::IDesktopBackend& backend, platform::WindowHandle window, bool background,
               const QString& path) {
    bool saved = false;
    backend.captureView(window, background, [&](const platform::BgraView& view) {
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
    const int mode = task.settings.taskMode;
    if (!options.fullScreen && !options.windowTitle && !options.className &&
        mode != int(TaskMode::Window) && mode != int(TaskMode::FullScreen)) {
        err << "this task drives an Android device, which autoscene-run does not drive yet; "
               "use --full-screen or --window to run it on the desktop\n";
        return kBadArguments;
    }
    return std::nullopt;
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

// Runs until the run ends or the user asks it to stop; the seconds it took.
double drive(engine::TaskRunner& runner, const RunTarget& target,
             const StopRequest& stopRequested) {
    QElapsedTimer elapsed;
    elapsed.start();
    runner.start({target});
    while (!runner.idle()) {
        // Serves what scripts on the workers ask of the application's thread (the clipboard).
        QCoreApplication::processEvents();
        if (stopRequested(std::chrono::milliseconds(100))) {
            runner.stop();
        }
    }
    runner.waitUntilIdle(std::chrono::seconds(30));
    return double(elapsed.nsecsElapsed()) / 1e9;
}

}  // namespace

int runTask(const RunOptions& options, platform::IDesktopBackend& backend, QTextStream& out,
            QTextStream& err, const StopRequest& stopRequested, platform::IWindowControl* windows) {
    model::TaskDocument task;
    if (const auto refused = openTask(options, task, err)) {
        return *refused;
    }
    const model::TaskSettings& settings = task.settings;
    targets::WindowTarget::Modes modes;
    modes.backgroundInput = options.background.value_or(settings.backAct);
    modes.backgroundCapture = options.background.value_or(settings.backCapture);
    const platform::WindowQuery query = windowQuery(settings.windowInfo, options);
    RunSession session(task, backend, modes, query, windows);

    auto chosen = chooseTarget(drivesWindow(options, settings), settings.windowInfo, backend, query,
                               session.matcher(), err);
    if (const int* code = std::get_if<int>(&chosen)) {
        return *code;
    }
    RunTarget runTarget = std::get<RunTarget>(std::move(chosen));
    runTarget.variableOverrides = options.variables;

    if (!session.startOcrService()) {
        err << "morvane-ocr is neither beside autoscene-run nor in the working directory: "
               "screen text reads as empty\n";
    }
    engine::TaskRunner& runner = session.runner();
    RunReporter reporter(out, options.json);
    runner.setSceneObserver(&reporter);
    runner.setRunObserver(&reporter);
    applyOptions(options, runner);

    const double seconds = drive(runner, runTarget, stopRequested);
    if (!options.saveFrame.isEmpty() &&
        !saveFrame(backend, runTarget.window, modes.backgroundCapture, options.saveFrame)) {
        err << "could not save the last frame to " << options.saveFrame << '\n';
    }
    reporter.printSummary({runner.cyclesCompleted(), seconds, endName(runner.runEnd())});
    return runner.runEnd() == RunEnd::TimeLimit ? kTimeLimit : kRunEnded;
}

}  // namespace autoscene::app
