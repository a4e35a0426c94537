#include "ui/TaskEditor.h"

namespace autoscene::ui {

model::OpenResult TaskEditor::open(const QString& folder) {
    model::OpenResult result = document_.openFolder(folder);
    saveFailed_ = false;
    emit scenesChanged();
    return result;
}

model::EditorScene* TaskEditor::sceneAt(int row) {
    switch (row) {
        case 0:
            return &document_.commonEvent;
        case 1:
            return &document_.commonEventLow;
        case 2:
            return &document_.defaultScene;
        default:
            return ownScene(row);
    }
}

model::EditorScene* TaskEditor::ownScene(int row) {
    const int index = row - kFixedRows;
    if (index < 0 || index >= int(document_.scenes.size())) {
        return nullptr;
    }
    return &document_.scenes[size_t(index)];
}

QString TaskEditor::freeCopyName(const QString& name) const {
    for (int n = 1;; ++n) {
        QString candidate = QStringLiteral("%1(%2)").arg(name).arg(n);
        if (document_.isSceneNameFree(candidate)) {
            return candidate;
        }
    }
}

int TaskEditor::copyScene(int row) {
    const model::EditorScene* original = ownScene(row);
    if (!original) {
        return -1;
    }
    model::EditorScene copy = *original;
    copy.name = freeCopyName(original->name);
    const auto at = document_.scenes.begin() + (row - kFixedRows) + 1;
    document_.scenes.insert(at, std::move(copy));
    emit scenesChanged();
    return row + 1;
}

bool TaskEditor::renameScene(int row, const QString& name) {
    model::EditorScene* scene = ownScene(row);
    const QString trimmed = name.trimmed();
    if (!scene || trimmed.isEmpty()) {
        return false;
    }
    if (trimmed == scene->name) {
        return true;
    }
    if (!document_.isSceneNameFree(trimmed)) {
        return false;
    }
    scene->name = trimmed;
    emit scenesChanged();
    return true;
}

bool TaskEditor::deleteScene(int row) {
    if (!ownScene(row)) {
        return false;
    }
    document_.scenes.erase(document_.scenes.begin() + (row - kFixedRows));
    emit scenesChanged();
    return true;
}

bool TaskEditor::save(QString* error) {
    saveFailed_ = !document_.save(error);
    return !saveFailed_;
}

}  // namespace autoscene::ui
