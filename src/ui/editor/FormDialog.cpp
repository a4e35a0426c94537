#include "editor/FormDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/FieldForm.h"
#include "editor/ItemCatalog.h"
#include "editor/Prompts.h"

namespace autoscene::ui {

FormDialog::FormDialog(FieldForm* form, const QString& title, QWidget* parent)
    : QDialog(parent), form_(form), problems_(new QLabel) {
    setWindowTitle(title);
    setObjectName(QStringLiteral("FormDialog"));
    // Long forms scroll rather than grow past a small screen.
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(form_);
    if (form_->paths().isEmpty()) {
        form_->addWideRow(new QLabel(tr("此项没有需要设置的内容")));
    }
    problems_->setObjectName(QStringLiteral("label_problems"));
    problems_->setStyleSheet(QStringLiteral("color: #c00000;"));
    problems_->setWordWrap(true);
    problems_->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(problems_);
    layout->addWidget(okCancelButtons(*this));
    const int height = form_->sizeHint().height() + 90;
    resize(qMax(440, form_->sizeHint().width() + 40), qMin(height, 700));
    nameControlsAfterText(*this);
}

QString FormDialog::shownProblems() const {
    return problems_->isHidden() ? QString() : problems_->text();
}

void FormDialog::accept() {
    const QStringList problems = form_->problems();
    if (!problems.isEmpty()) {
        problems_->setText(problems.join(QLatin1Char('\n')));
        problems_->setAccessibleName(problems_->text());
        problems_->show();
        return;
    }
    form_->apply();
    QDialog::accept();
}

bool editItem(QWidget* parent, const model::TaskDocument& task, model::IEditorItem& item) {
    auto* form = new FieldForm(task);
    addItemFields(*form, item, task);
    FormDialog dialog(form, itemFormTitle(item), parent);
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace autoscene::ui
