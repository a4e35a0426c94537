#pragma once
// Undoable changes to the task's definitions (var_list). Definitions are found by id, so a
// command stays right whatever the list's order.

#include <QUndoCommand>
#include <memory>

#include "model/Definitions.h"

namespace autoscene::ui {

class TaskEditor;

class AddDefinitionCommand : public QUndoCommand {
public:
    AddDefinitionCommand(TaskEditor& editor, std::unique_ptr<model::EditorVariable> definition);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int id_;
    std::unique_ptr<model::EditorVariable> definition_;  // held here while undone
};

class RemoveDefinitionCommand : public QUndoCommand {
public:
    RemoveDefinitionCommand(TaskEditor& editor, int id);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int id_;
    size_t index_ = 0;
    std::unique_ptr<model::EditorVariable> definition_;  // held here while removed
};

class ReplaceDefinitionCommand : public QUndoCommand {
public:
    ReplaceDefinitionCommand(TaskEditor& editor, std::unique_ptr<model::EditorVariable> definition);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    std::unique_ptr<model::EditorVariable> other_;  // the version not in the document now
};

}  // namespace autoscene::ui
