#include "ui/EventTree.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <algorithm>
#include <functional>

#include "editor/EventClipboard.h"
#include "editor/EventEditor.h"
#include "editor/Prompts.h"
#include "editor/TaskEditor.h"
#include "ui/EventListModel.h"
#include "ui/probe/ProbePanel.h"

namespace autoscene::ui {

namespace {

// Conditions and actions sit indented under their event.
class LineIndent : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(EventListModel::kItemLineRole).toBool()) {
            option->rect.adjust(option->fontMetrics.height() * 3 / 2, 0, 0, 0);
        }
    }
};

}  // namespace

EventTree::EventTree(TaskEditor& editor, QWidget* parent)
    : QTreeView(parent), editor_(editor), events_(new EventListModel(editor, this)) {
    setObjectName(QStringLiteral("treeWidget_event"));
    setAccessibleName(tr("事件"));
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setModel(events_);
    setItemDelegate(new LineIndent(this));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    // Long scenes draw only the rows in view.
    setUniformRowHeights(true);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDropIndicatorShown(true);
    connect(events_, &QAbstractItemModel::modelAboutToBeReset, this,
            [this] { keptSelection_ = selectedRows(); });
    connect(events_, &QAbstractItemModel::modelReset, this, [this] { selectRows(keptSelection_); });
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { editEvent(events_->eventOf(index)); });
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
    events_->showScene(sceneRow);
}

int EventTree::sceneRow() const {
    return events_->sceneRow();
}

std::vector<int> EventTree::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
        rows.push_back(events_->eventOf(index));
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void EventTree::selectRows(const std::vector<int>& rows) {
    clearSelection();
    for (int row : rows) {
        const QModelIndex index = events_->rowOf(row);
        if (index.isValid()) {
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select);
        }
    }
}

int EventTree::insertionRow() const {
    const std::vector<int> rows = selectedRows();
    return rows.empty() ? editor_.eventRows(sceneRow()) : rows.back() + 1;
}

void EventTree::addEvent() {
    const int row = insertionRow();
    model::EditorEvent event(tr("新事件"));
    event.id = editor_.freeEventId();
    std::vector<model::EditorEvent> added;
    added.push_back(std::move(event));
    if (editor_.insertEvents(sceneRow(), row, std::move(added), tr("添加事件"))) {
        selectRows({row});
    }
}

void EventTree::editEvent(int row) {
    const model::EditorEvent* event = editor_.eventAt(sceneRow(), row);
    if (!event || editor_.isLocked()) {
        return;
    }
    EventEditor dialog(editor_.document(), *event, this);
    connect(&dialog, &EventEditor::testRequested, &dialog,
            [this, &dialog](const model::IEditorCondition* condition,
                            const model::IEditorAction* action) {
                ProbePanel panel(editor_.document(), condition, action, screen_, target_, &ocr_,
                                 &dialog);
                panel.exec();
            });
    if (dialog.exec() == QDialog::Accepted) {
        editor_.replaceEvent(sceneRow(), row, dialog.result(),
                             tr("编辑事件 %1").arg(dialog.result().name));
    }
}

void EventTree::copySelected() {
    std::vector<const model::EditorEvent*> events;
    for (int row : selectedRows()) {
        events.push_back(editor_.eventAt(sceneRow(), row));
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
    const int before = editor_.eventRows(sceneRow());
    QString error;
    const QMimeData* data = QApplication::clipboard()->mimeData();
    const QByteArray text = data ? data->text().toUtf8() : QByteArray();
    const QString source = data ? QString::fromUtf8(data->data(kTaskFolderMimeType)) : QString();
    if (!editor_.pasteEvents(sceneRow(), row, text, &error, source)) {
        if (!error.isEmpty()) {
            showNotice(this, error);
        }
        return;
    }
    std::vector<int> pasted;
    for (int r = row; r < row + editor_.eventRows(sceneRow()) - before; ++r) {
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
    editor_.removeEvents(sceneRow(), rows);
}

void EventTree::moveSelected(int step) {
    const std::vector<int> rows = selectedRows();
    if (rows.size() != 1) {
        return;
    }
    if (editor_.moveEvent(sceneRow(), rows[0], rows[0] + step)) {
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
        model::EditorEvent event = *editor_.eventAt(sceneRow(), row);
        event.disabled = !event.disabled;
        editor_.replaceEvent(sceneRow(), row, std::move(event), {});
    }
    editor_.undoStack().endMacro();
}

void EventTree::renameSelected() {
    const std::vector<int> rows = selectedRows();
    if (rows.size() != 1 || editor_.isLocked()) {
        return;
    }
    model::EditorEvent event = *editor_.eventAt(sceneRow(), rows[0]);
    const std::optional<QString> name = askForText(this, tr("请输入新名称"), event.name);
    if (!name || name->trimmed().isEmpty() || name->trimmed() == event.name) {
        return;
    }
    event.name = name->trimmed();
    editor_.replaceEvent(sceneRow(), rows[0], std::move(event), tr("重命名事件 %1").arg(*name));
}

void EventTree::dropEvent(QDropEvent* event) {
    // The tree never moves its own rows: it redraws from the document after the move.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    const std::vector<int> rows = selectedRows();
    const int target = events_->eventOf(indexAt(event->position().toPoint()));
    const int to = target >= 0 ? target : editor_.eventRows(sceneRow()) - 1;
    if (rows.size() == 1 && editor_.moveEvent(sceneRow(), rows[0], to)) {
        selectRows({to});
    }
}

void EventTree::contextMenuEvent(QContextMenuEvent* event) {
    if (!editor_.sceneAt(sceneRow())) {
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
