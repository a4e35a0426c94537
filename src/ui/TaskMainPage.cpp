#include "ui/TaskMainPage.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/AccessibleNames.h"
#include "editor/Prompts.h"
#include "ui/DeviceListDialog.h"
#include "ui/HotKeyRegistrar.h"
#include "ui/LogTargetWindow.h"
#include "ui/SettingView.h"
#include "ui/WindowListDialog.h"

namespace autoscene::ui {

namespace {

constexpr int kTargetColumn = 0;
constexpr int kFirstVariableColumn = 1;
// The row's target, kept on its first cell.
constexpr int kWindowRole = Qt::UserRole;
constexpr int kSerialRole = Qt::UserRole + 1;

// A list of the saved names to pick one from; nothing when cancelled.
std::optional<QString> chooseName(QWidget* parent, const QStringList& names) {
    QDialog dialog(parent);
    dialog.setWindowTitle(TaskMainPage::tr("选择配置"));
    auto* list = new QListWidget;
    list->setObjectName(QStringLiteral("listWidget_saves"));
    list->setAccessibleName(dialog.windowTitle());
    list->addItems(names);
    list->setCurrentRow(0);
    QObject::connect(list, &QListWidget::itemActivated, &dialog, &QDialog::accept);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(list);
    layout->addWidget(okCancelButtons(dialog));
    nameControlsAfterText(dialog);
    if (dialog.exec() != QDialog::Accepted || !list->currentItem()) {
        return std::nullopt;
    }
    return list->currentItem()->text();
}

}  // namespace

TaskMainPage::TaskMainPage(AppConfig config, Desktop desktop, QWidget* parent)
    : QWidget(parent), config_(std::move(config)), desktop_(desktop) {
    setObjectName(QStringLiteral("TaskMainPage"));
    run_ = new RunControl(editor_, config_, desktop_, this);
    logWindow_ = new LogTargetWindow(this);
    table_ = new QTableWidget(0, 1);
    table_->setObjectName(QStringLiteral("tableWidget_targets"));
    table_->setAccessibleName(tr("运行目标"));
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);

    const struct {
        const char* objectName;
        QString text;
        void (TaskMainPage::*slot)();
    } buttons[] = {
        {"pushButton_save", tr("保存配置"), &TaskMainPage::saveConfiguration},
        {"pushButton_load", tr("加载配置"), &TaskMainPage::loadConfiguration},
        {"pushButton_sync", tr("一键同步"), &TaskMainPage::syncToAll},
        {"pushButton_settings", tr("设置"), nullptr},
        {"pushButton_start", tr("启动"), &TaskMainPage::start},
        {"pushButton_stop", tr("停止"), nullptr},
        {"pushButton_log", tr("日志"), nullptr},
        {"pushButton_window_list", tr("窗口列表"), &TaskMainPage::addTargets},
    };
    auto* row = new QHBoxLayout;
    for (const auto& entry : buttons) {
        auto* button = new QPushButton(entry.text, this);
        button->setObjectName(QString::fromLatin1(entry.objectName));
        if (entry.slot) {
            connect(button, &QPushButton::clicked, this, entry.slot);
        }
        row->addWidget(button);
    }
    connect(findChild<QPushButton*>(QStringLiteral("pushButton_stop")), &QPushButton::clicked, run_,
            &RunControl::stop);
    connect(findChild<QPushButton*>(QStringLiteral("pushButton_log")), &QPushButton::clicked,
            logWindow_, [this] {
                logWindow_->show();
                logWindow_->raise();
            });
    connect(findChild<QPushButton*>(QStringLiteral("pushButton_settings")), &QPushButton::clicked,
            this, [this] {
                SettingView view(editor_.document(), config_, this);
                if (view.exec() == QDialog::Accepted) {
                    TaskSetup changed = TaskSetup::of(editor_.document());
                    view.applyTo(changed);
                    editor_.changeSetup(std::move(changed), tr("修改设置"));
                    view.saveHotKeys();
                    if (hotKeys_) {
                        hotKeys_->registerAll();
                    }
                }
            });
    connect(
        &run_->feed(), &RunFeed::notesReady, this,
        [this] { logWindow_->addNotes(run_->feed().take()); }, Qt::QueuedConnection);
    connect(run_, &RunControl::stateChanged, this, &TaskMainPage::showRunState);
    if (desktop_.hotKeys) {
        hotKeys_ =
            new HotKeyRegistrar(*desktop_.hotKeys, config_, this, HotKeyRegistrar::Scope::TaskPage);
        connect(hotKeys_, &HotKeyRegistrar::startRequested, this, [this] {
            if (run_->state() == RunControl::State::Idle) {
                start();
            }
        });
        connect(hotKeys_, &HotKeyRegistrar::stopRequested, run_, &RunControl::stop);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(table_, 1);
    nameControlsAfterText(*this);
    resize(900, 480);
}

bool TaskMainPage::openTask(const QString& folder, QString* error) {
    if (!QFileInfo(QDir(folder).filePath(QStringLiteral("script.json"))).isFile()) {
        *error = tr("文件夹中没有 script.json");
        return false;
    }
    const model::OpenResult opened = editor_.open(folder);
    if (!opened) {
        *error = opened.error;
        return false;
    }
    folder_ = QFileInfo(folder).absoluteFilePath();
    const QString name = editor_.document().name;
    setWindowTitle(tr("任务页 - %1").arg(name.isEmpty() ? QDir(folder_).dirName() : name));
    table_->setRowCount(0);
    showColumns();
    if (hotKeys_) {
        hotKeys_->registerAll();
    }
    return true;
}

std::vector<int> TaskMainPage::variableColumns() const {
    std::vector<int> ids;
    for (const auto& variable : editor_.document().definitions) {
        if (variable->isConfig) {
            ids.push_back(variable->id);
        }
    }
    return ids;
}

void TaskMainPage::showColumns() {
    QStringList headers{tr("目标")};
    for (const auto& variable : editor_.document().definitions) {
        if (variable->isConfig) {
            headers << variable->name;
        }
    }
    table_->setColumnCount(int(headers.size()));
    table_->setHorizontalHeaderLabels(headers);
}

void TaskMainPage::addRow(const ConfiguredTarget& target) {
    const int row = table_->rowCount();
    table_->insertRow(row);
    auto* name = new QTableWidgetItem(target.isDevice() ? target.serial : target.title);
    name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    name->setData(kWindowRole, QVariant::fromValue(quint64(target.window)));
    name->setData(kSerialRole, target.serial);
    table_->setItem(row, kTargetColumn, name);
    const std::vector<int> ids = variableColumns();
    for (size_t column = 0; column < ids.size(); ++column) {
        const auto value = target.variables.find(ids[column]);
        QString text;
        if (value != target.variables.end()) {
            text = value->second;
        } else {
            for (const auto& variable : editor_.document().definitions) {
                if (variable->id == ids[column]) {
                    text = variable->value;  // the task's own start value
                }
            }
        }
        table_->setItem(row, kFirstVariableColumn + int(column), new QTableWidgetItem(text));
    }
}

RunConfiguration TaskMainPage::configuration() const {
    RunConfiguration configuration;
    const std::vector<int> ids = variableColumns();
    for (int row = 0; row < table_->rowCount(); ++row) {
        const QTableWidgetItem* name = table_->item(row, kTargetColumn);
        ConfiguredTarget target;
        target.serial = name->data(kSerialRole).toString();
        target.window = name->data(kWindowRole).toULongLong();
        target.title = target.isDevice() ? QString() : name->text();
        for (size_t column = 0; column < ids.size(); ++column) {
            target.variables[ids[column]] =
                table_->item(row, kFirstVariableColumn + int(column))->text();
        }
        configuration.targets.push_back(std::move(target));
    }
    return configuration;
}

void TaskMainPage::setConfiguration(const RunConfiguration& configuration) {
    table_->setRowCount(0);
    for (const ConfiguredTarget& target : configuration.targets) {
        addRow(target);
    }
}

void TaskMainPage::saveConfiguration() {
    const std::optional<QString> name = askForText(this, tr("输入名称"), {});
    if (!name) {
        return;
    }
    QString error;
    if (!ui::saveConfiguration(folder_, name->trimmed(), configuration(), &error)) {
        showNotice(this, tr("保存配置失败: %1").arg(error));
    }
}

void TaskMainPage::loadConfiguration() {
    const QStringList names = savedConfigurations(folder_);
    if (names.isEmpty()) {
        showNotice(this, tr("还没有保存任何配置"));
        return;
    }
    const std::optional<QString> name = chooseName(this, names);
    if (!name) {
        return;
    }
    QString error;
    const std::optional<RunConfiguration> loaded = ui::loadConfiguration(folder_, *name, &error);
    if (!loaded) {
        showNotice(this, tr("配置 %1 无法读取: %2").arg(*name, error));
        return;
    }
    setConfiguration(*loaded);
}

void TaskMainPage::syncToAll() {
    const int source = table_->currentRow();
    if (source < 0 || !askToConfirm(this, tr("将当前配置信息同步给所有设备"))) {
        return;
    }
    for (int row = 0; row < table_->rowCount(); ++row) {
        for (int column = kFirstVariableColumn; column < table_->columnCount(); ++column) {
            table_->item(row, column)->setText(table_->item(source, column)->text());
        }
    }
}

void TaskMainPage::addTargets() {
    const RunConfiguration current = configuration();
    const auto listed = [&](const ConfiguredTarget& wanted) {
        return std::any_of(current.targets.begin(), current.targets.end(), [&](const auto& t) {
            return t.isDevice() ? t.serial == wanted.serial : t.window == wanted.window;
        });
    };
    ConfiguredTarget target;
    if (editor_.document().settings.taskMode == int(model::TaskMode::AndroidDevice)) {
        DeviceListDialog dialog(run_->adb(), {}, this);
        if (!dialog.refresh() || dialog.exec() != QDialog::Accepted) {
            return;
        }
        for (const QString& serial : dialog.chosen()) {
            target.serial = serial;
            if (!listed(target)) {
                addRow(target);
            }
        }
        return;
    }
    if (!desktop_.backend) {
        return;
    }
    WindowListDialog dialog(*desktop_.backend, desktop_.picker, this);
    const std::optional<platform::WindowInfo> chosen =
        dialog.exec() == QDialog::Accepted ? dialog.chosen() : std::nullopt;
    if (chosen) {
        target.window = chosen->window;
        target.title = QString::fromStdString(chosen->title);
        if (!listed(target)) {
            addRow(target);
        }
    }
}

void TaskMainPage::start() {
    std::vector<engine::RunTarget> targets;
    for (const ConfiguredTarget& target : configuration().targets) {
        engine::RunTarget run;
        run.kind =
            target.isDevice() ? engine::TargetKind::AndroidDevice : engine::TargetKind::Window;
        run.window = target.window;
        run.serial = target.serial;
        run.variableOverrides = target.variables;
        // A window saved in another session is gone: its row cannot run.
        if (!target.isDevice() && !(desktop_.backend && desktop_.backend->isWindow(run.window))) {
            showNotice(this, tr("未发现指定窗口: %1").arg(target.title));
            return;
        }
        targets.push_back(std::move(run));
    }
    if (targets.empty()) {
        showNotice(this, tr("需要先选择目标窗口"));
        return;
    }
    run_->startOn(targets);
}

void TaskMainPage::showRunState(RunControl::State state) {
    const bool idle = state == RunControl::State::Idle;
    if (wasIdle_ && !idle) {
        logWindow_->clear();
    }
    wasIdle_ = idle;
    for (const char* name : {"pushButton_load", "pushButton_window_list", "pushButton_start"}) {
        findChild<QPushButton*>(QString::fromLatin1(name))->setEnabled(idle);
    }
    table_->setEnabled(idle);
}

void TaskMainPage::closeEvent(QCloseEvent* event) {
    if (run_->state() != RunControl::State::Idle) {
        showNotice(this, tr("任务正在运行中,请停止后任务再关闭"));
        event->ignore();
        return;
    }
    event->accept();
}

}  // namespace autoscene::ui
