#include "ui/RunControl.h"

#include <QLoggingCategory>
#include <algorithm>

#include "android/AdbOutput.h"
#include "app/DeviceChoice.h"
#include "app/RunSession.h"
#include "app/TaskPlugin.h"
#include "editor/Prompts.h"
#include "editor/TaskEditor.h"
#include "engine/TaskRunner.h"
#include "targets/DeviceTarget.h"
#include "targets/WindowTarget.h"
#include "ui/AdbDevices.h"
#include "ui/LoopModeDialog.h"
#include "ui/RunRecording.h"

Q_LOGGING_CATEGORY(lcRun, "autoscene.ui.run")

namespace autoscene::ui {

using engine::RunTarget;
using engine::TargetKind;
using model::TaskMode;

namespace {

// How often the window looks whether the run's workers have left.
constexpr int kFinishPollMs = 50;

// Through the target service, so that a plug-in that captures is what is tried.
QImage grabThrough(engine::ITargetService& service, const RunTarget& target, std::stop_token stop) {
    engine::TaskInfo probe;
    probe.kind = target.kind;
    probe.window = target.window;
    probe.child = target.child;
    probe.serial = target.serial;
    probe.stop = std::move(stop);
    QImage image;
    service.capture(probe, [&image](const platform::BgraView& view) {
        if (view.width > 0 && view.height > 0 && view.pixels) {
            // BGRA in memory is RGB32 on the little-endian machines we run on; the alpha
            // byte is ignored.
            image = QImage(view.pixels, view.width, view.height, view.stride, QImage::Format_RGB32)
                        .copy();
        }
    });
    return image;
}

}  // namespace

RunControl::RunControl(TaskEditor& editor, AppConfig config, Desktop desktop, QWidget* window)
    : editor_(editor),
      config_(std::move(config)),
      desktop_(desktop),
      window_(window),
      adb_(app::adbClientFor({})) {
    finishPoll_.setInterval(kFinishPollMs);
    connect(&finishPoll_, &QTimer::timeout, this, &RunControl::checkFinished);
}

RunControl::~RunControl() {
    // A device check under way ends at once, before its thread is joined.
    stop();
}

engine::TaskRunner* RunControl::runner() {
    return session_ ? &session_->runner() : nullptr;
}

std::optional<RunTarget> RunControl::chooseWindow() {
    if (!desktop_.backend) {
        showNotice(window_, tr("截图失败！"));
        return std::nullopt;
    }
    platform::IDesktopBackend& backend = *desktop_.backend;
    const platform::WindowQuery query = app::windowQueryOf(editor_.document().settings.windowInfo);
    std::vector<platform::WindowHandle> matching = backend.topLevelWindows();
    std::erase_if(matching, [&](platform::WindowHandle w) { return !backend.matches(w, query); });
    if (matching.empty()) {
        if (askYesNo(window_, tr("未发现指定窗口,是否重新选择"))) {
            emit windowChoiceRequested();
        }
        return std::nullopt;
    }
    platform::WindowHandle window = matching.front();
    if (matching.size() > 1) {
        if (std::find(matching.begin(), matching.end(), chosenWindow_) == matching.end()) {
            showNotice(window_, tr("发现多个目标窗口,需要先选择窗口"));
            return std::nullopt;
        }
        window = chosenWindow_;
    }
    const model::WindowInfo& info = editor_.document().settings.windowInfo;
    const platform::Rect client = backend.describe(window).clientRect;
    if ((client.width != info.width || client.height != info.height) &&
        askYesNo(window_, tr("当前窗口大小与选择窗口时大小不一致，可能会导致脚本运行时识别"
                             "不准备，是否调整窗口大小！"))) {
        backend.resizeClient(window, info.width, info.height);
    }
    return RunTarget{TargetKind::Window, window, backend.findChild(window, query), {}, {}};
}

std::optional<std::vector<RunTarget>> RunControl::chooseDevices() {
    const auto devices = listAdbDevices(window_, adb_);
    if (!devices) {
        return std::nullopt;
    }
    std::vector<RunTarget> targets;
    for (const std::string& serial : platform::android::readySerials(*devices)) {
        const QString name = QString::fromStdString(serial);
        if (chosenDevices_.isEmpty() || chosenDevices_.contains(name)) {
            targets.push_back(RunTarget{TargetKind::AndroidDevice, 0, 0, name, {}});
        }
    }
    if (targets.empty()) {
        showNotice(window_, tr("未发现ADB设备，请先连接设备"));
        return std::nullopt;
    }
    return targets;
}

std::optional<std::vector<RunTarget>> RunControl::chooseTargets() {
    const model::TaskSettings& settings = editor_.document().settings;
    const bool namesWindow =
        !settings.windowInfo.title.isEmpty() || !settings.windowInfo.className.isEmpty();
    switch (TaskMode(settings.taskMode)) {
        case TaskMode::FullScreen:
            return std::vector{RunTarget{TargetKind::Desktop, 0, 0, {}, {}}};
        case TaskMode::Window:
            if (namesWindow) {
                const std::optional<RunTarget> window = chooseWindow();
                return window ? std::optional(std::vector{*window}) : std::nullopt;
            }
            break;
        case TaskMode::AndroidDevice:
            return chooseDevices();
        default:
            break;
    }
    showNotice(window_, tr("需要先选择目标窗口"));
    return std::nullopt;
}

std::optional<int> RunControl::chooseLoopMode() {
    int global = config_.loopMode();
    if (global == int(model::LoopMode::Invalid)) {
        showNotice(window_,
                   tr("检测到你还未设置自动化任务的运行模式，请先设置运行模式后再编辑脚本"),
                   tr("运行模式选择提示"));
        LoopModeDialog dialog(window_);
        if (dialog.exec() != QDialog::Accepted) {
            return std::nullopt;
        }
        global = dialog.mode();
        config_.setLoopMode(global);
    }
    int& script = editor_.document().settings.loopMode;
    qCDebug(lcRun) << "gloabal loopMode:" << global;
    qCDebug(lcRun) << " script loop mode:" << script;
    if (global == script) {
        return script;
    }
    const int choice =
        askChoice(window_, tr("运行模式修改提示"),
                  tr("检测到你的运行模式已修改，当前脚本的运行模式为%1，是否修改成%2执行")
                      .arg(LoopModeDialog::modeName(script), LoopModeDialog::modeName(global)),
                  {tr("查看设置"), tr("不修改"), tr("修改后执行")});
    if (choice == 0) {
        // The configured mode is what the user looks at; the start waits for the next try.
        LoopModeDialog dialog(window_);
        dialog.setMode(global);
        if (dialog.exec() == QDialog::Accepted) {
            config_.setLoopMode(dialog.mode());
        }
        return std::nullopt;
    }
    if (choice < 0) {
        return std::nullopt;
    }
    if (choice == 2) {
        script = global;
    }
    return script;
}

QImage RunControl::grab(const RunTarget& target, std::stop_token stop) {
    return grabThrough(*target_, target, std::move(stop));
}

std::function<QImage()> RunControl::captureJob() {
    if (state_ != State::Idle || checkingDevice()) {
        return {};
    }
    const std::optional<std::vector<RunTarget>> targets = chooseTargets();
    if (!targets || !makeTargetService(*targets)) {
        return {};
    }
    // The target before the plug-in it may use, as the members go.
    struct Service {
        std::unique_ptr<plugins::BackgroundPlugin> plugin;
        std::unique_ptr<engine::ITargetService> target;
    };
    auto service = std::make_shared<Service>();
    service->plugin = std::move(plugin_);
    service->target = std::move(target_);
    releaseTargetService();
    return [service, first = targets->front()] { return grabThrough(*service->target, first, {}); };
}

QImage RunControl::captureImage() {
    const std::function<QImage()> job = captureJob();
    if (!job) {
        return {};
    }
    QImage image = job();
    if (image.isNull()) {
        showNotice(window_, tr("截图失败！"));
    }
    return image;
}

void RunControl::checkDeviceThenRun(const std::vector<RunTarget>& targets, int loopMode) {
    checkedTargets_ = targets;
    checkedLoopMode_ = loopMode;
    deviceCheck_ = std::jthread([this, first = targets.front()](std::stop_token stop) {
        const bool captured = !grab(first, std::move(stop)).isNull();
        QMetaObject::invokeMethod(
            this, [this, captured] { deviceChecked(captured); }, Qt::QueuedConnection);
    });
}

void RunControl::deviceChecked(bool captured) {
    deviceCheck_.join();
    if (deviceCheck_.get_stop_token().stop_requested()) {
        qCInfo(lcRun) << "the start was stopped while the device's first capture was tried";
        releaseTargetService();
    } else if (!captured) {
        releaseTargetService();
        showNotice(window_, tr("截图失败！"));
    } else {
        run(checkedTargets_, checkedLoopMode_);
    }
    deviceCheck_ = {};
}

bool RunControl::start() {
    if (state_ != State::Idle) {
        return false;
    }
    const std::optional<std::vector<RunTarget>> targets = chooseTargets();
    return targets && startOn(*targets);
}

bool RunControl::startOn(const std::vector<RunTarget>& targets) {
    if (state_ != State::Idle || targets.empty() || checkingDevice()) {
        return false;
    }
    const std::optional<int> loopMode = chooseLoopMode();
    if (!loopMode) {
        return false;
    }
    session_.reset();
    if (!makeTargetService(targets)) {
        return false;
    }
    if (devices_) {
        checkDeviceThenRun(targets, *loopMode);
        return true;
    }
    if (grab(targets.front(), {}).isNull()) {
        showNotice(window_, tr("截图失败！"));
        return false;
    }
    return run(targets, *loopMode);
}

bool RunControl::run(const std::vector<RunTarget>& targets, int loopMode) {
    const model::TaskDocument& task = editor_.document();
    session_ = std::make_unique<app::RunSession>(task, *target_, desktop_.windows);
    if (!session_->startOcrService()) {
        showNotice(window_, tr("文字识别服务异常,请重启任务或手动开启文字识别服务"));
    }
    engine::TaskRunner& runner = session_->runner();
    runner.setWindowMatcher(matcher_.get());  // none in ADB mode
    recording_ = std::make_unique<RunRecording>(config_, task.folderPath, runner, feed_);
    runner.setLoopMode(loopMode);
    feed_.take();
    if (!runner.start(targets)) {
        session_.reset();
        recording_.reset();
        return false;
    }
    finishPoll_.start();
    setState(State::Running);
    return true;
}

void RunControl::releaseTargetService() {
    matcher_.reset();
    devices_ = nullptr;
    target_.reset();
    plugin_.reset();
}

bool RunControl::makeTargetService(const std::vector<RunTarget>& targets) {
    releaseTargetService();
    if (targets.front().kind == TargetKind::AndroidDevice) {
        auto devices = std::make_unique<targets::DeviceTarget>(adb_, app::deviceTargetOptions({}));
        devices_ = devices.get();
        target_ = std::move(devices);
        return true;
    }
    if (!desktop_.backend) {
        showNotice(window_, tr("截图失败！"));
        return false;
    }
    app::TaskPlugin plugin = app::loadTaskPlugin(editor_.document());
    if (!plugin.error.isEmpty()) {
        qCWarning(lcRun) << "the task's background plug-in does not load:" << plugin.error;
        showNotice(window_, tr("插件加载失败"));
        return false;
    }
    plugin_ = std::move(plugin.plugin);
    const model::TaskSettings& settings = editor_.document().settings;
    targets::WindowTarget::Modes modes;
    modes.backgroundInput = settings.backAct;
    modes.backgroundCapture = settings.backCapture;
    const platform::WindowQuery query = app::windowQueryOf(settings.windowInfo);
    auto window = std::make_unique<targets::WindowTarget>(*desktop_.backend, modes, query);
    window->setPlugin(plugin_.get());
    target_ = std::move(window);
    matcher_ = std::make_unique<targets::WindowQueryMatcher>(*desktop_.backend, query);
    return true;
}

void RunControl::togglePause() {
    if (state_ == State::Running) {
        session_->runner().suspend();
        setState(State::Paused);
    } else if (state_ == State::Paused) {
        session_->runner().resume();
        setState(State::Running);
    }
}

void RunControl::stop() {
    deviceCheck_.request_stop();
    if (session_) {
        session_->runner().stop();
    }
    if (devices_) {
        devices_->cancelWaits();
    }
}

void RunControl::checkFinished() {
    if (!session_ || !session_->runner().idle()) {
        return;
    }
    finishPoll_.stop();
    // The workers have left: joining them and unloading what the run used is quick.
    session_.reset();
    recording_.reset();
    releaseTargetService();
    setState(State::Idle);
}

void RunControl::setState(State state) {
    if (state_ != state) {
        state_ = state;
        emit stateChanged(state);
    }
}

}  // namespace autoscene::ui
