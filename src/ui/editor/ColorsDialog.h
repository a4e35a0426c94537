#pragma once
// The task's colours: edit one (name, similarity, the colour itself) or delete it. Deleting
// a colour that items use lists them and asks first. Every change is one undoable step.

#include <QDialog>

class QListWidget;

namespace autoscene::ui {

class TaskEditor;

class ColorsDialog : public QDialog {
    Q_OBJECT
public:
    explicit ColorsDialog(TaskEditor& editor, QWidget* parent = nullptr);

    QListWidget& list() { return *list_; }
    void editColor(int row);
    void deleteColor(int row);

private:
    void refresh();

    TaskEditor& editor_;
    QListWidget* list_;
};

}  // namespace autoscene::ui
