#include "editor/ColorsDialog.h"

#include <QListWidget>
#include <QPixmap>

#include "editor/AccessibleNames.h"
#include "editor/ColorButton.h"
#include "editor/FieldForm.h"
#include "editor/FormDialog.h"
#include "editor/ListDialogLayout.h"
#include "editor/Prompts.h"
#include "editor/ResourceUsers.h"
#include "editor/TaskEditor.h"

namespace autoscene::ui {

ColorsDialog::ColorsDialog(TaskEditor& editor, QWidget* parent)
    : QDialog(parent), editor_(editor), list_(new QListWidget) {
    setObjectName(QStringLiteral("ColorsDialog"));
    setWindowTitle(tr("颜色"));
    list_->setObjectName(QStringLiteral("listWidget_colors"));
    list_->setAccessibleName(tr("颜色"));
    layOutListDialog(
        *this, *list_,
        {{tr("编辑"), "pushButton_edit", [this] { editColor(list_->currentRow()); }},
         {tr("删除"), "pushButton_delete", [this] { deleteColor(list_->currentRow()); }}});
    connect(list_, &QListWidget::itemDoubleClicked, this,
            [this] { editColor(list_->currentRow()); });
    connect(&editor_, &TaskEditor::resourcesChanged, this, &ColorsDialog::refresh);
    refresh();
    resize(520, 420);
    nameControlsAfterText(*this);
}

void ColorsDialog::refresh() {
    const int row = list_->currentRow();
    list_->clear();
    for (const model::ColorRecord& color : editor_.document().colors) {
        QPixmap swatch(16, 16);
        swatch.fill(QColor::fromRgb(QRgb(color.color)));
        list_->addItem(new QListWidgetItem(
            QIcon(swatch),
            tr("%1    %2    相似度 %3").arg(color.name, color.displayText()).arg(color.sim)));
    }
    list_->setCurrentRow(std::min(row, list_->count() - 1));
}

void ColorsDialog::editColor(int row) {
    const auto& colors = editor_.document().colors;
    if (row < 0 || row >= int(colors.size())) {
        return;
    }
    model::ColorRecord copy = colors[size_t(row)];
    auto* form = new FieldForm(editor_.document());
    form->addField("name", copy.name, model::Ref::None);
    form->addField("sim", copy.sim, model::Ref::None);
    auto* button = new ColorButton;
    button->setRgb(copy.color);
    const qint64 shown = button->rgb();
    form->setLabel("color", tr("颜色"));
    form->addRow("color", button, [button, &copy, shown] {
        if (button->rgb() != shown) {
            copy.color = button->rgb();
        }
    });
    FormDialog dialog(form, tr("颜色"), this);
    if (dialog.exec() == QDialog::Accepted) {
        editor_.replaceColor(std::move(copy));
    }
}

void ColorsDialog::deleteColor(int row) {
    const auto& colors = editor_.document().colors;
    if (row < 0 || row >= int(colors.size())) {
        return;
    }
    const model::ColorRecord& color = colors[size_t(row)];
    const QStringList users = describeUsers(editor_.document(), model::Ref::Color, color.id);
    const QString question =
        users.isEmpty() ? tr("是否删除 %1?").arg(color.name)
                        : tr("%1 正在被以下条目使用:\n%2\n\n删除后这些条目将失效,是否删除?")
                              .arg(color.name, users.join(QLatin1Char('\n')));
    if (askToConfirm(this, question)) {
        editor_.removeColor(color.id);
    }
}

}  // namespace autoscene::ui
