#include "ui/EventTree.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <algorithm>
#include <functional>

#include "editor/EventClipboard.h"
#include "editor/EventEditor.h"
#include "editor/Prompts.h"
#include "editor/TaskEditor.h"

namespace autoscene::ui {

EventTree::EventTree(TaskEditor& editor, QWidget* parent) : QTreeWidget(parent), editor_(editor) {
    setObjectName(QStringLiteral("treeWidget_event"));
    setAccessibleName(tr("事件"));
    setHeaderHidden(true);
    setColumnCount(1);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    // Long scenes draw only the rows in view.
    setUniformRowHeights(true);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDropIndicatorShown(true);
    connect(&editor_, &TaskEditor::eventsChanged, this, [this](int row) {
        if (row == sceneRow_) {
            refresh();
        }
    });
    // Long scenes stay quick to edit: a changed event redraws its own row only.
    connect(&editor_, &TaskEditor::eventChanged, this, [this](int scene, int row) {
        const model::EditorEvent* event = editor_.eventAt(scene, row);
        if (scene == sceneRow_ && event && topLevelItem(row)) {
            fillRow(*topLevelItem(row), *event);
        }
    });
    // Descriptions name definitions; scene edits move rows.
    connect(&editor_, &TaskEditor::definitionsChanged, this, &EventTree::refresh);
    connect(&editor_, &TaskEditor::scenesChanged, this, &EventTree::refresh);
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        while (item->parent()) {
            item = item->parent();
        }
        editEvent(indexOfTopLevelItem(item));
    });
    struct Shortcut {
        QKeySequence keys;
        void (EventTree::*slot)();
    };
    const Shortcut shortcuts[] = {{QKeySequence::Copy, &EventTree::copySelected},
                                  {QKeySequence::Paste, &EventTree::paste},
                                  {QKeySequence::Delete, &EventTree::deleteSelected},
                                  {QKeySequence(Qt::Key_F2), &EventTree::renameSelected}};
    for (const Shortcut& shortcut : shortcuts) {
        auto* action = new QAction(this);
        action->setShortcut(shortcut.keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, shortcut.slot);
        addAction(action);
    }
}

void EventTree::showScene(int sceneRow) {
    sceneRow_ = sceneRow;
    refresh();
}

void EventTree::refresh() {
    const std::vector<int> selected = selectedRows();
    clear();
    const model::EditorScene* scene = editor_.sceneAt(sceneRow_);
    if (!scene) {
        return;
    }
    QList<QTreeWidgetItem*> rows;
    for (const model::EditorEvent* event : scene->allEvents()) {
        auto* row = new QTreeWidgetItem;
        fillRow(*row, *event);
        rows << row;
    }
    // One insertion: adding rows one by one costs a layout each.
    addTopLevelItems(rows);
    expandAll();
    selectRows(selected);
}

void EventTree::fillRow(QTreeWidgetItem& row, const model::EditorEvent& event) const {
    row.setText(0, event.disabled ? tr("%1 (已禁用)").arg(event.name) : event.name);
    qDeleteAll(row.takeChildren());
    for (const model::IEditorItem* item : event.items()) {
        auto* line = new QTreeWidgetItem(&row);
        line->setText(0, item->describe(editor_.document()));
        line->setToolTip(0, line->text(0));
    }
    row.setExpanded(true);
}

std::vector<int> EventTree::selectedRows() const {
    std::vector<int> rows;
    for (QTreeWidgetItem* item : selectedItems()) {
        while (item->parent()) {
            item = item->parent();
        }
        rows.push_back(indexOfTopLevelItem(item));
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void EventTree::selectRows(const std::vector<int>& rows) {
    clearSelection();
    for (int row : rows) {
        if (QTreeWidgetItem* item = topLevelItem(row)) {
            item->setSelected(true);
            setCurrentItem(item, 0, QItemSelectionModel::Select);
        }
    }
}

int EventTree::insertionRow() const {
    const std::vector<int> rows = selectedRows();
    return rows.empty() ? editor_.eventRows(sceneRow_) : rows.back() + 1;
}

void EventTree::addEvent() {
    const int row = insertionRow();
    model::EditorEvent event(tr("新事件"));
    event.id = editor_.freeEventId();
    std::vector<model::EditorEvent> added;
    added.push_back(std::move(event));
    if (editor_.insertEvents(sceneRow_, row, std::move(added), tr("添加事件"))) {
        selectRows({row});
    }
}

void EventTree::editEvent(int row) {
    const model::EditorEvent* event = editor_.eventAt(sceneRow_, row);
    if (!event || editor_.isLocked()) {
        return;
    }
    EventEditor dialog(editor_.document(), *event, this);
    if (dialog.exec() == QDialog::Accepted) {
        editor_.replaceEvent(sceneRow_, row, dialog.result(),
                             tr("编辑事件 %1").arg(dialog.result().name));
    }
}

void EventTree::copySelected() {
    std::vector<const model::EditorEvent*> events;
    for (int row : selectedRows()) {
        events.push_back(editor_.eventAt(sceneRow_, row));
    }
    if (!events.empty()) {
        auto* data = new QMimeData;
        data->setText(QString::fromUtf8(eventsToTaskJson(editor_.document(), events)));
        data->setData(kTaskFolderMimeType, editor_.document().folderPath.toUtf8());
        QApplication::clipboard()->setMimeData(data);
    }
}

void EventTree::paste() {
    const int row = insertionRow();
    const int before = editor_.eventRows(sceneRow_);
    QString error;
    const QMimeData* data = QApplication::clipboard()->mimeData();
    const QByteArray text = data ? data->text().toUtf8() : QByteArray();
    const QString source = data ? QString::fromUtf8(data->data(kTaskFolderMimeType)) : QString();
    if (!editor_.pasteEvents(sceneRow_, row, text, &error, source)) {
        if (!error.isEmpty()) {
            showNotice(this, error);
        }
        return;
    }
    std::vector<int> pasted;
    for (int r = row; r < row + editor_.eventRows(sceneRow_) - before; ++r) {
        pasted.push_back(r);
    }
    selectRows(pasted);
}

void EventTree::deleteSelected() {
    std::vector<int> rows = selectedRows();
    // The identification event belongs to the scene and stays.
    rows.erase(std::remove(rows.begin(), rows.end(), 0), rows.end());
    if (rows.empty() || editor_.isLocked() || !askToConfirm(this, tr("是否删除选中的事件?"))) {
        return;
    }
    editor_.removeEvents(sceneRow_, rows);
}

void EventTree::moveSelected(int step) {
    const std::vector<int> rows = selectedRows();
    if (rows.size() != 1) {
        return;
    }
    if (editor_.moveEvent(sceneRow_, rows[0], rows[0] + step)) {
        selectRows({rows[0] + step});
    }
}

void EventTree::toggleSelected() {
    const std::vector<int> rows = selectedRows();
    if (rows.empty() || editor_.isLocked()) {
        return;
    }
    editor_.undoStack().beginMacro(tr("启用/禁用事件"));
    for (int row : rows) {
        model::EditorEvent event = *editor_.eventAt(sceneRow_, row);
        event.disabled = !event.disabled;
        editor_.replaceEvent(sceneRow_, row, std::move(event), {});
    }
    editor_.undoStack().endMacro();
}

void EventTree::renameSelected() {
    const std::vector<int> rows = selectedRows();
    if (rows.size() != 1 || editor_.isLocked()) {
        return;
    }
    model::EditorEvent event = *editor_.eventAt(sceneRow_, rows[0]);
    const std::optional<QString> name = askForText(this, tr("请输入新名称"), event.name);
    if (!name || name->trimmed().isEmpty() || name->trimmed() == event.name) {
        return;
    }
    event.name = name->trimmed();
    editor_.replaceEvent(sceneRow_, rows[0], std::move(event), tr("重命名事件 %1").arg(*name));
}

void EventTree::dropEvent(QDropEvent* event) {
    // The tree never moves its own rows: it redraws from the document after the move.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    const std::vector<int> rows = selectedRows();
    QTreeWidgetItem* target = itemAt(event->position().toPoint());
    while (target && target->parent()) {
        target = target->parent();
    }
    const int to = target ? indexOfTopLevelItem(target) : editor_.eventRows(sceneRow_) - 1;
    if (rows.size() == 1 && editor_.moveEvent(sceneRow_, rows[0], to)) {
        selectRows({to});
    }
}

void EventTree::contextMenuEvent(QContextMenuEvent* event) {
    if (!editor_.sceneAt(sceneRow_)) {
        return;
    }
    const bool selected = !selectedRows().empty();
    const bool editable = !editor_.isLocked();
    QMenu menu(this);
    struct Entry {
        QString text;
        bool enabled;
        std::function<void()> run;
    };
    const Entry entries[] = {
        {tr("添加事件"), editable, [this] { addEvent(); }},
        {tr("编辑"), editable && selected, [this] { editEvent(selectedRows().front()); }},
        {tr("复制"), selected, [this] { copySelected(); }},
        {tr("粘贴"), editable, [this] { paste(); }},
        {tr("删除"), editable && selected, [this] { deleteSelected(); }},
        {tr("上移"), editable && selected, [this] { moveSelected(-1); }},
        {tr("下移"), editable && selected, [this] { moveSelected(1); }},
        {tr("启用/禁用"), editable && selected, [this] { toggleSelected(); }},
        {tr("重命名"), editable && selected, [this] { renameSelected(); }},
    };
    for (const Entry& entry : entries) {
        QAction* action = menu.addAction(entry.text, entry.run);
        action->setEnabled(entry.enabled);
    }
    menu.exec(event->globalPos());
}

}  // namespace autoscene::ui
