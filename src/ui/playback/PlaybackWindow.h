#pragma once
// The playback window: a recording of a run chosen from the playback folder (or anywhere),
// its timeline per target, the chosen cycle's frame with the evidence drawn, its decisions
// and run state, moves by cycle, fired event, scene change and difference. Each edit of the
// open task replays the recording in the background and marks the cycles that would now
// decide differently.

#include <QWidget>
#include <memory>
#include <optional>

#include "model/TaskDocument.h"
#include "playback/RecordingReader.h"
#include "ui/playback/CycleMarks.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTimer;
class QTreeWidget;

namespace autoscene::ui {

class EditedReplay;
class EvidenceView;
class TaskEditor;
class TimelineView;

class PlaybackWindow : public QWidget {
    Q_OBJECT
public:
    // Lists the recordings in `folder`, newest first, and opens the newest.
    PlaybackWindow(TaskEditor& editor, QString folder, QWidget* parent = nullptr);
    ~PlaybackWindow() override;

    // Refreshes the list from the folder.
    void listRecordings();
    // False, with the reason shown, when `folder` holds no readable recording.
    bool openRecording(const QString& folder);

    std::optional<CycleMarks::Position> current() const { return current_; }
    void showCycle(CycleMarks::Position at);
    const CycleMarks* marks() const { return marks_.get(); }
    EvidenceView& evidence() { return *evidence_; }
    // Whether a replay of the edited task is under way.
    bool replaying() const;

signals:
    // The user asked to edit this event (an empty `event`: the scene's identification).
    void eventRequested(const QString& scene, const QString& event);

private:
    void buildNavigation(QWidget& bar);
    void move(const std::function<std::optional<CycleMarks::Position>(CycleMarks::Position)>& to);
    void replayEditedTask();
    void showDifferences(const QSet<int>& lines, const QString& error);
    void openSelectedEvent();

    TaskEditor& editor_;
    QString folder_;
    std::shared_ptr<playback::Recording> recording_;
    std::unique_ptr<CycleMarks> marks_;
    model::TaskDocument recordedTask_;
    std::optional<CycleMarks::Position> current_;
    QString shownFramePath_;
    QImage shownFrame_;

    QComboBox* recordings_ = nullptr;
    QLabel* status_ = nullptr;
    QLabel* position_ = nullptr;
    QLabel* replayStatus_ = nullptr;
    TimelineView* timeline_ = nullptr;
    EvidenceView* evidence_ = nullptr;
    QTreeWidget* decisions_ = nullptr;
    QTreeWidget* state_ = nullptr;
    QPushButton* openInEditor_ = nullptr;
    EditedReplay* replay_ = nullptr;
    QTimer* replayDelay_ = nullptr;
    bool replaying_ = false;
};

}  // namespace autoscene::ui
