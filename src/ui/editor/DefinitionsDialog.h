#pragma once
// The task's definitions (variables, timers, alarms, randoms, crops): create one of the five
// kinds, edit, delete. Deleting one that items use lists them and asks first. Every change
// is one undoable step of the task.

#include <QDialog>
#include <memory>

class QListWidget;

namespace autoscene::model {
class EditorVariable;
}  // namespace autoscene::model

namespace autoscene::ui {

class TaskEditor;

class DefinitionsDialog : public QDialog {
    Q_OBJECT
public:
    explicit DefinitionsDialog(TaskEditor& editor, QWidget* parent = nullptr);

    QListWidget& list() { return *list_; }
    void addDefinition();
    void editDefinition(int row);
    void deleteDefinition(int row);

private:
    void refresh();

    TaskEditor& editor_;
    QListWidget* list_;
};

// The dialog for a new definition, a tab per kind; nothing when cancelled. The new
// definition takes the next id of the program.
std::unique_ptr<model::EditorVariable> askForNewDefinition(TaskEditor& editor, QWidget* parent);

}  // namespace autoscene::ui
