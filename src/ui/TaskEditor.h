#pragma once
// The task open in the main window: owns its document, makes the scene edits and saves it.
// Views observe `scenesChanged` and never keep a copy of the scenes.

#include <QObject>
#include <QString>

#include "model/TaskDocument.h"

namespace autoscene::ui {

class TaskEditor : public QObject {
    Q_OBJECT
public:
    // Rows of the scene list: the three fixed scenes, then the task's own.
    static constexpr int kFixedRows = 3;

    explicit TaskEditor(QObject* parent = nullptr) : QObject(parent) {}

    model::OpenResult open(const QString& folder);
    const model::TaskDocument& document() const { return document_; }
    model::TaskDocument& document() { return document_; }

    int sceneRows() const { return kFixedRows + int(document_.scenes.size()); }
    // Nothing for a row outside the list.
    model::EditorScene* sceneAt(int row);
    static bool isFixedRow(int row) { return row >= 0 && row < kFixedRows; }

    // The row of the copy, placed after the original; -1 for a fixed scene.
    int copyScene(int row);
    // False for a fixed scene or a name that is empty or taken.
    bool renameScene(int row, const QString& name);
    bool deleteScene(int row);

    bool save(QString* error = nullptr);
    // True after a failed save, until a save succeeds.
    bool saveFailed() const { return saveFailed_; }

signals:
    void scenesChanged();

private:
    model::EditorScene* ownScene(int row);
    QString freeCopyName(const QString& name) const;

    model::TaskDocument document_;
    bool saveFailed_ = false;
};

}  // namespace autoscene::ui
