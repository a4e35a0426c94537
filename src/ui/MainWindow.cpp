#include "ui/MainWindow.h"

#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUndoStack>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/ColorsDialog.h"
#include "editor/DefinitionsDialog.h"
#include "editor/PluginListDialog.h"
#include "editor/Prompts.h"
#include "engine/TaskRunner.h"
#include "screen/ScreenResources.h"
#include "ui/DeviceListDialog.h"
#include "ui/EventTree.h"
#include "ui/HotKeyRegistrar.h"
#include "ui/LogTargetWindow.h"
#include "ui/RunView.h"
#include "ui/SceneListView.h"
#include "ui/SettingView.h"
#include "ui/TaskBackups.h"
#include "ui/WindowInfoDialog.h"
#include "ui/WindowListDialog.h"
#include "ui/playback/PlaybackWindow.h"
#include "ui/templates/ModelsDialog.h"
#include "ui/templates/TemplatesDialog.h"

namespace autoscene::ui {

namespace {

QWidget* titled(const QString& title, QWidget* content) {
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(title));
    layout->addWidget(content);
    return box;
}

}  // namespace

MainWindow::MainWindow(AppConfig config, Desktop desktop, QWidget* parent)
    : QMainWindow(parent), config_(std::move(config)), desktop_(desktop) {
    setObjectName(QStringLiteral("MainWindow"));
    run_ = new RunControl(editor_, config_, desktop, this);
    sceneList_ = new SceneListView(editor_);
    eventTree_ = new EventTree(editor_);
    eventTree_->setScreen(desktop_.backend);
    eventTree_->setTargetCapture([this] { return run_->captureJob(); });
    connect(sceneList_, &SceneListView::sceneSelected, eventTree_, &EventTree::showScene);
    connect(&editor_, &TaskEditor::modifiedChanged, this, &QWidget::setWindowModified);
    connect(&editor_, &TaskEditor::settingsChanged, this, &MainWindow::showTarget);

    auto* splitter = new QSplitter;
    splitter->addWidget(titled(tr("界面"), sceneList_));
    splitter->addWidget(titled(tr("事件"), eventTree_));
    splitter->setStretchFactor(1, 3);

    targetButton_ = new QPushButton(tr("目标"));
    targetButton_->setObjectName(QStringLiteral("pushButton_select_window"));
    targetLabel_ = new QLabel;
    targetLabel_->setObjectName(QStringLiteral("label_wintitle"));
    auto* targetRow = new QHBoxLayout;
    targetRow->addWidget(targetButton_);
    targetRow->addWidget(targetLabel_, 1);

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(targetRow);
    layout->addWidget(splitter, 1);
    setCentralWidget(central);

    buildToolBar();
    buildTargetMenu();
    buildRunView();
    buildHotKeys();
    showTarget();
    resize(config_.mainWindowSize().value_or(QSize(960, 640)));
}

void MainWindow::buildToolBar() {
    QToolBar* bar = addToolBar(tr("工具栏"));
    bar->setObjectName(QStringLiteral("toolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    struct Entry {
        const char* objectName;
        QString text;
        QKeySequence shortcut;
    };
    // An entry whose tool is not part of the window yet stays disabled.
    const Entry entries[] = {
        {"action_ori_image", tr("原图"), {}},
        {"action_crop_image", tr("截图"), {}},
        {"action_variable", tr("变量"), {}},
        {"action_range", tr("范围"), {}},
        {"action_run", tr("运行"), {}},
        {"action_stop", tr("停止"), {}},
        {"action_save", tr("保存"), QKeySequence(Qt::CTRL | Qt::Key_S)},
        {"action_settings", tr("设置"), {}},
        {"playback", tr("回放"), {}},
        {"action_logviewer", tr("日志"), QKeySequence(Qt::Key_F7)},
        {"action_color", tr("颜色"), {}},
        {"action_config", tr("配置"), {}},
        {"action_model", tr("模型"), {}},
        {"action_templates", tr("图片"), {}},
        {"action_colors", tr("颜色列表"), {}},
        {"action_plugins", tr("插件列表"), {}},
    };
    for (const Entry& entry : entries) {
        QAction* action = bar->addAction(entry.text);
        action->setObjectName(QString::fromLatin1(entry.objectName));
        action->setShortcut(entry.shortcut);
        action->setEnabled(false);
    }
    const auto wire = [this](const char* name, auto slot) {
        QAction* action = findChild<QAction*>(QString::fromLatin1(name));
        action->setEnabled(true);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    wire("action_save", &MainWindow::save);
    wire("action_variable", [this] {
        DefinitionsDialog dialog(editor_, this);
        dialog.exec();
    });
    buildScreenToolActions();
    wire("action_templates", [this] {
        TemplatesDialog dialog(editor_, this);
        dialog.exec();
    });
    wire("action_colors", [this] {
        ColorsDialog dialog(editor_, this);
        dialog.exec();
    });
    wire("action_plugins", [this] {
        PluginListDialog dialog(editor_, this);
        dialog.exec();
    });
    buildUndoActions(*bar);
    wire("action_settings", &MainWindow::openSettings);
    wire("action_run", &MainWindow::runClicked)->setIcon(QIcon(QStringLiteral(":/image/run.png")));
    wire("action_logviewer", [this] {
        logWindow_->show();
        logWindow_->raise();
        logWindow_->activateWindow();
    });
    wire("playback", &MainWindow::showPlayback);
    wire("action_stop", [this] {
        run_->stop();
    })->setIcon(QIcon(QStringLiteral(":/image/stop.png")));
    wire("action_model", [this] {
        ModelsDialog dialog(editor_, this);
        dialog.exec();
    });
}

void MainWindow::showPlayback() {
    if (!playback_) {
        playback_ = new PlaybackWindow(editor_, AppConfig::playbackFolder(config_.path()), this);
        connect(playback_, &PlaybackWindow::eventRequested, this, &MainWindow::selectEvent);
    } else {
        playback_->listRecordings();
    }
    playback_->show();
    playback_->raise();
    playback_->activateWindow();
}

void MainWindow::selectEvent(const QString& scene, const QString& event) {
    for (int row = 0; row < editor_.sceneRows(); ++row) {
        if (editor_.sceneAt(row)->name != scene) {
            continue;
        }
        sceneList_->selectRow(row);
        // Row 0 is the identification event.
        for (int eventRow = event.isEmpty() ? 0 : 1; eventRow < editor_.eventRows(row);
             ++eventRow) {
            if (event.isEmpty() || editor_.eventAt(row, eventRow)->name == event) {
                eventTree_->selectRows({eventRow});
                break;
            }
        }
        raise();
        activateWindow();
        return;
    }
    statusBar()->showMessage(tr("任务中没有界面 %1").arg(scene));
}

void MainWindow::buildUndoActions(QToolBar& bar) {
    bar.addSeparator();
    QUndoStack& stack = editor_.undoStack();
    QAction* undo = bar.addAction(tr("撤销"), &editor_, &TaskEditor::undo);
    undo->setObjectName(QStringLiteral("action_undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = bar.addAction(tr("重做"), &editor_, &TaskEditor::redo);
    redo->setObjectName(QStringLiteral("action_redo"));
    redo->setShortcut(QKeySequence::Redo);
    const auto update = [this, &stack, undo, redo] {
        undo->setEnabled(stack.canUndo() && !editor_.isLocked());
        redo->setEnabled(stack.canRedo() && !editor_.isLocked());
        undo->setToolTip(stack.undoText());
        redo->setToolTip(stack.redoText());
    };
    connect(&stack, &QUndoStack::indexChanged, this, update);
    connect(this, &MainWindow::editingLockChanged, this, update);
    update();
}

void MainWindow::buildRunView() {
    runView_ = new RunView;
    logWindow_ = new LogTargetWindow(this);
    auto* dock = new QDockWidget(tr("运行状态"), this);
    dock->setObjectName(QStringLiteral("dockWidget_run"));
    dock->setWidget(runView_);
    dock->hide();
    addDockWidget(Qt::RightDockWidgetArea, dock);
    // Values change on every cycle; reading them a few times a second is what a reader
    // can follow and costs the run nothing.
    definitionsRefresh_ = new QTimer(this);
    definitionsRefresh_->setInterval(250);
    connect(definitionsRefresh_, &QTimer::timeout, this, [this] {
        if (engine::TaskRunner* runner = run_->runner()) {
            runView_->showDefinitions(runner->definitions());
        }
    });
    connect(&run_->feed(), &RunFeed::notesReady, this, &MainWindow::showRunNotes,
            Qt::QueuedConnection);
    connect(run_, &RunControl::stateChanged, this, &MainWindow::showRunState);
    connect(run_, &RunControl::windowChoiceRequested, this, [this] { targetButton_->showMenu(); });
}

void MainWindow::buildHotKeys() {
    if (!desktop_.hotKeys) {
        return;
    }
    hotKeys_ = new HotKeyRegistrar(*desktop_.hotKeys, config_, this);
    connect(hotKeys_, &HotKeyRegistrar::startRequested, this, [this] {
        if (run_->state() == RunControl::State::Idle) {
            run_->start();
        }
    });
    connect(hotKeys_, &HotKeyRegistrar::stopRequested, run_, &RunControl::stop);
    connect(hotKeys_, &HotKeyRegistrar::captureRequested, this, &MainWindow::saveScreenshot);
}

void MainWindow::saveScreenshot() {
    const QImage picture = run_->captureImage();
    if (picture.isNull()) {
        return;  // the capture told the user why
    }
    const SavedResource saved = saveOriginal(editor_, picture);
    if (!saved) {
        showNotice(this, saved.error);
        return;
    }
    statusBar()->showMessage(tr("原图已保存: %1").arg(editor_.document().originals.back().name));
}

ScreenToolsDialog& MainWindow::screenTools(ScreenToolsDialog::Mode mode) {
    if (!screenTools_) {
        screenTools_ = new ScreenToolsDialog(
            editor_, [this] { return run_->captureImage(); }, this);
    }
    screenTools_->setMode(mode);
    screenTools_->show();
    screenTools_->raise();
    screenTools_->activateWindow();
    return *screenTools_;
}

void MainWindow::buildScreenToolActions() {
    using Mode = ScreenToolsDialog::Mode;
    const auto wire = [this](const char* name, auto slot) {
        QAction* action = findChild<QAction*>(QString::fromLatin1(name));
        action->setEnabled(true);
        connect(action, &QAction::triggered, this, slot);
    };
    wire("action_ori_image", [this] { screenTools(Mode::Template); });
    wire("action_crop_image", [this] { screenTools(Mode::Template).takeScreenshot(); });
    wire("action_range", [this] { screenTools(Mode::SearchArea); });
    wire("action_color", [this] { screenTools(Mode::Colour); });
}

void MainWindow::openSettings() {
    SettingView view(editor_.document(), config_, this);
    if (view.exec() != QDialog::Accepted) {
        return;
    }
    TaskSetup changed = TaskSetup::of(editor_.document());
    view.applyTo(changed);
    editor_.changeSetup(std::move(changed), tr("修改设置"));
    view.saveHotKeys();
    if (hotKeys_) {
        hotKeys_->registerAll();
    }
}

void MainWindow::runClicked() {
    if (run_->state() != RunControl::State::Idle) {
        run_->togglePause();
        return;
    }
    run_->start();
}

void MainWindow::showRunNotes() {
    const std::vector<RunFeed::Note> notes = run_->feed().take();
    runView_->addNotes(notes);
    logWindow_->addNotes(notes);
}

void MainWindow::showRunState(RunControl::State state) {
    static const char* const icons[] = {":/image/run.png", ":/image/pause.png",
                                        ":/image/ic_continue.png"};
    findChild<QAction*>(QStringLiteral("action_run"))
        ->setIcon(QIcon(QString::fromLatin1(icons[int(state)])));
    const bool idle = state == RunControl::State::Idle;
    if (shownRunState_ == RunControl::State::Idle && !idle) {
        runView_->clear();
        logWindow_->clear();
        findChild<QDockWidget*>(QStringLiteral("dockWidget_run"))->show();
    }
    shownRunState_ = state;
    // The run reads the document: no edits and no other target until it ends.
    sceneList_->setEditingLocked(!idle);
    editor_.setLocked(!idle);
    emit editingLockChanged();
    targetButton_->setEnabled(idle);
    if (idle) {
        definitionsRefresh_->stop();
        showRunNotes();
    } else {
        definitionsRefresh_->start();
    }
}

void MainWindow::buildTargetMenu() {
    auto* menu = new QMenu(targetButton_);
    menu->addAction(tr("选择窗口"), this, &MainWindow::chooseWindow);
    menu->addAction(tr("ADB模式"), this, &MainWindow::chooseDevices);
    menu->addAction(tr("全屏模式"), this, [this] {
        model::TaskSettings changed = editor_.document().settings;
        changed.taskMode = int(model::TaskMode::FullScreen);
        editor_.changeSettings(std::move(changed), tr("更改目标"));
    });
    menu->addAction(tr("查看修改窗口信息"), this, &MainWindow::editWindowInfo);
    targetButton_->setMenu(menu);
}

void MainWindow::chooseWindow() {
    if (!desktop_.backend) {
        return;
    }
    WindowListDialog dialog(*desktop_.backend, desktop_.picker, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const std::optional<platform::WindowInfo> chosen = dialog.chosen();
    if (!chosen) {
        return;
    }
    model::TaskSettings settings = editor_.document().settings;
    settings.taskMode = int(model::TaskMode::Window);
    settings.windowInfo.title = QString::fromStdString(chosen->title);
    settings.windowInfo.className = QString::fromStdString(chosen->className);
    settings.windowInfo.isFullmatchTitle = true;
    settings.windowInfo.width = chosen->clientRect.width;
    settings.windowInfo.height = chosen->clientRect.height;
    run_->setChosenWindow(chosen->window);
    editor_.changeSettings(std::move(settings), tr("更改目标"));
}

void MainWindow::chooseDevices() {
    DeviceListDialog dialog(run_->adb(), run_->chosenDevices(), this);
    if (!dialog.refresh() || dialog.exec() != QDialog::Accepted) {
        return;
    }
    model::TaskSettings changed = editor_.document().settings;
    changed.taskMode = int(model::TaskMode::AndroidDevice);
    run_->setChosenDevices(dialog.chosen());
    editor_.changeSettings(std::move(changed), tr("更改目标"));
}

void MainWindow::editWindowInfo() {
    model::TaskSettings settings = editor_.document().settings;
    WindowInfoDialog dialog(settings.windowInfo, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    settings.windowInfo = dialog.info();
    settings.taskMode = int(model::TaskMode::Window);
    // The handle chosen before may be another window than the record now names.
    run_->setChosenWindow(0);
    editor_.changeSettings(std::move(settings), tr("更改目标"));
}

void MainWindow::showTarget() {
    const model::TaskSettings& settings = editor_.document().settings;
    QString text = tr("未选择目标窗口");
    if (settings.taskMode == int(model::TaskMode::FullScreen)) {
        text = tr("全屏模式");
    } else if (settings.taskMode == int(model::TaskMode::AndroidDevice)) {
        const QStringList& devices = run_->chosenDevices();
        text = devices.isEmpty() ? tr("ADB模式") : tr("ADB模式: %1").arg(devices.join(", "));
    } else if (settings.taskMode == int(model::TaskMode::Window) &&
               !settings.windowInfo.title.isEmpty()) {
        text = settings.windowInfo.title;
    }
    targetLabel_->setText(text);
    targetLabel_->setAccessibleName(text);
}

bool MainWindow::openTask(const QString& folder, QString* error) {
    if (!QFileInfo(QDir(folder).filePath(QStringLiteral("script.json"))).isFile()) {
        *error = tr("文件夹中没有 script.json");
        return false;
    }
    folder_ = QFileInfo(folder).absoluteFilePath();
    backUpScript(QDir(folder_).filePath(QStringLiteral("script.json")), backupFolder());
    const model::OpenResult opened = editor_.open(folder_);
    if (!opened) {
        *error = opened.error;
        return false;
    }
    const QString name = editor_.document().name;
    // "[*]" is where Qt shows the window's modified marker.
    setWindowTitle(tr("Autoscene - %1").arg(name.isEmpty() ? QDir(folder_).dirName() : name) +
                   QStringLiteral("[*]"));
    showTarget();
    sceneList_->selectRow(0);
    nameControlsAfterText(*this);
    if (hotKeys_) {
        hotKeys_->registerAll();
    }
    return true;
}

QString MainWindow::backupFolder() const {
    return QDir(folder_).filePath(QStringLiteral("backup"));
}

void MainWindow::save() {
    QString error;
    if (!editor_.save(&error)) {
        showNotice(this, tr("保存失败: %1").arg(error));
    }
}

bool MainWindow::askToSaveChanges() {
    const int answer = askChoice(this, tr("提示"), tr("任务已修改,是否保存?"),
                                 {tr("保存"), tr("不保存"), tr("取消")});
    if (answer == 0) {
        save();
        return !editor_.saveFailed();
    }
    return answer == 1;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (run_->state() != RunControl::State::Idle) {
        showNotice(this, tr("任务正在运行中,请停止后任务再关闭"));
        event->ignore();
        return;
    }
    if (editor_.saveFailed() &&
        !askToConfirm(this, tr("任务可能保存失败,关闭后将导致任务异常,请确认是否关闭?"))) {
        event->ignore();
        return;
    }
    if (editor_.isModified() && !editor_.saveFailed() && !askToSaveChanges()) {
        event->ignore();
        return;
    }
    config_.setMainWindowSize(size());
    if (!folder_.isEmpty()) {
        pruneBackups(backupFolder());
    }
    event->accept();
}

}  // namespace autoscene::ui
