#pragma once
// Undoable changes to the task's images, colours, originals and label model. Files are
// written before a command and stay when it is undone; pixels are never overwritten (a
// replaced image points at a new file), so undo and redo find the same pixels.

#include <QStringList>
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

class ReplaceImageCommand : public QUndoCommand {
public:
    ReplaceImageCommand(TaskEditor& editor, model::ImageRecord image, const QString& text);
    void redo() override { swap(); }
    void undo() override { swap(); }

private:
    void swap();

    TaskEditor& editor_;
    model::ImageRecord other_;  // the version not in the document now
};

class RemoveImageCommand : public QUndoCommand {
public:
    RemoveImageCommand(TaskEditor& editor, int id);
    void redo() override;
    void undo() override;

private:
    TaskEditor& editor_;
    int id_;
    size_t index_ = 0;
    model::ImageRecord image_;  // held here while removed
};

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
