#include "app/TaskRun.h"

#include "actions/RuntimeItems.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "app/OcrServiceWatcher.h"
#include "app/RunReporter.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"
#include "model/TaskDocument.h"
#include "recognition/DetectionPool.h"
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

bool saveFrame(platform::IDesktopBackend& backend, platform::WindowHandle window, bool background,
               const QString& path) {
    bool saved = false;
    backend.captureView(window, background, [&](const platform::BgraView& view) {
        const cv::Mat bgra(view.height, view.width, CV_8UC4, const_cast<std::uint8_t*>(view.pixels),
                           size_t(view.stride));
        cv::Mat bgr;
        cv::cvtColor(bgra, bgr, cv::COLOR_BGRA2BGR);
        saved = cv::imwrite(path.toStdString(), bgr);
    });
    return saved;
}

}  // namespace

int runTask(const RunOptions& options, platform::IDesktopBackend& backend, QTextStream& out,
            QTextStream& err, const StopRequest& stopRequested, platform::IWindowControl* windows) {
    if (!QFileInfo(options.taskFolder + "/script.json").isFile()) {
        err << "no script.json in " << options.taskFolder << '\n';
        return kBadArguments;
    }
    model::TaskDocument task;
    const model::OpenResult opened = task.openFolder(options.taskFolder);
    if (!opened.ok) {
        err << "cannot open " << options.taskFolder << ": " << opened.error << '\n';
        return kBadArguments;
    }
    const model::TaskSettings& settings = task.settings;
    const bool windowMode = !options.fullScreen && (options.windowTitle || options.className ||
                                                    settings.taskMode == int(TaskMode::Window));
    if (!options.fullScreen && !windowMode && settings.taskMode != int(TaskMode::FullScreen)) {
        err << "this task drives an Android device, which autoscene-run does not drive yet; "
               "use --full-screen or --window to run it on the desktop\n";
        return kBadArguments;
    }

    targets::WindowTarget::Modes modes;
    modes.backgroundInput = options.background.value_or(settings.backAct);
    modes.backgroundCapture = options.background.value_or(settings.backCapture);
    const platform::WindowQuery query = windowQuery(settings.windowInfo, options);
    targets::WindowTarget target(backend, modes, query);
    targets::WindowQueryMatcher matcher(backend, query);

    RunTarget runTarget{TargetKind::Desktop};
    if (windowMode) {
        platform::WindowHandle found = 0;
        for (platform::WindowHandle window : backend.topLevelWindows()) {
            if (matcher.accepts(window)) {
                found = window;
                break;
            }
        }
        if (!found) {
            err << "no window found with " << describeQuery(query) << '\n';
            return kNoTarget;
        }
        runTarget.kind = TargetKind::Window;
        runTarget.window = found;
        runTarget.child = backend.findChild(found, query);
        const model::WindowInfo& size = settings.windowInfo;
        if (size.modifySize && !backend.resizeClient(found, size.width, size.height)) {
            err << "could not resize the window to " << size.width << "x" << size.height << '\n';
        }
    }
    runTarget.variableOverrides = options.variables;

    const auto ocr = std::make_shared<text::OcrClient>();
    OcrServiceWatcher ocrService(ocr);
    if (task.usesScreenText() &&
        !ocrService.start(QCoreApplication::applicationDirPath(), QDir::currentPath())) {
        err << "morvane-ocr is neither beside autoscene-run nor in the working directory: "
               "screen text reads as empty\n";
    }
    engine::RuntimeFactory factory;
    actions::registerAllRuntimeItems(factory, ocr, windows);
    engine::TaskRunner runner(task, factory, target);
    runner.setJobRunner([](size_t count, const std::function<void(size_t)>& job) {
        recognition::DetectionPool::shared().run(count, job);
    });
    RunReporter reporter(out, options.json);
    runner.setSceneObserver(&reporter);
    runner.setRunObserver(&reporter);
    runner.setWindowMatcher(&matcher);
    if (options.loopMode) {
        runner.setLoopMode(*options.loopMode);
    }
    if (options.loopIntervalMs) {
        runner.setLoopIntervalMs(*options.loopIntervalMs);
    }
    runner.setRunTimeLimitSeconds(options.timeLimitSeconds);

    QElapsedTimer elapsed;
    elapsed.start();
    runner.start({runTarget});
    while (!runner.idle()) {
        // Serves what scripts on the workers ask of the application's thread (the clipboard).
        QCoreApplication::processEvents();
        if (stopRequested(std::chrono::milliseconds(100))) {
            runner.stop();
        }
    }
    runner.waitUntilIdle(std::chrono::seconds(30));
    const double seconds = double(elapsed.nsecsElapsed()) / 1e9;

    if (!options.saveFrame.isEmpty() &&
        !saveFrame(backend, runTarget.window, modes.backgroundCapture, options.saveFrame)) {
        err << "could not save the last frame to " << options.saveFrame << '\n';
    }
    reporter.printSummary({runner.cyclesCompleted(), seconds, endName(runner.runEnd())});
    return runner.runEnd() == RunEnd::TimeLimit ? kTimeLimit : kRunEnded;
}

}  // namespace autoscene::app
