#include "editor/EventEditor.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/FieldForm.h"
#include "editor/FormDialog.h"
#include "editor/ItemCatalog.h"
#include "editor/Prompts.h"
#include "model/TaskDocument.h"

namespace autoscene::ui {

namespace {

using Members = std::vector<std::unique_ptr<model::IEditorCondition>>;

// The group keeps no insert: its members are taken out, rearranged and put back.
Members takeAll(model::EditorGroupCondition& group) {
    Members members;
    while (!group.empty()) {
        members.push_back(group.take(0));
    }
    return members;
}

void putAll(model::EditorGroupCondition& group, Members members) {
    for (auto& member : members) {
        group.append(std::move(member));
    }
}

QString relationText(int relation) {
    return relation == int(model::Relation::Or) ? EventEditor::tr("或者") : EventEditor::tr("并且");
}

QPushButton* button(const QString& text, const char* objectName, QLayout* row) {
    auto* b = new QPushButton(text);
    b->setObjectName(QLatin1String(objectName));
    row->addWidget(b);
    return b;
}

}  // namespace

EventEditor::EventEditor(const model::TaskDocument& task, model::EditorEvent event, QWidget* parent)
    : QDialog(parent),
      task_(task),
      event_(std::move(event)),
      name_(new QLineEdit(event_.name)),
      disabled_(new QCheckBox(tr("禁用"))),
      conditions_(new QTreeWidget),
      actions_(new QListWidget) {
    setObjectName(QStringLiteral("EventEditor"));
    setWindowTitle(tr("编辑事件"));
    name_->setObjectName(QStringLiteral("lineEdit_event_name"));
    name_->setAccessibleName(tr("事件名称"));
    disabled_->setObjectName(QStringLiteral("checkBox_disabled"));
    disabled_->setChecked(event_.disabled);

    auto* head = new QFormLayout;
    head->addRow(tr("事件名称"), name_);
    head->addRow(QString(), disabled_);

    auto* panes = new QSplitter(Qt::Vertical);
    panes->addWidget(buildConditionPane());
    panes->addWidget(buildActionPane());

    // One row of buttons for both lists: they act on the list last selected in.
    auto* shared = new QHBoxLayout;
    connect(button(tr("编辑"), "pushButton_edit", shared), &QPushButton::clicked, this,
            &EventEditor::editSelected);
    connect(button(tr("删除"), "pushButton_delete", shared), &QPushButton::clicked, this,
            &EventEditor::removeSelected);
    connect(button(tr("上移"), "pushButton_up", shared), &QPushButton::clicked, this,
            [this] { moveSelected(-1); });
    connect(button(tr("下移"), "pushButton_down", shared), &QPushButton::clicked, this,
            [this] { moveSelected(1); });
    connect(button(tr("在屏幕上测试"), "pushButton_test_on_screen", shared), &QPushButton::clicked,
            this, &EventEditor::testSelected);
    shared->addStretch();
    shared->addWidget(okCancelButtons(*this));

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addWidget(panes, 1);
    layout->addLayout(shared);
    showConditions();
    showActions();
    resize(720, 620);
    nameControlsAfterText(*this);
}

QWidget* EventEditor::buildConditionPane() {
    auto* box = new QGroupBox(tr("条件"));
    conditions_->setObjectName(QStringLiteral("treeWidget_conditions"));
    conditions_->setAccessibleName(tr("条件"));
    conditions_->setHeaderHidden(true);
    // Groups show their members indented under them; top-level conditions sit at the edge.
    conditions_->setRootIsDecorated(true);
    auto* buttons = new QHBoxLayout;
    auto* add = button(tr("添加条件"), "pushButton_add_condition", buttons);
    auto* menu = new QMenu(add);
    for (const ItemKind& kind : conditionKinds()) {
        menu->addAction(kind.name, this, [this, type = kind.type] { addCondition(type); });
    }
    add->setMenu(menu);
    connect(button(tr("添加条件组"), "pushButton_add_group", buttons), &QPushButton::clicked, this,
            &EventEditor::addGroup);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(conditions_, 1);
    layout->addLayout(buttons);
    connect(conditions_, &QTreeWidget::itemDoubleClicked, this, [this] {
        actionsFocused_ = false;
        editSelected();
    });
    connect(conditions_, &QTreeWidget::itemSelectionChanged, this,
            [this] { actionsFocused_ = false; });
    return box;
}

QWidget* EventEditor::buildActionPane() {
    auto* box = new QGroupBox(tr("动作"));
    actions_->setObjectName(QStringLiteral("listWidget_actions"));
    actions_->setAccessibleName(tr("动作"));
    auto* buttons = new QHBoxLayout;
    auto* add = button(tr("添加动作"), "pushButton_add_action", buttons);
    auto* menu = new QMenu(add);
    for (const ItemKind& kind : actionKinds()) {
        menu->addAction(kind.name, this, [this, type = kind.type] { addAction(type); });
    }
    add->setMenu(menu);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(actions_, 1);
    layout->addLayout(buttons);
    connect(actions_, &QListWidget::itemDoubleClicked, this, [this] {
        actionsFocused_ = true;
        editSelected();
    });
    connect(actions_, &QListWidget::itemSelectionChanged, this, [this] { actionsFocused_ = true; });
    return box;
}

model::EditorEvent EventEditor::result() const {
    model::EditorEvent copy = event_;
    copy.name = name_->text().trimmed();
    copy.disabled = disabled_->isChecked();
    return copy;
}

model::EditorGroupCondition& EventEditor::groupAt(const Path& path) {
    model::EditorGroupCondition* group = &event_.conditions;
    for (int index : path) {
        group = static_cast<model::EditorGroupCondition*>(group->items()[size_t(index)].get());
    }
    return *group;
}

void EventEditor::showConditions(const Path& select) {
    conditions_->clear();
    std::function<void(const model::EditorGroupCondition&, QTreeWidgetItem*, const Path&)> fill =
        [&](const model::EditorGroupCondition& group, QTreeWidgetItem* parent, const Path& at) {
            for (size_t i = 0; i < group.items().size(); ++i) {
                const model::IEditorCondition& member = *group.items()[i];
                const Path path = at + Path{int(i)};
                const bool isGroup = member.type() == model::EditorGroupCondition::kType;
                QString text = isGroup ? tr("条件组") : member.describe(task_);
                if (i > 0) {
                    text = relationText(member.relation()) + QLatin1Char(' ') + text;
                }
                auto* row = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(conditions_);
                row->setText(0, text);
                row->setToolTip(0, text);
                row->setData(0, Qt::UserRole, QVariant::fromValue(path));
                if (path == select) {
                    conditions_->setCurrentItem(row);
                }
                if (isGroup) {
                    fill(static_cast<const model::EditorGroupCondition&>(member), row, path);
                }
            }
        };
    fill(event_.conditions, nullptr, {});
    conditions_->expandAll();
}

void EventEditor::showActions(int select) {
    actions_->clear();
    for (const auto& action : event_.actions) {
        auto* row = new QListWidgetItem(action->describe(task_), actions_);
        row->setToolTip(row->text());
    }
    if (select >= 0) {
        actions_->setCurrentRow(select);
    }
}

EventEditor::Path EventEditor::selectedPath() const {
    const QTreeWidgetItem* item = conditions_->currentItem();
    return item ? item->data(0, Qt::UserRole).value<Path>() : Path{};
}

EventEditor::Path EventEditor::targetGroup() {
    const Path path = selectedPath();
    if (path.isEmpty()) {
        return {};
    }
    const Path parent = path.mid(0, path.size() - 1);
    const bool isGroup =
        groupAt(parent).items()[size_t(path.back())]->type() == model::EditorGroupCondition::kType;
    return isGroup ? path : parent;
}

void EventEditor::addCondition(int type) {
    auto condition = newCondition(type);
    if (!condition || !editItem(this, task_, *condition)) {
        return;
    }
    const Path group = targetGroup();
    model::EditorGroupCondition& target = groupAt(group);
    target.append(std::move(condition));
    showConditions(group + Path{int(target.items().size()) - 1});
}

void EventEditor::addGroup() {
    const Path group = targetGroup();
    model::EditorGroupCondition& target = groupAt(group);
    target.append(std::make_unique<model::EditorGroupCondition>());
    showConditions(group + Path{int(target.items().size()) - 1});
}

void EventEditor::addAction(int type) {
    auto action = newAction(type);
    if (!action || !editItem(this, task_, *action)) {
        return;
    }
    event_.actions.push_back(std::move(action));
    showActions(int(event_.actions.size()) - 1);
}

void EventEditor::editSelected() {
    if (actionsFocused_) {
        if (actions_->currentRow() >= 0) {
            editAction(actions_->currentRow());
        }
    } else if (!selectedPath().isEmpty()) {
        editCondition(selectedPath());
    }
}

void EventEditor::testSelected() {
    if (actionsFocused_) {
        const int row = actions_->currentRow();
        if (row >= 0 && size_t(row) < event_.actions.size()) {
            emit testRequested(nullptr, event_.actions[size_t(row)].get());
        }
    } else if (const Path path = selectedPath(); !path.isEmpty()) {
        const model::EditorGroupCondition& parent = groupAt(path.mid(0, path.size() - 1));
        emit testRequested(parent.items()[size_t(path.back())].get(), nullptr);
    } else if (!groupAt({}).items().empty()) {
        // Nothing chosen: the event's conditions, all together.
        emit testRequested(&groupAt({}), nullptr);
    }
}

void EventEditor::editCondition(const Path& path) {
    model::EditorGroupCondition& parent = groupAt(path.mid(0, path.size() - 1));
    const auto index = size_t(path.back());
    model::IEditorCondition& current = *parent.items()[index];
    if (current.type() == model::EditorGroupCondition::kType) {
        // A group has no record of its own to show: only its relation.
        auto& group = static_cast<model::EditorGroupCondition&>(current);
        int relation = group.relation();
        auto* form = new FieldForm(task_);
        form->addField("relation", relation, model::Ref::None);
        FormDialog dialog(form, tr("条件组"), this);
        if (dialog.exec() == QDialog::Accepted) {
            group.setRelation(relation);
            showConditions(path);
        }
        return;
    }
    auto copy = current.clone();
    if (!editItem(this, task_, *copy)) {
        return;
    }
    Members members = takeAll(parent);
    members[index] = std::move(copy);
    putAll(parent, std::move(members));
    showConditions(path);
}

void EventEditor::editAction(int row) {
    auto copy = event_.actions[size_t(row)]->clone();
    if (!editItem(this, task_, *copy)) {
        return;
    }
    event_.actions[size_t(row)] = std::move(copy);
    showActions(row);
}

void EventEditor::removeSelected() {
    if (actionsFocused_) {
        const int row = actions_->currentRow();
        if (row >= 0) {
            event_.actions.erase(event_.actions.begin() + row);
            showActions(std::min(row, int(event_.actions.size()) - 1));
        }
        return;
    }
    const Path path = selectedPath();
    if (path.isEmpty()) {
        return;
    }
    groupAt(path.mid(0, path.size() - 1)).take(size_t(path.back()));
    showConditions();
}

void EventEditor::moveSelected(int step) {
    if (actionsFocused_) {
        const int row = actions_->currentRow();
        const int to = row + step;
        if (row < 0 || to < 0 || to >= int(event_.actions.size())) {
            return;
        }
        std::swap(event_.actions[size_t(row)], event_.actions[size_t(to)]);
        showActions(to);
        return;
    }
    const Path path = selectedPath();
    if (path.isEmpty()) {
        return;
    }
    model::EditorGroupCondition& parent = groupAt(path.mid(0, path.size() - 1));
    const int to = path.back() + step;
    if (to < 0 || to >= int(parent.items().size())) {
        return;
    }
    Members members = takeAll(parent);
    std::swap(members[size_t(path.back())], members[size_t(to)]);
    putAll(parent, std::move(members));
    Path moved = path;
    moved.back() = to;
    showConditions(moved);
}

}  // namespace autoscene::ui
