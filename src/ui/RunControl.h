#pragma once
// Runs the open task from the main window: the run-start checks with their boxes, in
// order, then the runner on its own worker threads. The window's thread never waits on
// the run: it learns of the run's end by polling and of its progress through the feed.

#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <thread>

#include "android/AdbClient.h"
#include "engine/TaskInfo.h"
#include "ui/AppConfig.h"
#include "ui/Desktop.h"
#include "ui/RunFeed.h"

class QWidget;

namespace autoscene::app {
class RunSession;
}

namespace autoscene::engine {
class ITargetService;
class TaskRunner;
}  // namespace autoscene::engine

namespace autoscene::plugins {
class BackgroundPlugin;
}

namespace autoscene::targets {
class DeviceTarget;
class WindowQueryMatcher;
}  // namespace autoscene::targets

namespace autoscene::ui {

class RunRecording;
class TaskEditor;

class RunControl : public QObject {
    Q_OBJECT
public:
    enum class State { Idle, Running, Paused };

    // Boxes open over `window`.
    RunControl(TaskEditor& editor, AppConfig config, Desktop desktop, QWidget* window);
    ~RunControl() override;

    State state() const { return state_; }
    // The checks, then the run; false when a check or the user stopped the start.
    bool start();
    // The run on targets already chosen, all of one kind, after the run-mode and capture
    // checks. A device's first capture may keep adb busy for seconds, so it is tried on a
    // thread of its own: true then means the run starts once the device has answered.
    bool startOn(const std::vector<engine::RunTarget>& targets);
    // A start is waiting for a device's first capture.
    bool checkingDevice() const { return deviceCheck_.joinable(); }
    // One picture of the task's target, chosen as a run chooses it (the first device in ADB
    // mode); a null image, after the user was told why, when there is none or a run is on.
    QImage captureImage();
    // The same capture, the target chosen here (with the questions that takes) and the
    // picture taken by the job on any thread, with a target service of its own; a null
    // picture when that fails. Empty, after the user was told why, when there is no target.
    std::function<QImage()> captureJob();
    void togglePause();
    // Asks the run, or the device check before it, to end; the state turns idle once its
    // workers have left.
    void stop();

    // The window the user chose for the task, used when several match it.
    void setChosenWindow(platform::WindowHandle window) { chosenWindow_ = window; }
    // The devices the user ticked for ADB mode; every ready device when empty.
    void setChosenDevices(const QStringList& serials) { chosenDevices_ = serials; }
    const QStringList& chosenDevices() const { return chosenDevices_; }
    // The adb program of this installation.
    const platform::android::AdbClient& adb() const { return adb_; }
    RunFeed& feed() { return feed_; }
    // The running runner; null between runs.
    engine::TaskRunner* runner();

signals:
    void stateChanged(autoscene::ui::RunControl::State state);
    // The saved window is gone and the user wants to choose another.
    void windowChoiceRequested();

private:
    std::optional<std::vector<engine::RunTarget>> chooseTargets();
    std::optional<engine::RunTarget> chooseWindow();
    std::optional<std::vector<engine::RunTarget>> chooseDevices();
    // The service the targets are driven through, with the task's background plug-in;
    // false when that does not load.
    bool makeTargetService(const std::vector<engine::RunTarget>& targets);
    void releaseTargetService();
    std::optional<int> chooseLoopMode();
    // Through the target service, so that a plug-in that captures is what is tried.
    QImage grab(const engine::RunTarget& target, std::stop_token stop);
    void checkDeviceThenRun(const std::vector<engine::RunTarget>& targets, int loopMode);
    void deviceChecked(bool captured);
    bool run(const std::vector<engine::RunTarget>& targets, int loopMode);
    void setState(State state);
    void checkFinished();

    TaskEditor& editor_;
    AppConfig config_;
    Desktop desktop_;
    QWidget* window_;
    platform::WindowHandle chosenWindow_ = 0;
    QStringList chosenDevices_;
    platform::android::AdbClient adb_;
    State state_ = State::Idle;
    RunFeed feed_;
    // Before the session, so that the workers have left when it goes.
    std::unique_ptr<RunRecording> recording_;
    // The session after the target it runs on, and that after the plug-in it uses, so that
    // each goes before what it uses.
    std::unique_ptr<plugins::BackgroundPlugin> plugin_;
    std::unique_ptr<engine::ITargetService> target_;
    targets::DeviceTarget* devices_ = nullptr;  // target_ in ADB mode
    std::unique_ptr<targets::WindowQueryMatcher> matcher_;
    std::unique_ptr<app::RunSession> session_;
    QTimer finishPoll_;
    // After the target service it uses, so that it is joined first.
    std::jthread deviceCheck_;
    std::vector<engine::RunTarget> checkedTargets_;
    int checkedLoopMode_ = 0;
};

}  // namespace autoscene::ui
