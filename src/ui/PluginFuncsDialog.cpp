#include "ui/PluginFuncsDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"

namespace autoscene::ui {

namespace {

QCheckBox* serviceBox(const char* objectName, const QString& text, bool ticked) {
    auto* box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(objectName));
    box->setChecked(ticked);
    return box;
}

}  // namespace

PluginFuncsDialog::PluginFuncsDialog(const plugins::BackgroundServices& services, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("PluginFuncsDialog"));
    setWindowTitle(tr("插件功能"));
    capture_ = serviceBox("checkBox_capture", tr("截屏"), services.capture);
    mouse_ = serviceBox("checkBox_mouse", tr("鼠标"), services.mouse);
    key_ = serviceBox("checkBox_key", tr("键盘"), services.key);
    input_ = serviceBox("checkBox_input", tr("输入"), services.input);
    wheel_ = serviceBox("checkBox_mousewheel", tr("滚轮"), services.wheel);

    QDialogButtonBox* buttons = okCancelButtons(*this);
    QPushButton* remove = buttons->addButton(tr("移除"), QDialogButtonBox::DestructiveRole);
    remove->setObjectName(QStringLiteral("pushButton_remove"));
    connect(remove, &QPushButton::clicked, this, [this] { done(kRemoved); });

    auto* layout = new QVBoxLayout(this);
    for (QCheckBox* box : {capture_, mouse_, key_, input_, wheel_}) {
        layout->addWidget(box);
    }
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
}

plugins::BackgroundServices PluginFuncsDialog::services() const {
    return {capture_->isChecked(), mouse_->isChecked(), key_->isChecked(), wheel_->isChecked(),
            input_->isChecked()};
}

}  // namespace autoscene::ui
