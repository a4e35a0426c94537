#pragma once
// The scene list of the main window with its context menu: add scenes, and copy, rename,
// move and delete the task's own scenes (the fixed scenes offer none of these).

#include <QListView>

namespace autoscene::ui {

class TaskEditor;

class SceneListView : public QListView {
    Q_OBJECT
public:
    explicit SceneListView(TaskEditor& editor, QWidget* parent = nullptr);

    // The selected row, -1 when none.
    int currentRow() const;
    void selectRow(int row);

    // While a run reads the document, the context menu changes nothing.
    void setEditingLocked(bool locked) { editingLocked_ = locked; }

    // The context menu's operations on a row, prompts included.
    void addAfter(int row);
    void moveRow(int row, int step);
    void copyRow(int row);
    void renameRow(int row);
    void deleteRow(int row);

signals:
    void sceneSelected(int row);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    TaskEditor& editor_;
    bool editingLocked_ = false;
};

}  // namespace autoscene::ui
