#pragma once
// Undoable additions to the task's images, colours and originals. The files they name are
// written before the command and stay when it is undone: files are never overwritten, so a
// redo finds the same pixels.

#include <QUndoCommand>
#include <algorithm>
#include <vector>

#include "model/TaskDocument.h"

namespace autoscene::ui {

class TaskEditor;

// Records are found by id, so the command stays right whatever the list's order.
template <class Record>
class AddResourceCommand : public QUndoCommand {
public:
    using List = std::vector<Record> model::TaskDocument::*;

    AddResourceCommand(TaskEditor& editor, List list, Record record, const QString& text)
        : QUndoCommand(text), editor_(editor), list_(list), record_(std::move(record)) {}
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    List list_;
    Record record_;
};

}  // namespace autoscene::ui
