#pragma once
// Undoable changes to a scene's events. Rows are those of the event list: row 0 is the
// identification event, so the scene's own events start at row 1.

#include <QUndoCommand>
#include <utility>
#include <vector>

#include "model/EditorScene.h"

namespace autoscene::ui {

class TaskEditor;

class InsertEventsCommand : public QUndoCommand {
public:
    InsertEventsCommand(TaskEditor& editor, int sceneRow, int row,
                        std::vector<model::EditorEvent> events, const QString& text);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int sceneRow_;
    int row_;
    std::vector<model::EditorEvent> events_;  // held here while undone
};

class RemoveEventsCommand : public QUndoCommand {
public:
    // `rows` ascending and unique.
    RemoveEventsCommand(TaskEditor& editor, int sceneRow, std::vector<int> rows);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int sceneRow_;
    std::vector<int> rows_;
    std::vector<model::EditorEvent> removed_;  // in the order of rows_
};

class MoveEventCommand : public QUndoCommand {
public:
    MoveEventCommand(TaskEditor& editor, int sceneRow, int from, int to);
    void redo() override { move(from_, to_); }
    void undo() override { move(to_, from_); }

private:
    void move(int from, int to);

    TaskEditor& editor_;
    int sceneRow_;
    int from_;
    int to_;
};

// Renaming, switching on and off and every change made in the event editor.
class ReplaceEventCommand : public QUndoCommand {
public:
    ReplaceEventCommand(TaskEditor& editor, int sceneRow, int row, model::EditorEvent event,
                        const QString& text);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    int sceneRow_;
    int row_;
    model::EditorEvent other_;  // the version not in the document now
};

}  // namespace autoscene::ui
