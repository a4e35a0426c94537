#include "ui/RunView.h"

#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "engine/MVVariable.h"
#include "engine/RuntimeDefinitions.h"

namespace autoscene::ui {

namespace {

// Enough to read back through; a longer log only costs memory and layout time.
constexpr int kEventLines = 2000;

QWidget* titled(const QString& title, QWidget* content) {
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(title);
    label->setAccessibleName(title);
    layout->addWidget(label);
    layout->addWidget(content);
    content->setAccessibleName(title);
    return box;
}

}  // namespace

RunView::RunView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("RunView"));
    targets_ = new QTableWidget(0, 3);
    targets_->setObjectName(QStringLiteral("tableWidget_targets"));
    targets_->setHorizontalHeaderLabels({tr("目标"), tr("当前界面"), tr("已触发事件")});
    targets_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    targets_->horizontalHeader()->setStretchLastSection(true);
    targets_->verticalHeader()->hide();
    targets_->setEditTriggers(QAbstractItemView::NoEditTriggers);

    events_ = new QPlainTextEdit;
    events_->setObjectName(QStringLiteral("plainTextEdit_events"));
    events_->setReadOnly(true);
    events_->setMaximumBlockCount(kEventLines);

    definitions_ = new QTreeWidget;
    definitions_->setObjectName(QStringLiteral("treeWidget_variables"));
    definitions_->setHeaderLabels({tr("变量"), tr("值")});
    definitions_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);

    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(titled(tr("运行目标"), targets_));
    splitter->addWidget(titled(tr("已触发事件"), events_));
    splitter->addWidget(titled(tr("变量"), definitions_));
    splitter->setStretchFactor(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    setMinimumWidth(420);
}

void RunView::clear() {
    targets_->setRowCount(0);
    events_->clear();
    definitions_->clear();
    threads_.clear();
    fired_.clear();
}

int RunView::targetIndex(std::thread::id thread) {
    const auto found = std::find(threads_.begin(), threads_.end(), thread);
    if (found != threads_.end()) {
        return int(found - threads_.begin());
    }
    threads_.push_back(thread);
    fired_.push_back(0);
    const int row = targets_->rowCount();
    targets_->insertRow(row);
    targets_->setItem(row, 0, new QTableWidgetItem(tr("目标%1").arg(row + 1)));
    targets_->setItem(row, 1, new QTableWidgetItem);
    targets_->setItem(row, 2, new QTableWidgetItem(QStringLiteral("0")));
    return row;
}

void RunView::addNotes(const std::vector<RunFeed::Note>& notes) {
    QStringList lines;
    for (const RunFeed::Note& note : notes) {
        const int row = targetIndex(note.thread);
        const QString target = tr("目标%1").arg(row + 1);
        if (!note.target.isEmpty()) {
            targets_->item(row, 0)->setText(tr("%1 (%2)").arg(target, note.target));
            continue;
        }
        if (note.captureFailed) {
            lines << tr("%1: 截图失败").arg(target);
            continue;
        }
        targets_->item(row, 1)->setText(note.scene);
        if (note.event.isEmpty()) {
            continue;
        }
        targets_->item(row, 2)->setText(QString::number(++fired_[size_t(row)]));
        lines << QStringLiteral("%1 %2 › %3").arg(target, note.scene, note.event);
        for (const QString& result : note.results) {
            lines << QStringLiteral("    ") + result;
        }
    }
    if (!lines.isEmpty()) {
        // One append per batch keeps a fast run from re-laying the log out per line.
        events_->appendPlainText(lines.join(QLatin1Char('\n')));
    }
}

void RunView::showDefinitions(const engine::RuntimeDefinitions& definitions) {
    definitions_->clear();
    for (size_t index = 0; index < threads_.size(); ++index) {
        auto* target = new QTreeWidgetItem(definitions_, {tr("目标%1").arg(index + 1)});
        definitions.forEach([&](const engine::MVVariable& variable) {
            new QTreeWidgetItem(target, {variable.name(), variable.valueFor(threads_[index])});
        });
    }
    definitions_->expandAll();
}

}  // namespace autoscene::ui
