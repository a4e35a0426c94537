#pragma once
// Runs the open task from the main window: the run-start checks with their boxes, in
// order, then the runner on its own worker threads. The window's thread never waits on
// the run: it learns of the run's end by polling and of its progress through the feed.

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

#include "engine/TaskInfo.h"
#include "ui/AppConfig.h"
#include "ui/Desktop.h"
#include "ui/RunFeed.h"

class QWidget;

namespace autoscene::app {
class RunSession;
}

namespace autoscene::engine {
class TaskRunner;
}

namespace autoscene::targets {
class WindowTarget;
class WindowQueryMatcher;
}  // namespace autoscene::targets

namespace autoscene::ui {

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
    void togglePause();
    // Asks the run to end; the state turns idle once its workers have left.
    void stop();

    // The window the user chose for the task, used when several match it.
    void setChosenWindow(platform::WindowHandle window) { chosenWindow_ = window; }
    RunFeed& feed() { return feed_; }
    // The running runner; null between runs.
    engine::TaskRunner* runner();

signals:
    void stateChanged(autoscene::ui::RunControl::State state);
    // The saved window is gone and the user wants to choose another.
    void windowChoiceRequested();

private:
    std::optional<engine::RunTarget> chooseTarget();
    std::optional<engine::RunTarget> chooseWindow();
    std::optional<int> chooseLoopMode();
    bool captures(const engine::RunTarget& target);
    void setState(State state);
    void checkFinished();

    TaskEditor& editor_;
    AppConfig config_;
    Desktop desktop_;
    QWidget* window_;
    platform::WindowHandle chosenWindow_ = 0;
    State state_ = State::Idle;
    RunFeed feed_;
    // The session after the target it runs on, so that it goes first.
    std::unique_ptr<targets::WindowTarget> target_;
    std::unique_ptr<targets::WindowQueryMatcher> matcher_;
    std::unique_ptr<app::RunSession> session_;
    QTimer finishPoll_;
};

}  // namespace autoscene::ui
