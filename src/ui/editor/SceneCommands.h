#pragma once
// Undoable changes to the task's own scene list; indexes count from the first own scene.

#include <QUndoCommand>

#include "model/EditorScene.h"

namespace autoscene::ui {

class TaskEditor;

class InsertSceneCommand : public QUndoCommand {
public:
    InsertSceneCommand(TaskEditor& editor, int index, model::EditorScene scene);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int index_;
    model::EditorScene scene_;  // held here while undone
};

class RemoveSceneCommand : public QUndoCommand {
public:
    RemoveSceneCommand(TaskEditor& editor, int index);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int index_;
    model::EditorScene scene_;  // held here while removed
};

class MoveSceneCommand : public QUndoCommand {
public:
    MoveSceneCommand(TaskEditor& editor, int from, int to);
    void redo() override { move(from_, to_); }
    void undo() override { move(to_, from_); }

private:
    void move(int from, int to);

    TaskEditor& editor_;
    int from_;
    int to_;
};

class RenameSceneCommand : public QUndoCommand {
public:
    RenameSceneCommand(TaskEditor& editor, int index, QString name);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    int index_;
    QString name_;  // the name the scene does not have now
};

}  // namespace autoscene::ui
