#include "ui/playback/PlaybackWindow.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/TaskEditor.h"
#include "playback/RecordingLayout.h"
#include "ui/playback/CycleDetails.h"
#include "ui/playback/EditedReplay.h"
#include "ui/playback/EvidenceView.h"
#include "ui/playback/TimelineView.h"

namespace autoscene::ui {

namespace {

QTreeWidget* newTree(const char* objectName, const QString& accessibleName,
                     const QStringList& headers) {
    auto* tree = new QTreeWidget;
    tree->setObjectName(QString::fromLatin1(objectName));
    tree->setAccessibleName(accessibleName);
    tree->setHeaderLabels(headers);
    tree->header()->setStretchLastSection(true);
    return tree;
}

}  // namespace

PlaybackWindow::PlaybackWindow(TaskEditor& editor, QString folder, QWidget* parent)
    : QWidget(parent, Qt::Window), editor_(editor), folder_(std::move(folder)) {
    setObjectName(QStringLiteral("PlaybackWindow"));
    setWindowTitle(tr("回放"));
    recordings_ = new QComboBox;
    recordings_->setObjectName(QStringLiteral("comboBox_recording"));
    recordings_->setAccessibleName(tr("录像"));
    recordings_->setMinimumContentsLength(24);
    auto* browse = new QPushButton(tr("打开..."));
    browse->setObjectName(QStringLiteral("pushButton_open_recording"));
    status_ = new QLabel;
    status_->setObjectName(QStringLiteral("label_recording_status"));
    status_->setWordWrap(true);
    status_->setAccessibleName(tr("录像状态"));
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(tr("录像:")));
    top->addWidget(recordings_, 1);
    top->addWidget(browse);

    timeline_ = new TimelineView;
    auto* legend = new QLabel(QStringLiteral("<span style='color:#285adc'>■</span> %1 &nbsp; "
                                             "<span style='color:#dc2828'>■</span> %2 &nbsp; "
                                             "<span style='color:#28a03c'>■</span> %3")
                                  .arg(tr("界面变化"), tr("修改后决定不同"), tr("触发事件")));
    legend->setObjectName(QStringLiteral("label_timeline_legend"));
    legend->setAccessibleName(tr("图例"));
    auto* navigation = new QWidget;
    buildNavigation(*navigation);

    evidence_ = new EvidenceView;
    decisions_ = newTree("tree_decisions", tr("决定"), {tr("决定"), tr("证据")});
    state_ =
        newTree("tree_run_state", tr("变量、计时器与定时器"), {tr("名称"), tr("类型"), tr("值")});
    auto* details = new QSplitter(Qt::Vertical);
    details->addWidget(decisions_);
    details->addWidget(state_);
    details->setStretchFactor(0, 3);
    auto* body = new QSplitter;
    body->addWidget(evidence_);
    body->addWidget(details);
    body->setStretchFactor(0, 1);
    body->setSizes({600, 480});

    openInEditor_ = new QPushButton(tr("在编辑器中打开"));
    openInEditor_->setObjectName(QStringLiteral("pushButton_open_in_editor"));
    openInEditor_->setEnabled(false);
    replayStatus_ = new QLabel;
    replayStatus_->setObjectName(QStringLiteral("label_replay_status"));
    replayStatus_->setAccessibleName(tr("修改后的重放"));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(replayStatus_, 1);
    bottom->addWidget(openInEditor_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(status_);
    layout->addWidget(timeline_);
    layout->addWidget(legend);
    layout->addWidget(navigation);
    layout->addWidget(body, 1);
    layout->addLayout(bottom);

    replay_ = new EditedReplay(this);
    replayDelay_ = new QTimer(this);
    replayDelay_->setSingleShot(true);
    // Edits come in bursts (typing a value); one replay after the burst is enough.
    replayDelay_->setInterval(300);
    connect(replayDelay_, &QTimer::timeout, this, &PlaybackWindow::replayEditedTask);
    connect(&editor_.undoStack(), &QUndoStack::indexChanged, replayDelay_,
            qOverload<>(&QTimer::start));
    connect(replay_, &EditedReplay::finished, this, &PlaybackWindow::showDifferences);
    connect(timeline_, &TimelineView::cyclePicked, this, &PlaybackWindow::showCycle);
    connect(decisions_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* row) {
        openInEditor_->setEnabled(decisionEventOf(row).has_value());
    });
    connect(decisions_, &QTreeWidget::itemDoubleClicked, this, &PlaybackWindow::openSelectedEvent);
    connect(openInEditor_, &QPushButton::clicked, this, &PlaybackWindow::openSelectedEvent);
    connect(recordings_, &QComboBox::activated, this,
            [this](int row) { openRecording(recordings_->itemData(row).toString()); });
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString chosen =
            QFileDialog::getExistingDirectory(this, tr("选择录像文件夹"), folder_);
        if (!chosen.isEmpty()) {
            openRecording(chosen);
        }
    });
    resize(1100, 720);
    nameControlsAfterText(*this);
    listRecordings();
    if (recordings_->count() > 0) {
        openRecording(recordings_->itemData(0).toString());
    } else {
        status_->setText(
            tr("%1 中还没有录像: config.ini 的 playback 打开时, 每次运行都会录制").arg(folder_));
    }
}

PlaybackWindow::~PlaybackWindow() = default;

void PlaybackWindow::buildNavigation(QWidget& bar) {
    auto* layout = new QHBoxLayout(&bar);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* name, const QString& text, const QKeySequence& key, auto to) {
        auto* button = new QPushButton(text);
        button->setObjectName(QString::fromLatin1(name));
        button->setShortcut(key);
        button->setToolTip(key.toString(QKeySequence::NativeText));
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, to] { move(to); });
    };
    const auto jump = [this](CycleMarks::Mark mark, bool forward) {
        return [this, mark, forward](CycleMarks::Position at) {
            return marks_->jump(at, mark, forward);
        };
    };
    add("pushButton_previous_scene", tr("◀ 界面变化"), QKeySequence(Qt::SHIFT | Qt::Key_Up),
        jump(CycleMarks::kSceneChange, false));
    add("pushButton_previous_event", tr("◀ 触发"), QKeySequence(Qt::Key_Up),
        jump(CycleMarks::kFired, false));
    add("pushButton_previous_cycle", tr("◀ 上一周期"), QKeySequence(Qt::Key_Left),
        [this](CycleMarks::Position at) { return marks_->step(at, -1); });
    position_ = new QLabel;
    position_->setObjectName(QStringLiteral("label_cycle"));
    position_->setAlignment(Qt::AlignCenter);
    position_->setAccessibleName(tr("当前周期"));
    layout->addWidget(position_, 1);
    add("pushButton_next_cycle", tr("下一周期 ▶"), QKeySequence(Qt::Key_Right),
        [this](CycleMarks::Position at) { return marks_->step(at, 1); });
    add("pushButton_next_event", tr("触发 ▶"), QKeySequence(Qt::Key_Down),
        jump(CycleMarks::kFired, true));
    add("pushButton_next_scene", tr("界面变化 ▶"), QKeySequence(Qt::SHIFT | Qt::Key_Down),
        jump(CycleMarks::kSceneChange, true));
    add("pushButton_next_difference", tr("差异 ▶"), QKeySequence(Qt::Key_D),
        jump(CycleMarks::kDiffers, true));
}

void PlaybackWindow::listRecordings() {
    recordings_->clear();
    QDir dir(folder_);
    for (const QFileInfo& entry :
         dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
        if (QFileInfo(QDir(entry.filePath()).filePath(playback::kCyclesFile)).isFile()) {
            recordings_->addItem(entry.fileName(), entry.filePath());
        }
    }
}

bool PlaybackWindow::openRecording(const QString& folder) {
    QString error;
    std::optional<playback::Recording> read = playback::readRecording(folder, &error);
    if (!read) {
        status_->setText(tr("无法打开录像: %1").arg(error));
        return false;
    }
    replay_->cancel();
    replayDelay_->stop();
    recording_ = std::make_shared<playback::Recording>(std::move(*read));
    marks_ = std::make_unique<CycleMarks>(*recording_);
    recordedTask_.openFolder(QDir(folder).filePath(playback::kTaskFolder));
    shownFramePath_.clear();
    const int row = recordings_->findData(folder);
    if (row >= 0) {
        recordings_->setCurrentIndex(row);
    }
    status_->setText(recording_->warning.isEmpty() ? tr("%1: %2 个周期, %3 个目标")
                                                         .arg(folder)
                                                         .arg(recording_->cycles.size())
                                                         .arg(marks_->targets().size())
                                                   : recording_->warning);
    timeline_->setMarks(marks_.get());
    replayStatus_->clear();
    replaying_ = false;
    current_.reset();
    if (!recording_->cycles.empty()) {
        showCycle({0, 0});
    }
    if (editor_.isModified()) {
        replayEditedTask();
    }
    return true;
}

bool PlaybackWindow::replaying() const {
    return replayDelay_->isActive() || replaying_;
}

void PlaybackWindow::showCycle(CycleMarks::Position at) {
    current_ = at;
    const playback::RecordedCycle& cycle = marks_->cycle(at);
    timeline_->setCurrent(at);
    position_->setText(tr("目标%1 周期 %2 (%3/%4) %5")
                           .arg(cycle.target)
                           .arg(cycle.cycle)
                           .arg(at.index + 1)
                           .arg(marks_->cycleCount(at.target))
                           .arg(QDateTime::fromMSecsSinceEpoch(cycle.timeMs)
                                    .toString(QStringLiteral("HH:mm:ss.zzz"))));
    // Frames are read when shown, so that a long recording opens at once.
    QString missing;
    const QString path =
        cycle.frame.isEmpty() ? QString() : QDir(recording_->folder).filePath(cycle.frame);
    if (path != shownFramePath_) {
        shownFramePath_ = path;
        shownFrame_ = path.isEmpty() ? QImage() : QImage(path);
    }
    if (cycle.frameDropped) {
        missing = tr("此周期的画面在录制时被丢弃 (磁盘跟不上)");
    } else if (!path.isEmpty() && shownFrame_.isNull()) {
        missing = tr("无法读取画面 %1").arg(path);
    }
    evidence_->show(shownFrame_, cycle.line, missing);
    showDecisions(*decisions_, cycle.line);
    showRunState(*state_, cycle.line, recordedTask_);
    openInEditor_->setEnabled(false);
}

void PlaybackWindow::move(
    const std::function<std::optional<CycleMarks::Position>(CycleMarks::Position)>& to) {
    if (!current_) {
        return;
    }
    if (const auto next = to(*current_)) {
        showCycle(*next);
    }
}

void PlaybackWindow::replayEditedTask() {
    if (!recording_) {
        return;
    }
    replayStatus_->setText(tr("正在用修改后的任务重放录像..."));
    replaying_ = true;
    replay_->start(recording_, editor_.document());
}

void PlaybackWindow::showDifferences(const QSet<int>& lines, const QString& error) {
    replaying_ = false;
    marks_->setDiffering(lines);
    timeline_->update();
    QString text = lines.isEmpty()
                       ? tr("修改后的任务在录像的每个周期都作出相同的决定")
                       : tr("修改后的任务在 %1 个周期作出不同的决定 (红色)").arg(lines.size());
    if (!error.isEmpty()) {
        text += QStringLiteral(" — ") + error;
    }
    replayStatus_->setText(text);
}

void PlaybackWindow::openSelectedEvent() {
    if (const auto event = decisionEventOf(decisions_->currentItem())) {
        emit eventRequested(event->scene, event->event);
    }
}

}  // namespace autoscene::ui
