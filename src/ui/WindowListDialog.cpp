#include "ui/WindowListDialog.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"

namespace autoscene::ui {

WindowListDialog::WindowListDialog(platform::IDesktopBackend& backend, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("WindowListDialog"));
    setWindowTitle(tr("选择窗口"));
    list_ = new QListWidget;
    list_->setObjectName(QStringLiteral("listWidget_windows"));
    list_->setAccessibleName(tr("窗口"));
    for (const platform::WindowHandle window : backend.topLevelWindows()) {
        platform::WindowInfo info = backend.describe(window);
        if (info.window == 0) {
            continue;  // gone since it was listed
        }
        list_->addItem(
            tr("%1  [%2]  %3x%4")
                .arg(QString::fromStdString(info.title), QString::fromStdString(info.className))
                .arg(info.clientRect.width)
                .arg(info.clientRect.height));
        windows_.push_back(std::move(info));
    }
    list_->setCurrentRow(0);

    QDialogButtonBox* buttons = okCancelButtons(*this);
    connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
    resize(520, 360);
}

std::optional<platform::WindowInfo> WindowListDialog::chosen() const {
    const int row = list_->currentRow();
    if (row < 0 || row >= int(windows_.size())) {
        return std::nullopt;
    }
    return windows_[size_t(row)];
}

}  // namespace autoscene::ui
