#include "ui/LoopModeDialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "model/TaskSettings.h"

namespace autoscene::ui {

LoopModeDialog::LoopModeDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("LoopModeDialog"));
    setWindowTitle(tr("选择运行模式"));
    order_ = new QRadioButton(modeName(int(model::LoopMode::Sequential)));
    order_->setObjectName(QStringLiteral("radioButton_order"));
    single_ = new QRadioButton(modeName(int(model::LoopMode::SingleEvent)));
    single_->setObjectName(QStringLiteral("radioButton_single"));
    order_->setChecked(true);

    QDialogButtonBox* buttons = okCancelButtons(*this);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(order_);
    layout->addWidget(single_);
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
}

int LoopModeDialog::mode() const {
    return int(single_->isChecked() ? model::LoopMode::SingleEvent : model::LoopMode::Sequential);
}

void LoopModeDialog::setMode(int mode) {
    (mode == int(model::LoopMode::SingleEvent) ? single_ : order_)->setChecked(true);
}

QString LoopModeDialog::modeName(int mode) {
    return mode == int(model::LoopMode::Sequential) ? tr("顺序模式") : tr("单事件模式");
}

}  // namespace autoscene::ui
