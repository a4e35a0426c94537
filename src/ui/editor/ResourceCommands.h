#pragma once
// Undoable changes to the task's images and colours: a record added, removed or replaced,
// found by id so that a command stays right whatever the list's order.

#include <QUndoCommand>
#include <optional>

#include "model/Resources.h"

namespace autoscene::ui {

class TaskEditor;

template <class Record>
class ResourceCommand : public QUndoCommand {
public:
    enum class Change { Add, Remove, Replace };

    // `record` is the one added or the new version; for a removal only its id counts.
    ResourceCommand(TaskEditor& editor, Change change, Record record, const QString& text);
    void redo() override;
    void undo() override;

private:
    std::vector<Record>& list();
    typename std::vector<Record>::iterator find(int id);

    TaskEditor& editor_;
    Change change_;
    Record held_;  // the version not in the document now
    size_t index_ = 0;
};

using ImageCommand = ResourceCommand<model::ImageRecord>;
using ColorCommand = ResourceCommand<model::ColorRecord>;

}  // namespace autoscene::ui
