#include "editor/DefinitionsDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/AccessibleNames.h"
#include "editor/FieldForm.h"
#include "editor/FormDialog.h"
#include "editor/ItemCatalog.h"
#include "editor/ListDialogLayout.h"
#include "editor/Prompts.h"
#include "editor/ResourceUsers.h"
#include "editor/TaskEditor.h"

namespace autoscene::ui {

namespace {

QString kindName(int type) {
    for (const ItemKind& kind : definitionKinds()) {
        if (kind.type == type) {
            return kind.name;
        }
    }
    return QString::number(type);
}

// A tab per kind, each a form over a definition of its own; OK checks the tab shown.
class NewDefinitionDialog : public QDialog {
public:
    NewDefinitionDialog(const model::TaskDocument& task, QWidget* parent)
        : QDialog(parent), tabs_(new QTabWidget), problems_(new QLabel) {
        setWindowTitle(DefinitionsDialog::tr("新建变量"));
        setObjectName(QStringLiteral("NewDefinitionDialog"));
        tabs_->setObjectName(QStringLiteral("tabWidget_kind"));
        for (const ItemKind& kind : definitionKinds()) {
            definitions_.push_back(newDefinition(kind.type));
            auto* form = new FieldForm(task);
            addDefinitionFields(*form, *definitions_.back(), task);
            forms_.push_back(form);
            // Rows keep their height; the space left goes below them.
            auto* page = new QWidget;
            auto* pageLayout = new QVBoxLayout(page);
            pageLayout->addWidget(form);
            pageLayout->addStretch(1);
            tabs_->addTab(page, kind.name);
        }
        problems_->setObjectName(QStringLiteral("label_problems"));
        problems_->setStyleSheet(QStringLiteral("color: #c00000;"));
        problems_->hide();
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(tabs_, 1);
        layout->addWidget(problems_);
        layout->addWidget(okCancelButtons(*this));
        resize(480, 560);
        nameControlsAfterText(*this);
    }

    void accept() override {
        FieldForm& form = *forms_[size_t(tabs_->currentIndex())];
        const QStringList problems = form.problems();
        if (!problems.isEmpty()) {
            problems_->setText(problems.join(QLatin1Char('\n')));
            problems_->show();
            return;
        }
        form.apply();
        QDialog::accept();
    }

    std::unique_ptr<model::EditorVariable> take() {
        auto chosen = std::move(definitions_[size_t(tabs_->currentIndex())]);
        chosen->id = model::definition_ids::next();
        chosen->name = chosen->name.trimmed();
        return chosen;
    }

private:
    QTabWidget* tabs_;
    QLabel* problems_;
    std::vector<std::unique_ptr<model::EditorVariable>> definitions_;
    std::vector<FieldForm*> forms_;
};

}  // namespace

std::unique_ptr<model::EditorVariable> askForNewDefinition(TaskEditor& editor, QWidget* parent) {
    NewDefinitionDialog dialog(editor.document(), parent);
    if (dialog.exec() != QDialog::Accepted) {
        return nullptr;
    }
    return dialog.take();
}

DefinitionsDialog::DefinitionsDialog(TaskEditor& editor, QWidget* parent)
    : QDialog(parent), editor_(editor), list_(new QListWidget) {
    setObjectName(QStringLiteral("DefinitionsDialog"));
    setWindowTitle(tr("变量"));
    list_->setObjectName(QStringLiteral("listWidget_definitions"));
    list_->setAccessibleName(tr("变量"));
    layOutListDialog(
        *this, *list_,
        {{tr("新建"), "pushButton_new", [this] { addDefinition(); }},
         {tr("编辑"), "pushButton_edit", [this] { editDefinition(list_->currentRow()); }},
         {tr("删除"), "pushButton_delete", [this] { deleteDefinition(list_->currentRow()); }}});
    connect(list_, &QListWidget::itemDoubleClicked, this,
            [this] { editDefinition(list_->currentRow()); });
    connect(&editor_, &TaskEditor::definitionsChanged, this, &DefinitionsDialog::refresh);
    refresh();
    resize(520, 480);
    nameControlsAfterText(*this);
}

void DefinitionsDialog::refresh() {
    const int row = list_->currentRow();
    list_->clear();
    for (const auto& definition : editor_.document().definitions) {
        const QString shown = definition->describe();
        QString text =
            QStringLiteral("%1 [%2]").arg(definition->name, kindName(definition->type()));
        if (shown != definition->name) {
            text += QStringLiteral("  ") + shown;
        }
        list_->addItem(text);
    }
    list_->setCurrentRow(std::min(row, list_->count() - 1));
}

void DefinitionsDialog::addDefinition() {
    if (auto definition = askForNewDefinition(editor_, this)) {
        editor_.addDefinition(std::move(definition));
        list_->setCurrentRow(list_->count() - 1);
    }
}

void DefinitionsDialog::editDefinition(int row) {
    const auto& definitions = editor_.document().definitions;
    if (row < 0 || row >= int(definitions.size())) {
        return;
    }
    auto copy = definitions[size_t(row)]->clone();
    auto* form = new FieldForm(editor_.document());
    addDefinitionFields(*form, *copy, editor_.document());
    FormDialog dialog(form, kindName(copy->type()), this);
    if (dialog.exec() == QDialog::Accepted) {
        editor_.replaceDefinition(std::move(copy));
    }
}

void DefinitionsDialog::deleteDefinition(int row) {
    const auto& definitions = editor_.document().definitions;
    if (row < 0 || row >= int(definitions.size())) {
        return;
    }
    const model::EditorVariable& definition = *definitions[size_t(row)];
    const QStringList users =
        describeUsers(editor_.document(), model::Ref::Definition, definition.id);
    const QString question =
        users.isEmpty() ? tr("是否删除 %1?").arg(definition.name)
                        : tr("%1 正在被以下条目使用:\n%2\n\n删除后这些条目将失效,是否删除?")
                              .arg(definition.name, users.join(QLatin1Char('\n')));
    if (askToConfirm(this, question)) {
        editor_.removeDefinition(definition.id);
    }
}

}  // namespace autoscene::ui
