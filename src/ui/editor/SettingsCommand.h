#pragma once
// An undoable change of the task's settings (loop, target window, mode and the rest): the
// whole settings record is swapped, so undo gives back every field at once.

#include <QUndoCommand>

#include "model/TaskSettings.h"

namespace autoscene::ui {

class TaskEditor;

class SettingsCommand : public QUndoCommand {
public:
    SettingsCommand(TaskEditor& editor, model::TaskSettings settings, const QString& text);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    model::TaskSettings other_;  // the version not in the document now
};

}  // namespace autoscene::ui
