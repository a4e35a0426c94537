#include "ui/WindowListDialog.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"

namespace autoscene::ui {

namespace {

// A click is answered within this, and the window's thread never waits for one.
constexpr int kPickPollMs = 30;

}  // namespace

WindowListDialog::WindowListDialog(platform::IDesktopBackend& backend,
                                   platform::IWindowPicker* picker, QWidget* parent)
    : QDialog(parent), backend_(backend), picker_(picker) {
    setObjectName(QStringLiteral("WindowListDialog"));
    setWindowTitle(tr("选择窗口"));
    list_ = new QListWidget;
    list_->setObjectName(QStringLiteral("listWidget_windows"));
    list_->setAccessibleName(tr("窗口"));
    for (const platform::WindowHandle window : backend.topLevelWindows()) {
        addWindow(window);
    }
    list_->setCurrentRow(0);

    QDialogButtonBox* buttons = okCancelButtons(*this);
    connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    if (picker_) {
        pickButton_ = new QPushButton(tr("点击目标窗口选择"));
        pickButton_->setObjectName(QStringLiteral("pushButton_pick_window"));
        pickButton_->setToolTip(tr("鼠标变为十字后点击目标窗口；右键或 Esc 取消"));
        connect(pickButton_, &QPushButton::clicked, this, &WindowListDialog::beginPick);
        pickPoll_ = new QTimer(this);
        pickPoll_->setInterval(kPickPollMs);
        connect(pickPoll_, &QTimer::timeout, this, &WindowListDialog::pollPick);
        layout->addWidget(pickButton_);
    }
    layout->addWidget(list_);
    layout->addWidget(buttons);
    nameControlsAfterText(*this);
    resize(520, 360);
}

WindowListDialog::~WindowListDialog() {
    if (pickPoll_ && pickPoll_->isActive()) {
        picker_->cancel();
    }
}

bool WindowListDialog::addWindow(platform::WindowHandle window) {
    platform::WindowInfo info = backend_.describe(window);
    if (info.window == 0) {
        return false;  // gone since it was listed
    }
    list_->addItem(
        tr("%1  [%2]  %3x%4")
            .arg(QString::fromStdString(info.title), QString::fromStdString(info.className))
            .arg(info.clientRect.width)
            .arg(info.clientRect.height));
    windows_.push_back(std::move(info));
    return true;
}

void WindowListDialog::beginPick() {
    if (!picker_->begin()) {
        showNotice(this, tr("鼠标正被其他程序占用，请从列表中选择"));
        return;
    }
    pickButton_->setEnabled(false);
    pickPoll_->start();
}

void WindowListDialog::pollPick() {
    const platform::WindowPick pick = picker_->poll();
    if (pick.state == platform::WindowPick::State::Waiting) {
        return;
    }
    pickPoll_->stop();
    pickButton_->setEnabled(true);
    if (pick.state == platform::WindowPick::State::Cancelled) {
        return;
    }
    const auto listed = std::find_if(windows_.begin(), windows_.end(),
                                     [&](const auto& info) { return info.window == pick.window; });
    if (listed != windows_.end()) {
        list_->setCurrentRow(int(listed - windows_.begin()));
        accept();
        return;
    }
    // Opened since the list was made, or not one a task can run on (this program's own).
    const auto candidates = backend_.topLevelWindows();
    if (std::find(candidates.begin(), candidates.end(), pick.window) == candidates.end() ||
        !addWindow(pick.window)) {
        showNotice(this, tr("不能选择该窗口，请选择其他程序的窗口"));
        return;
    }
    list_->setCurrentRow(list_->count() - 1);
    accept();
}

std::optional<platform::WindowInfo> WindowListDialog::chosen() const {
    const int row = list_->currentRow();
    if (row < 0 || row >= int(windows_.size())) {
        return std::nullopt;
    }
    return windows_[size_t(row)];
}

}  // namespace autoscene::ui
