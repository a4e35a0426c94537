#pragma once
// The events of the selected scene, each with its conditions and actions described in
// words underneath, and the event edits: add, edit (double-click), copy, paste, delete,
// move (also by dragging), switch on and off, rename. Every edit goes through the task's undo
// stack.

#include <QTreeView>
#include <vector>

#include "ui/probe/ProbeOcr.h"
#include "ui/probe/ProbePanel.h"

namespace autoscene::model {
class EditorEvent;
}  // namespace autoscene::model

namespace autoscene::platform {
class IDesktopBackend;
}

namespace autoscene::ui {

class EventListModel;
class TaskEditor;

class EventTree : public QTreeView {
    Q_OBJECT
public:
    explicit EventTree(TaskEditor& editor, QWidget* parent = nullptr);

    // Shows the events of the scene at `sceneRow` of the scene list; none for a row outside.
    void showScene(int sceneRow);
    // The screen the event editor's test on the screen captures; none: originals only.
    void setScreen(platform::IDesktopBackend* screen) { screen_ = screen; }
    // The task's target, captured as a run captures it; none: the whole screen.
    void setTargetCapture(ProbePanel::TargetCapture capture) { target_ = std::move(capture); }
    int sceneRow() const;

    // Event rows selected (a selected condition or action selects its event), ascending.
    std::vector<int> selectedRows() const;
    void selectRows(const std::vector<int>& rows);

    void addEvent();
    void editEvent(int row);
    void copySelected();
    // After the selection, or at the end.
    void paste();
    void deleteSelected();
    void moveSelected(int step);
    void toggleSelected();
    void renameSelected();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    // Dragging one event onto another moves it there, through the undo stack.
    void dropEvent(QDropEvent* event) override;

private:
    // Where added and pasted events go.
    int insertionRow() const;

    TaskEditor& editor_;
    EventListModel* events_;
    std::vector<int> keptSelection_;  // across a reload of the model
    platform::IDesktopBackend* screen_ = nullptr;
    ProbePanel::TargetCapture target_;
    // Started by the first text item tried, kept for the next.
    ProbeOcr ocr_;
};

}  // namespace autoscene::ui
