#include "ui/SceneListView.h"

#include <QContextMenuEvent>
#include <QMenu>

#include "editor/Prompts.h"
#include "editor/TaskEditor.h"
#include "ui/SceneListModel.h"

namespace autoscene::ui {

SceneListView::SceneListView(TaskEditor& editor, QWidget* parent)
    : QListView(parent), editor_(editor) {
    setObjectName(QStringLiteral("listView_scene"));
    setAccessibleName(tr("界面"));
    setModel(new SceneListModel(editor_, this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { emit sceneSelected(current.row()); });
    // A reset clears the selection; the event list must follow.
    connect(model(), &QAbstractItemModel::modelReset, this, [this] { emit sceneSelected(-1); });
}

int SceneListView::currentRow() const {
    const QModelIndex index = currentIndex();
    return index.isValid() ? index.row() : -1;
}

void SceneListView::selectRow(int row) {
    setCurrentIndex(model()->index(row, 0));
}

void SceneListView::contextMenuEvent(QContextMenuEvent* event) {
    // Below the last row, a new scene goes at the end.
    const int hit = indexAt(event->pos()).row();
    const int row = hit < 0 ? editor_.sceneRows() - 1 : hit;
    QMenu menu(this);
    const bool own = hit >= 0 && !TaskEditor::isFixedRow(row) && !editingLocked_;
    menu.addAction(tr("新建界面"), this, [this, row] { addAfter(row); })
        ->setEnabled(!editingLocked_);
    menu.addAction(tr("复制"), this, [this, row] { copyRow(row); })->setEnabled(own);
    menu.addAction(tr("重命名"), this, [this, row] { renameRow(row); })->setEnabled(own);
    menu.addAction(tr("上移"), this, [this, row] { moveRow(row, -1); })->setEnabled(own);
    menu.addAction(tr("下移"), this, [this, row] { moveRow(row, 1); })->setEnabled(own);
    menu.addAction(tr("删除"), this, [this, row] { deleteRow(row); })->setEnabled(own);
    menu.exec(event->globalPos());
}

void SceneListView::addAfter(int row) {
    if (editingLocked_) {
        return;
    }
    const auto name = askForText(this, tr("请输入新名称"), {});
    if (!name) {
        return;
    }
    const int added = editor_.addScene(row, *name);
    if (added < 0) {
        showNotice(this, tr("界面名称为空或已存在"));
        return;
    }
    selectRow(added);
}

void SceneListView::moveRow(int row, int step) {
    if (!editingLocked_ && editor_.moveScene(row, step)) {
        selectRow(row + step);
    }
}

void SceneListView::copyRow(int row) {
    if (editingLocked_) {
        return;
    }
    const int copy = editor_.copyScene(row);
    if (copy >= 0) {
        selectRow(copy);
    }
}

void SceneListView::renameRow(int row) {
    const model::EditorScene* scene = editor_.sceneAt(row);
    if (!scene || TaskEditor::isFixedRow(row) || editingLocked_) {
        return;
    }
    const auto name = askForText(this, tr("请输入新名称"), scene->name);
    if (!name) {
        return;
    }
    if (!editor_.renameScene(row, *name)) {
        showNotice(this, tr("界面名称为空或已存在"));
        return;
    }
    selectRow(row);
}

void SceneListView::deleteRow(int row) {
    if (TaskEditor::isFixedRow(row) || !editor_.sceneAt(row) || editingLocked_) {
        return;
    }
    if (askToConfirm(this, tr("是否删除界面"))) {
        editor_.deleteScene(row);
    }
}

}  // namespace autoscene::ui
