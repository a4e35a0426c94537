#pragma once
// The action plug-ins of the task (its plugin_files): load a description, remove one, read
// them all again, show one in the file manager. Each change of the list is one undoable
// step of the task.

#include <QDialog>

class QListWidget;

namespace autoscene::ui {

class TaskEditor;

class PluginListDialog : public QDialog {
    Q_OBJECT
public:
    explicit PluginListDialog(TaskEditor& editor, QWidget* parent = nullptr);

    QListWidget& list() { return *list_; }
    // Adds a description file when it reads and its library loads; otherwise says so.
    bool addPluginFile(const QString& path);
    void removePlugin(int row);
    // Reads every description and loads every library again, naming those that fail.
    void reload();

private:
    // The failures, one line each.
    QStringList refresh();
    void choosePluginFile();
    void showInFileManager(int row);
    void changeList(const QStringList& files, const QString& text);

    TaskEditor& editor_;
    QListWidget* list_;
};

}  // namespace autoscene::ui
