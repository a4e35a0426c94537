#include "ui/EventListModel.h"

#include <algorithm>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

EventListModel::EventListModel(TaskEditor& editor, QObject* parent)
    : QAbstractListModel(parent), editor_(editor) {
    connect(&editor_, &TaskEditor::eventsChanged, this, [this](int row) {
        if (row == sceneRow_) {
            reload();
        }
    });
    connect(&editor_, &TaskEditor::eventChanged, this, &EventListModel::eventChanged);
    // Descriptions name definitions, images and colours; scene edits move rows.
    connect(&editor_, &TaskEditor::definitionsChanged, this, &EventListModel::reload);
    connect(&editor_, &TaskEditor::resourcesChanged, this, &EventListModel::reload);
    connect(&editor_, &TaskEditor::scenesChanged, this, &EventListModel::reload);
}

void EventListModel::showScene(int sceneRow) {
    sceneRow_ = sceneRow;
    reload();
}

void EventListModel::reload() {
    beginResetModel();
    firstRows_.assign(1, 0);
    if (const model::EditorScene* scene = editor_.sceneAt(sceneRow_)) {
        for (const model::EditorEvent* event : scene->allEvents()) {
            firstRows_.push_back(firstRows_.back() + 1 + int(event->items().size()));
        }
    }
    endResetModel();
}

void EventListModel::eventChanged(int sceneRow, int eventRow) {
    const model::EditorEvent* event = editor_.eventAt(sceneRow, eventRow);
    if (sceneRow != sceneRow_ || !event || eventRow + 1 >= int(firstRows_.size())) {
        return;
    }
    const auto at = size_t(eventRow);
    const int first = firstRows_[at];
    const int before = firstRows_[at + 1] - first;
    const int after = 1 + int(event->items().size());
    const auto shift = [&] {
        std::for_each(firstRows_.begin() + std::ptrdiff_t(at) + 1, firstRows_.end(),
                      [&](int& row) { row += after - before; });
    };
    if (after < before) {
        beginRemoveRows({}, first + after, first + before - 1);
        shift();
        endRemoveRows();
    } else if (after > before) {
        beginInsertRows({}, first + before, first + after - 1);
        shift();
        endInsertRows();
    }
    emit dataChanged(index(first), index(first + after - 1));
}

int EventListModel::eventOf(const QModelIndex& index) const {
    if (!index.isValid() || index.row() >= firstRows_.back()) {
        return -1;
    }
    const auto next = std::upper_bound(firstRows_.begin(), firstRows_.end(), index.row());
    return int(next - firstRows_.begin()) - 1;
}

QModelIndex EventListModel::rowOf(int event) const {
    return event >= 0 && event + 1 < int(firstRows_.size()) ? index(firstRows_[size_t(event)])
                                                            : QModelIndex();
}

int EventListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : firstRows_.back();
}

QVariant EventListModel::data(const QModelIndex& index, int role) const {
    const int eventRow = eventOf(index);
    const model::EditorEvent* event = const_cast<TaskEditor&>(editor_).eventAt(sceneRow_, eventRow);
    if (!event) {
        return {};
    }
    const int line = index.row() - firstRows_[size_t(eventRow)] - 1;
    if (role == kItemLineRole) {
        return line >= 0;
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleTextRole) {
        return {};
    }
    if (line < 0) {
        return event->disabled ? tr("%1 (已禁用)").arg(event->name) : event->name;
    }
    const auto items = event->items();
    return line < int(items.size()) ? items[size_t(line)]->describe(editor_.document())
                                    : QVariant();
}

Qt::ItemFlags EventListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::ItemIsDropEnabled;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
}

}  // namespace autoscene::ui
