#include "ui/AutoRunner.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "model/TaskDocument.h"
#include "ui/MainWindow.h"
#include "ui/TaskMainPage.h"

namespace autoscene::ui {

AutoRunner::AutoRunner(AppConfig config, Desktop desktop, QWidget* parent)
    : QWidget(parent), config_(std::move(config)), desktop_(desktop) {
    setObjectName(QStringLiteral("AutoRunner"));
    setWindowTitle(tr("欢迎使用"));
    auto* heading = new QLabel(tr("欢迎使用"));
    QFont big = heading->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    heading->setFont(big);

    auto* create = new QPushButton(tr("新建任务"));
    create->setObjectName(QStringLiteral("pushButton_new"));
    auto* open = new QPushButton(tr("打开文件夹"));
    open->setObjectName(QStringLiteral("pushButton_open"));
    auto* page = new QPushButton(tr("在任务页运行"));
    page->setObjectName(QStringLiteral("pushButton_task_page"));
    recent_ = new QListWidget;
    recent_->setObjectName(QStringLiteral("listWidget_recent"));
    recent_->setAccessibleName(tr("最近的任务"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(create);
    layout->addWidget(open);
    layout->addWidget(page);
    layout->addWidget(new QLabel(tr("最近的任务")));
    layout->addWidget(recent_, 1);

    connect(create, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, tr("新建任务"));
        if (!folder.isEmpty()) {
            createTask(folder);
        }
    });
    connect(open, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, tr("打开文件夹"));
        if (!folder.isEmpty()) {
            openTask(folder);
        }
    });
    connect(page, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, tr("在任务页运行"));
        if (!folder.isEmpty()) {
            openTaskPage(folder);
        }
    });
    connect(recent_, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { openTask(item->text()); });

    fillRecent();
    nameControlsAfterText(*this);
    resize(config_.launcherSize().value_or(QSize(480, 400)));
}

void AutoRunner::fillRecent() {
    recent_->clear();
    for (const QString& folder : config_.recentTasks()) {
        if (QFileInfo(QDir(folder).filePath(QStringLiteral("script.json"))).isFile()) {
            recent_->addItem(folder);
        }
    }
}

MainWindow* AutoRunner::openTask(const QString& folder) {
    auto window = std::make_unique<MainWindow>(config_, desktop_);
    window->setAttribute(Qt::WA_DeleteOnClose);
    QString error;
    if (!window->openTask(folder, &error)) {
        showNotice(this, tr("无法打开任务 %1: %2").arg(folder, error));
        return nullptr;
    }
    config_.addRecentTask(QFileInfo(folder).absoluteFilePath());
    fillRecent();
    window->show();
    close();
    return window.release();
}

TaskMainPage* AutoRunner::openTaskPage(const QString& folder) {
    auto page = std::make_unique<TaskMainPage>(config_, desktop_);
    page->setAttribute(Qt::WA_DeleteOnClose);
    QString error;
    if (!page->openTask(folder, &error)) {
        showNotice(this, tr("无法打开任务 %1: %2").arg(folder, error));
        return nullptr;
    }
    page->show();
    close();
    return page.release();
}

MainWindow* AutoRunner::createTask(const QString& folder) {
    QString error;
    if (QFileInfo::exists(QDir(folder).filePath(QStringLiteral("script.json")))) {
        return openTask(folder);
    }
    if (!model::TaskDocument().saveTo(folder, &error)) {
        showNotice(this, tr("无法新建任务 %1: %2").arg(folder, error));
        return nullptr;
    }
    return openTask(folder);
}

void AutoRunner::closeEvent(QCloseEvent* event) {
    config_.setLauncherSize(size());
    event->accept();
}

}  // namespace autoscene::ui
