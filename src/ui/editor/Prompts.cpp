#include "editor/Prompts.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include "editor/AccessibleNames.h"

namespace autoscene::ui {

namespace {

// Literal calls, so that lupdate files the texts under their context.
QString title() {
    return QCoreApplication::translate("Prompts", "提示");
}

QString okText() {
    return QCoreApplication::translate("Prompts", "确定");
}

QString cancelText() {
    return QCoreApplication::translate("Prompts", "取消");
}

}  // namespace

QString closeText() {
    return QCoreApplication::translate("Prompts", "关闭");
}

QDialogButtonBox* okCancelButtons(QDialog& dialog) {
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(okText(), QDialogButtonBox::AcceptRole);
    buttons->addButton(cancelText(), QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

void showNotice(QWidget* parent, const QString& text, const QString& boxTitle) {
    QMessageBox box(QMessageBox::Information, boxTitle.isEmpty() ? title() : boxTitle, text,
                    QMessageBox::NoButton, parent);
    box.addButton(okText(), QMessageBox::AcceptRole);
    nameControlsAfterText(box);
    box.exec();
}

bool askToConfirm(QWidget* parent, const QString& text) {
    QMessageBox box(QMessageBox::Question, title(), text, QMessageBox::NoButton, parent);
    QPushButton* yes = box.addButton(okText(), QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(cancelText(), QMessageBox::RejectRole));
    nameControlsAfterText(box);
    box.exec();
    return box.clickedButton() == yes;
}

int askChoice(QWidget* parent, const QString& boxTitle, const QString& text,
              const QStringList& buttons) {
    QMessageBox box(QMessageBox::Question, boxTitle, text, QMessageBox::NoButton, parent);
    QList<QAbstractButton*> added;
    for (const QString& button : buttons) {
        added << box.addButton(button, QMessageBox::ActionRole);
    }
    nameControlsAfterText(box);
    box.exec();
    return int(added.indexOf(box.clickedButton()));
}

bool askYesNo(QWidget* parent, const QString& text) {
    return askChoice(parent, title(), text,
                     {QCoreApplication::translate("Prompts", "是"),
                      QCoreApplication::translate("Prompts", "否")}) == 0;
}

std::optional<QString> askForText(QWidget* parent, const QString& prompt, const QString& initial) {
    QInputDialog dialog(parent);
    dialog.setWindowTitle(title());
    dialog.setLabelText(prompt);
    dialog.setTextValue(initial);
    dialog.setOkButtonText(okText());
    dialog.setCancelButtonText(cancelText());
    nameControlsAfterText(dialog);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.textValue();
}

}  // namespace autoscene::ui
