#include "ui/WindowInfoDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"

namespace autoscene::ui {

namespace {

// The largest window side X11 and Windows accept.
constexpr int kMaxSide = 32767;

QLineEdit* textField(const char* objectName, const QString& text, const QString& name) {
    auto* field = new QLineEdit(text);
    field->setObjectName(QString::fromLatin1(objectName));
    field->setAccessibleName(name);
    return field;
}

QSpinBox* sideField(const char* objectName, int value, const QString& name) {
    auto* field = new QSpinBox;
    field->setObjectName(QString::fromLatin1(objectName));
    field->setRange(1, kMaxSide);
    field->setValue(value);
    field->setAccessibleName(name);
    return field;
}

}  // namespace

WindowInfoDialog::WindowInfoDialog(const model::WindowInfo& info, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("WindowInfoDialog"));
    setWindowTitle(tr("查看修改窗口信息"));
    title_ = textField("lineEdit_title", info.title, tr("窗口标题"));
    fullMatch_ = new QCheckBox(tr("完全匹配标题"));
    fullMatch_->setObjectName(QStringLiteral("checkBox_fullmatch_title"));
    fullMatch_->setChecked(info.isFullmatchTitle);
    className_ = textField("lineEdit_class_name", info.className, tr("窗口类名"));
    childTitle_ = textField("lineEdit_child_title", info.childTitle, tr("子窗口标题"));
    childClassName_ = textField("lineEdit_child_class_name", info.childClassName, tr("子窗口类名"));
    modifySize_ = new QCheckBox(tr("运行时调整窗口大小"));
    modifySize_->setObjectName(QStringLiteral("checkBox_modify_size"));
    modifySize_->setChecked(info.modifySize);
    width_ = sideField("spinBox_width", info.width, tr("宽"));
    height_ = sideField("spinBox_height", info.height, tr("高"));

    auto* size = new QHBoxLayout;
    size->addWidget(width_);
    size->addWidget(new QLabel(QStringLiteral("x")));
    size->addWidget(height_);
    size->addStretch();
    auto* form = new QFormLayout;
    form->addRow(tr("窗口标题"), title_);
    form->addRow(QString(), fullMatch_);
    form->addRow(tr("窗口类名"), className_);
    form->addRow(tr("子窗口标题"), childTitle_);
    form->addRow(tr("子窗口类名"), childClassName_);
    auto* note =
        new QLabel(tr("注:如果使用后台键鼠失效或异常，可以尝试指定子窗口作为事件输入窗口"));
    note->setWordWrap(true);
    form->addRow(note);
    form->addRow(QString(), modifySize_);
    form->addRow(tr("窗口大小"), size);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(okCancelButtons(*this));
    nameControlsAfterText(*this);
    // The wrapped note asks for the height it needs at this width.
    setMinimumWidth(480);
    layout->setSizeConstraint(QLayout::SetMinimumSize);
}

model::WindowInfo WindowInfoDialog::info() const {
    model::WindowInfo info;
    info.title = title_->text();
    info.isFullmatchTitle = fullMatch_->isChecked();
    info.className = className_->text();
    info.childTitle = childTitle_->text();
    info.childClassName = childClassName_->text();
    info.modifySize = modifySize_->isChecked();
    info.width = width_->value();
    info.height = height_->value();
    return info;
}

void WindowInfoDialog::accept() {
    if (title_->text().isEmpty() && className_->text().isEmpty()) {
        showNotice(this, tr("请先选择窗口信息"));
        return;
    }
    QDialog::accept();
}

}  // namespace autoscene::ui
