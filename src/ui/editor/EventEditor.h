#pragma once
// The editor of one event: its name and switch, its conditions as a tree of groups joined
// by their relations, and its actions in order. Works on a copy; the caller turns an
// accepted dialog into one undoable replacement of the event.

#include <QDialog>
#include <QList>

#include "model/EditorScene.h"

class QCheckBox;
class QLineEdit;
class QListWidget;
class QTreeWidget;

namespace autoscene::model {
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

class EventEditor : public QDialog {
    Q_OBJECT
public:
    EventEditor(const model::TaskDocument& task, model::EditorEvent event,
                QWidget* parent = nullptr);

    // The event with the changes made so far.
    model::EditorEvent result() const;

    QTreeWidget& conditionTree() { return *conditions_; }
    QListWidget& actionList() { return *actions_; }

    // Into the selected group (or the group of the selected condition); the form opens
    // first, and cancelling it adds nothing.
    void addCondition(int type);
    void addGroup();
    void addAction(int type);
    // On the selected condition or action, whichever list has the focus last.
    void editSelected();
    void removeSelected();
    void moveSelected(int step);
    // Asks for the selected condition or action to be tried on the screen; with neither
    // chosen, every condition of the event.
    void testSelected();

signals:
    // Exactly one of the two is set; both live until the dialog's next change.
    void testRequested(const model::IEditorCondition* condition,
                       const model::IEditorAction* action);

private:
    using Path = QList<int>;

    QWidget* buildConditionPane();
    QWidget* buildActionPane();
    void showConditions(const Path& select = {});
    void showActions(int select = -1);
    Path selectedPath() const;
    // The group a new condition goes into, by the selection.
    Path targetGroup();
    model::EditorGroupCondition& groupAt(const Path& path);
    void editCondition(const Path& path);
    void editAction(int row);

    const model::TaskDocument& task_;
    model::EditorEvent event_;
    QLineEdit* name_;
    QCheckBox* disabled_;
    QTreeWidget* conditions_;
    QListWidget* actions_;
    bool actionsFocused_ = false;
};

}  // namespace autoscene::ui
