#include "editor/PluginListDialog.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QListWidget>
#include <QUrl>

#include "editor/AccessibleNames.h"
#include "editor/ListDialogLayout.h"
#include "editor/Prompts.h"
#include "editor/TaskEditor.h"
#include "editor/TaskPlugins.h"
#include "plugins/PluginCall.h"

namespace autoscene::ui {

namespace {

QString failedText(const QString& path) {
    return PluginListDialog::tr("插件文件:%1加载失败").arg(path);
}

}  // namespace

PluginListDialog::PluginListDialog(TaskEditor& editor, QWidget* parent)
    : QDialog(parent), editor_(editor), list_(new QListWidget) {
    setObjectName(QStringLiteral("PluginListDialog"));
    setWindowTitle(tr("插件列表"));
    list_->setObjectName(QStringLiteral("listWidget_plugins"));
    list_->setAccessibleName(tr("插件列表"));
    layOutListDialog(
        *this, *list_,
        {{tr("加载插件"), "pushButton_load", [this] { choosePluginFile(); }},
         {tr("移除"), "pushButton_remove", [this] { removePlugin(list_->currentRow()); }},
         {tr("重新加载"), "pushButton_reload", [this] { reload(); }},
         {tr("查看插件"), "pushButton_show", [this] { showInFileManager(list_->currentRow()); }}});
    connect(&editor_, &TaskEditor::settingsChanged, this, [this] { refresh(); });
    refresh();
    resize(620, 400);
    nameControlsAfterText(*this);
}

void PluginListDialog::reload() {
    if (const QStringList failed = refresh(); !failed.isEmpty()) {
        showNotice(this, failed.join(QLatin1Char('\n')));
    }
}

QStringList PluginListDialog::refresh() {
    const int row = list_->currentRow();
    list_->clear();
    QStringList failed;
    for (const TaskPlugin& plugin : readTaskPlugins(editor_.document())) {
        QString text = QStringLiteral("%1    %2").arg(plugin.name(), plugin.file);
        if (!plugin.usable()) {
            text += QStringLiteral("    ") + tr("(加载失败)");
            failed << failedText(plugin.file);
        }
        list_->addItem(text);
    }
    list_->setCurrentRow(std::min(row, list_->count() - 1));
    return failed;
}

void PluginListDialog::choosePluginFile() {
    const QString path = QFileDialog::getOpenFileName(
        this, tr("选择插件"), editor_.document().folderPath, QStringLiteral("json Files (*.json)"));
    if (!path.isEmpty()) {
        addPluginFile(path);
    }
}

bool PluginListDialog::addPluginFile(const QString& path) {
    const model::TaskDocument& task = editor_.document();
    const QString file = taskRelativeFile(task, QFileInfo(path).absoluteFilePath());
    if (!readTaskPlugin(task, file).usable()) {
        showNotice(this, failedText(path));
        return false;
    }
    if (!task.pluginFiles.contains(file)) {
        changeList(task.pluginFiles + QStringList{file}, tr("加载插件"));
    }
    list_->setCurrentRow(int(task.pluginFiles.indexOf(file)));
    return true;
}

void PluginListDialog::removePlugin(int row) {
    const QStringList& files = editor_.document().pluginFiles;
    if (row < 0 || row >= files.size()) {
        return;
    }
    const QString name = readTaskPlugin(editor_.document(), files[row]).name();
    if (!askToConfirm(this,
                      tr("将要移除插件%1,如果任务中使用相关功能移除后将会导致异常！").arg(name))) {
        return;
    }
    QStringList remaining = files;
    remaining.removeAt(row);
    changeList(remaining, tr("移除插件 %1").arg(name));
}

void PluginListDialog::showInFileManager(int row) {
    const QStringList& files = editor_.document().pluginFiles;
    if (row >= 0 && row < files.size()) {
        const QString path = plugins::taskFilePath(editor_.document().folderPath, files[row]);
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
    }
}

void PluginListDialog::changeList(const QStringList& files, const QString& text) {
    TaskSetup setup = TaskSetup::of(editor_.document());
    setup.actionPluginFiles = files;
    editor_.changeSetup(std::move(setup), text);
}

}  // namespace autoscene::ui
