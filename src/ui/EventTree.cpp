#include "ui/EventTree.h"

#include <QHeaderView>

#include "model/TaskDocument.h"

namespace autoscene::ui {

EventTree::EventTree(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("treeWidget_event"));
    setAccessibleName(tr("事件"));
    setHeaderHidden(true);
    setColumnCount(1);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void EventTree::showScene(const model::EditorScene* scene, const model::TaskDocument& task) {
    clear();
    if (!scene) {
        return;
    }
    for (const model::EditorEvent* event : scene->allEvents()) {
        auto* row = new QTreeWidgetItem(this);
        row->setText(0, event->disabled ? tr("%1 (已禁用)").arg(event->name) : event->name);
        for (const model::IEditorItem* item : event->items()) {
            auto* line = new QTreeWidgetItem(row);
            line->setText(0, item->describe(task));
            line->setToolTip(0, line->text(0));
        }
    }
    expandAll();
}

}  // namespace autoscene::ui
