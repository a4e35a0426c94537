#include "ui/SceneListModel.h"

#include <QFont>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

SceneListModel::SceneListModel(TaskEditor& editor, QObject* parent)
    : QAbstractListModel(parent), editor_(editor) {
    // Scene edits change rows anywhere in the list; a reset keeps the view simple and the
    // list is short.
    connect(&editor_, &TaskEditor::scenesChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
}

int SceneListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : editor_.sceneRows();
}

QVariant SceneListModel::data(const QModelIndex& index, int role) const {
    const model::EditorScene* scene = editor_.sceneAt(index.row());
    if (!scene) {
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
        return scene->name;
    }
    if (role == Qt::FontRole && TaskEditor::isFixedRow(index.row())) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    return {};
}

}  // namespace autoscene::ui
