#pragma once
// An undoable change of the task's settings (loop, target window, mode and the rest) and its
// plug-ins: the whole records are swapped, so undo gives back every field at once.

#include <QUndoCommand>

#include "model/TaskDocument.h"

namespace autoscene::ui {

class TaskEditor;

// What the settings dialog and the plug-in list edit: the settings record, the background
// plug-in and the action plug-ins' descriptions.
struct TaskSetup {
    model::TaskSettings settings;
    QString pluginFile;
    model::RawJson pluginServices;
    QStringList actionPluginFiles;

    static TaskSetup of(const model::TaskDocument& task) {
        return {task.settings, task.funcPluginFile, task.enabledPluginFunc, task.pluginFiles};
    }
};

class SettingsCommand : public QUndoCommand {
public:
    SettingsCommand(TaskEditor& editor, TaskSetup setup, const QString& text);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    TaskSetup other_;  // the version not in the document now
};

}  // namespace autoscene::ui
