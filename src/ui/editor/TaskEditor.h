#pragma once
// The task open in a window: owns its document and its undo stack. Every change to the
// document is an undo command pushed here; views observe the change signals and never keep
// a copy of the scenes.

#include <QObject>
#include <QString>
#include <QUndoStack>
#include <memory>
#include <vector>

#include "editor/SettingsCommand.h"
#include "model/TaskDocument.h"

namespace autoscene::ui {

class TaskEditor : public QObject {
    Q_OBJECT
public:
    // Rows of the scene list: the three fixed scenes, then the task's own.
    static constexpr int kFixedRows = 3;

    explicit TaskEditor(QObject* parent = nullptr);

    // Opening starts a fresh history.
    model::OpenResult open(const QString& folder);
    const model::TaskDocument& document() const { return document_; }
    // For the commands and for settings that are not yet undoable.
    model::TaskDocument& document() { return document_; }
    QUndoStack& undoStack() { return undo_; }
    // True while the document differs from what was opened or last saved.
    bool isModified() const { return !undo_.isClean(); }

    int sceneRows() const { return kFixedRows + int(document_.scenes.size()); }
    // Nothing for a row outside the list.
    model::EditorScene* sceneAt(int row);
    static bool isFixedRow(int row) { return row >= 0 && row < kFixedRows; }

    // A new scene after `row` (at the top of the own scenes for a fixed row); its row, or -1
    // for a name that is empty or taken.
    int addScene(int row, const QString& name);
    // False for a fixed scene or a move past either end of the own scenes.
    bool moveScene(int row, int step);
    // The row of the copy, placed after the original; -1 for a fixed scene.
    int copyScene(int row);
    // False for a fixed scene or a name that is empty or taken.
    bool renameScene(int row, const QString& name);
    bool deleteScene(int row);

    // Events by their row in the event list: row 0 is the scene's identification event,
    // which can be changed but neither moved nor removed. Nothing outside the list.
    model::EditorEvent* eventAt(int sceneRow, int eventRow);
    int eventRows(int sceneRow);
    // An id no event of the task has yet.
    int freeEventId() const;
    // `row` from 1 to eventRows(); false when the scene or the row is not there.
    bool insertEvents(int sceneRow, int row, std::vector<model::EditorEvent> events,
                      const QString& text);
    // Rows from 1 on; the identification event stays.
    bool removeEvents(int sceneRow, std::vector<int> rows);
    bool moveEvent(int sceneRow, int from, int to);
    // Replaces the whole event (name, switch, conditions, actions) in one step.
    bool replaceEvent(int sceneRow, int row, model::EditorEvent event, const QString& text);

    // Adds the events of task JSON (the clipboard's form) at `row`, with the definitions,
    // images and colours they need, as one step; false with `error` set when the text holds
    // no events. Image files are copied from `sourceFolder`, the task they were copied from.
    bool pasteEvents(int sceneRow, int row, const QByteArray& json, QString* error = nullptr,
                     const QString& sourceFolder = {});

    // The new definition keeps its id.
    bool addDefinition(std::unique_ptr<model::EditorVariable> definition);
    // The definition with the same id is replaced; false when there is none.
    bool replaceDefinition(std::unique_ptr<model::EditorVariable> definition);
    bool removeDefinition(int id);

    // Records whose files are already written; each keeps its id. False while locked.
    bool addImage(model::ImageRecord image);
    bool addColor(model::ColorRecord color);
    bool addOriginal(model::OriginalImageRecord original);
    // Images and colours by id: the record replaced whole (a rename, new pixels in a new
    // file), or removed; false for an unknown id. Removing leaves the file for undo.
    bool replaceImage(model::ImageRecord image, const QString& text);
    bool removeImage(int id);
    bool replaceColor(model::ColorRecord color);
    bool removeColor(int id);
    // The label model the task's label items detect with, and its class names.
    bool changeModel(const QString& modelId, const QStringList& labelNames);

    // The task's settings replaced as one step; false while locked.
    bool changeSettings(model::TaskSettings settings, const QString& text);
    // The settings and the background plug-in replaced as one step; false while locked.
    bool changeSetup(TaskSetup setup, const QString& text);

    // While a run reads the document, every edit, undo and redo is refused.
    void setLocked(bool locked) { locked_ = locked; }
    bool isLocked() const { return locked_; }
    void undo();
    void redo();

    bool save(QString* error = nullptr);
    // True after a failed save, until a save succeeds.
    bool saveFailed() const { return saveFailed_; }

    // Emitted by the commands after they changed the document.
    void announceScenes() { emit scenesChanged(); }
    void announceEvents(int sceneRow) { emit eventsChanged(sceneRow); }
    void announceEvent(int sceneRow, int eventRow) { emit eventChanged(sceneRow, eventRow); }
    void announceDefinitions() { emit definitionsChanged(); }
    void announceSettings() { emit settingsChanged(); }
    void announceResources() { emit resourcesChanged(); }

signals:
    void scenesChanged();
    // Events added, removed or moved.
    void eventsChanged(int sceneRow);
    // One event changed in place.
    void eventChanged(int sceneRow, int eventRow);
    void definitionsChanged();
    void settingsChanged();
    // Images, colours or originals added, replaced or removed.
    void resourcesChanged();
    void modifiedChanged(bool modified);

private:
    // False (and the command dropped) while locked.
    bool push(QUndoCommand* command);
    model::EditorScene* ownScene(int row);
    QString freeCopyName(const QString& name) const;

    model::TaskDocument document_;
    QUndoStack undo_;
    bool saveFailed_ = false;
    bool locked_ = false;
};

}  // namespace autoscene::ui
