#pragma once
// Undoable changes to the task's images, colours, originals and label model. A record is
// added, removed or replaced whole, found by id so that a command stays right whatever the
// list's order. Files are written before a command and stay when it is undone; pixels are
// never overwritten (a replaced image points at a new file), so undo and redo find the
// same pixels.

#include <QStringList>
#include <QUndoCommand>
#include <vector>

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
    void insertAt(size_t index);
    void eraseHeld();
    void swapHeld();

    TaskEditor& editor_;
    Change change_;
    Record held_;  // the version not in the document now
    size_t index_ = 0;
};

using ImageCommand = ResourceCommand<model::ImageRecord>;
using ColorCommand = ResourceCommand<model::ColorRecord>;
using OriginalCommand = ResourceCommand<model::OriginalImageRecord>;

// The model id and the class names read from its names file.
class ModelCommand : public QUndoCommand {
public:
    ModelCommand(TaskEditor& editor, QString modelId, QStringList labelNames);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    QString modelId_;  // the choice not in the document now
    QStringList labelNames_;
};

}  // namespace autoscene::ui
