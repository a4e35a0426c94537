#pragma once
// Undoable changes to the task's template images (image_list), found by id, and to its label
// model. Pixels are never overwritten: a replacement points the record at a new file, and
// undo points it back.

#include <QStringList>
#include <QUndoCommand>

#include "model/Resources.h"

namespace autoscene::ui {

class TaskEditor;

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
