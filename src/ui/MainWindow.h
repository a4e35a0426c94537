#pragma once
// The editor's main window over one open task: scene list, event list, toolbar and the
// target button. Opening backs the task file up; closing prunes the backups.

#include <QMainWindow>

#include "editor/TaskEditor.h"
#include "screen/ScreenToolsDialog.h"
#include "ui/AppConfig.h"
#include "ui/Desktop.h"
#include "ui/RunControl.h"

class QLabel;
class QToolBar;
class QPushButton;

namespace autoscene::ui {

class EventTree;
class HotKeyRegistrar;
class LogTargetWindow;
class PlaybackWindow;
class RunView;
class SceneListView;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(AppConfig config, Desktop desktop, QWidget* parent = nullptr);

    // Opens the task folder and backs its script file up; false with `error` set when the
    // folder holds no readable task.
    bool openTask(const QString& folder, QString* error);
    // Where the copies of the task file go.
    QString backupFolder() const;

    TaskEditor& editor() { return editor_; }
    SceneListView& sceneList() { return *sceneList_; }
    EventTree& eventTree() { return *eventTree_; }
    RunControl& runControl() { return *run_; }
    RunView& runView() { return *runView_; }
    LogTargetWindow& logWindow() { return *logWindow_; }
    // The screen tools, shown in `mode`; made on first use.
    ScreenToolsDialog& screenTools(ScreenToolsDialog::Mode mode);

signals:
    // A run started or ended: edits are refused while it reads the document.
    void editingLockChanged();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildToolBar();
    void buildUndoActions(QToolBar& bar);
    // For closing with unsaved edits: true when the window may close.
    bool askToSaveChanges();
    void buildTargetMenu();
    void chooseWindow();
    void chooseDevices();
    void editWindowInfo();
    void showTarget();
    void save();
    void openSettings();
    void buildRunView();
    void runClicked();
    void showRunState(RunControl::State state);
    void showRunNotes();
    void buildHotKeys();
    void buildScreenToolActions();
    // Keeps a picture of the target as a new original of the task.
    void saveScreenshot();
    void showPlayback();
    // Selects an event in the scene and event lists, for the playback window.
    void selectEvent(const QString& scene, const QString& event);

    AppConfig config_;
    Desktop desktop_;
    TaskEditor editor_;
    QString folder_;
    SceneListView* sceneList_ = nullptr;
    EventTree* eventTree_ = nullptr;
    QPushButton* targetButton_ = nullptr;
    QLabel* targetLabel_ = nullptr;
    RunControl* run_ = nullptr;
    RunView* runView_ = nullptr;
    LogTargetWindow* logWindow_ = nullptr;
    RunControl::State shownRunState_ = RunControl::State::Idle;
    QTimer* definitionsRefresh_ = nullptr;
    HotKeyRegistrar* hotKeys_ = nullptr;
    PlaybackWindow* playback_ = nullptr;
    ScreenToolsDialog* screenTools_ = nullptr;
};

}  // namespace autoscene::ui
