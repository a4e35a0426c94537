#include "ui/LogTargetWindow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/AccessibleNames.h"

namespace autoscene::ui {

namespace {

// Per target: enough to read back through; more only costs memory and layout time.
constexpr size_t kLinesPerTarget = 2000;

const QString kShownRowStyle = QStringLiteral("background-color: green;");

}  // namespace

LogTargetWindow::LogTargetWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("LogTargetWindow"));
    setWindowTitle(tr("日志"));
    auto* current = new QLabel(tr("当前日志窗口:"));
    shownName_ = new QLabel;
    shownName_->setObjectName(QStringLiteral("label_log_target"));
    auto* close = new QPushButton(tr("关闭"));
    close->setObjectName(QStringLiteral("pushButton_close"));
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    auto* header = new QHBoxLayout;
    header->addWidget(current);
    header->addWidget(shownName_, 1);
    header->addWidget(close);

    auto* rowsBox = new QWidget;
    rows_ = new QVBoxLayout(rowsBox);
    rows_->addStretch();
    auto* rowsArea = new QScrollArea;
    rowsArea->setObjectName(QStringLiteral("scrollArea_targets"));
    rowsArea->setAccessibleName(tr("运行目标"));
    rowsArea->setWidget(rowsBox);
    rowsArea->setWidgetResizable(true);
    rowsArea->setFixedWidth(220);
    rowsArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    log_ = new QPlainTextEdit;
    log_->setObjectName(QStringLiteral("plainTextEdit_log"));
    log_->setAccessibleName(tr("日志"));
    log_->setReadOnly(true);
    log_->setMaximumBlockCount(int(kLinesPerTarget));

    auto* body = new QHBoxLayout;
    body->addWidget(rowsArea);
    body->addWidget(log_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(header);
    layout->addLayout(body, 1);
    nameControlsAfterText(*this);
    resize(760, 420);
}

void LogTargetWindow::clear() {
    for (Target& target : targets_) {
        delete target.row;
    }
    targets_.clear();
    shown_ = -1;
    shownName_->clear();
    log_->clear();
}

LogTargetWindow::Target& LogTargetWindow::targetOf(std::thread::id thread) {
    const auto found = std::find_if(targets_.begin(), targets_.end(),
                                    [&](const Target& target) { return target.thread == thread; });
    if (found != targets_.end()) {
        return *found;
    }
    const int index = int(targets_.size());
    auto* row = new QPushButton(tr("目标%1").arg(index + 1));
    row->setObjectName(QStringLiteral("pushButton_target_%1").arg(index + 1));
    connect(row, &QPushButton::clicked, this, [this, index] { showTarget(index); });
    rows_->insertWidget(index, row);
    targets_.push_back({thread, row->text(), {}, row});
    if (shown_ < 0) {
        showTarget(index);
    }
    return targets_.back();
}

QString LogTargetWindow::lineOf(const RunFeed::Note& note) {
    const QString time = note.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    if (note.captureFailed) {
        return tr("%1 截图失败").arg(time);
    }
    if (note.event.isEmpty()) {
        return tr("%1 进入界面 %2").arg(time, note.scene);
    }
    QString line = tr("%1 %2 › %3").arg(time, note.scene, note.event);
    for (const QString& result : note.results) {
        line += QStringLiteral("\n    ") + result;
    }
    return line;
}

void LogTargetWindow::addNotes(const std::vector<RunFeed::Note>& notes) {
    QStringList shownLines;
    for (const RunFeed::Note& note : notes) {
        Target& target = targetOf(note.thread);
        const bool shown = &target == &targets_[size_t(shown_)];
        if (!note.target.isEmpty()) {
            target.name = tr("%1 (%2)").arg(target.row->text(), note.target);
            target.row->setText(target.name);
            target.row->setAccessibleName(target.name);
            if (shown) {
                shownName_->setText(target.name);
            }
            continue;
        }
        QString line = lineOf(note);
        if (shown) {
            shownLines << line;
        }
        target.lines.push_back(std::move(line));
        if (target.lines.size() > kLinesPerTarget) {
            target.lines.pop_front();
        }
    }
    if (!shownLines.isEmpty()) {
        // One append per batch keeps a fast run from re-laying the log out per line.
        log_->appendPlainText(shownLines.join(QLatin1Char('\n')));
    }
}

void LogTargetWindow::showTarget(int index) {
    if (index < 0 || index >= int(targets_.size())) {
        return;
    }
    if (shown_ >= 0) {
        targets_[size_t(shown_)].row->setStyleSheet({});
    }
    shown_ = index;
    const Target& target = targets_[size_t(index)];
    target.row->setStyleSheet(kShownRowStyle);
    shownName_->setText(target.name);
    shownName_->setAccessibleName(target.name);
    log_->setPlainText(QStringList(target.lines.begin(), target.lines.end()).join('\n'));
}

QString LogTargetWindow::shownText() const {
    return log_->toPlainText();
}

}  // namespace autoscene::ui
