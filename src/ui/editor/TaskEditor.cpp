#include "editor/TaskEditor.h"

#include <algorithm>

#include "editor/DefinitionCommands.h"
#include "editor/EventClipboard.h"
#include "editor/EventCommands.h"
#include "editor/ResourceCommands.h"
#include "editor/SceneCommands.h"
#include "editor/SettingsCommand.h"

namespace autoscene::ui {

TaskEditor::TaskEditor(QObject* parent) : QObject(parent) {
    connect(&undo_, &QUndoStack::cleanChanged, this,
            [this](bool clean) { emit modifiedChanged(!clean); });
}

model::OpenResult TaskEditor::open(const QString& folder) {
    model::OpenResult result = document_.openFolder(folder);
    saveFailed_ = false;
    undo_.clear();
    emit scenesChanged();
    emit definitionsChanged();
    return result;
}

model::EditorScene* TaskEditor::sceneAt(int row) {
    switch (row) {
        case 0:
            return &document_.commonEvent;
        case 1:
            return &document_.commonEventLow;
        case 2:
            return &document_.defaultScene;
        default:
            return ownScene(row);
    }
}

model::EditorScene* TaskEditor::ownScene(int row) {
    const int index = row - kFixedRows;
    if (index < 0 || index >= int(document_.scenes.size())) {
        return nullptr;
    }
    return &document_.scenes[size_t(index)];
}

QString TaskEditor::freeCopyName(const QString& name) const {
    for (int n = 1;; ++n) {
        QString candidate = QStringLiteral("%1(%2)").arg(name).arg(n);
        if (document_.isSceneNameFree(candidate)) {
            return candidate;
        }
    }
}

int TaskEditor::copyScene(int row) {
    const model::EditorScene* original = ownScene(row);
    if (!original) {
        return -1;
    }
    model::EditorScene copy = *original;
    copy.name = freeCopyName(original->name);
    return push(new InsertSceneCommand(*this, row - kFixedRows + 1, std::move(copy))) ? row + 1
                                                                                      : -1;
}

int TaskEditor::addScene(int row, const QString& name) {
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || !document_.isSceneNameFree(trimmed)) {
        return -1;
    }
    const int at = std::clamp(row + 1, kFixedRows, sceneRows());
    return push(new InsertSceneCommand(*this, at - kFixedRows, model::EditorScene(trimmed))) ? at
                                                                                             : -1;
}

bool TaskEditor::moveScene(int row, int step) {
    if (!ownScene(row) || !ownScene(row + step)) {
        return false;
    }
    return push(new MoveSceneCommand(*this, row - kFixedRows, row + step - kFixedRows));
}

bool TaskEditor::renameScene(int row, const QString& name) {
    model::EditorScene* scene = ownScene(row);
    const QString trimmed = name.trimmed();
    if (!scene || trimmed.isEmpty()) {
        return false;
    }
    if (trimmed == scene->name) {
        return true;
    }
    if (!document_.isSceneNameFree(trimmed)) {
        return false;
    }
    return push(new RenameSceneCommand(*this, row - kFixedRows, trimmed));
}

bool TaskEditor::deleteScene(int row) {
    if (!ownScene(row)) {
        return false;
    }
    return push(new RemoveSceneCommand(*this, row - kFixedRows));
}

model::EditorEvent* TaskEditor::eventAt(int sceneRow, int eventRow) {
    model::EditorScene* scene = sceneAt(sceneRow);
    if (!scene || eventRow < 0 || eventRow > int(scene->events.size())) {
        return nullptr;
    }
    return eventRow == 0 ? &scene->sceneEvent : &scene->events[size_t(eventRow - 1)];
}

int TaskEditor::eventRows(int sceneRow) {
    const model::EditorScene* scene = sceneAt(sceneRow);
    return scene ? 1 + int(scene->events.size()) : 0;
}

int TaskEditor::freeEventId() const {
    int highest = 0;
    model::TaskDocument::forEachScene(document_, [&](const model::EditorScene& scene) {
        for (const model::EditorEvent* event : scene.allEvents()) {
            highest = std::max(highest, event->id);
        }
    });
    return highest + 1;
}

bool TaskEditor::insertEvents(int sceneRow, int row, std::vector<model::EditorEvent> events,
                              const QString& text) {
    if (events.empty() || row < 1 || row > eventRows(sceneRow)) {
        return false;
    }
    return push(new InsertEventsCommand(*this, sceneRow, row, std::move(events), text));
}

bool TaskEditor::removeEvents(int sceneRow, std::vector<int> rows) {
    const int count = eventRows(sceneRow);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.empty() || rows.front() < 1 || rows.back() >= count) {
        return false;
    }
    return push(new RemoveEventsCommand(*this, sceneRow, std::move(rows)));
}

bool TaskEditor::moveEvent(int sceneRow, int from, int to) {
    const int count = eventRows(sceneRow);
    if (from == to || from < 1 || to < 1 || from >= count || to >= count) {
        return false;
    }
    return push(new MoveEventCommand(*this, sceneRow, from, to));
}

bool TaskEditor::replaceEvent(int sceneRow, int row, model::EditorEvent event,
                              const QString& text) {
    if (!eventAt(sceneRow, row)) {
        return false;
    }
    return push(new ReplaceEventCommand(*this, sceneRow, row, std::move(event), text));
}

bool TaskEditor::addDefinition(std::unique_ptr<model::EditorVariable> definition) {
    return push(new AddDefinitionCommand(*this, std::move(definition)));
}

bool TaskEditor::addImage(model::ImageRecord image) {
    const QString text = tr("添加图片 %1").arg(image.name);
    return push(new ImageCommand(*this, ImageCommand::Change::Add, std::move(image), text));
}

bool TaskEditor::addColor(model::ColorRecord color) {
    const QString text = tr("添加颜色 %1").arg(color.name);
    return push(new ColorCommand(*this, ColorCommand::Change::Add, std::move(color), text));
}

bool TaskEditor::addOriginal(model::OriginalImageRecord original) {
    const QString text = tr("添加原图 %1").arg(original.name);
    return push(
        new OriginalCommand(*this, OriginalCommand::Change::Add, std::move(original), text));
}

bool TaskEditor::replaceDefinition(std::unique_ptr<model::EditorVariable> definition) {
    if (!document_.definition(definition->id)) {
        return false;
    }
    return push(new ReplaceDefinitionCommand(*this, std::move(definition)));
}

bool TaskEditor::removeDefinition(int id) {
    if (!document_.definition(id)) {
        return false;
    }
    return push(new RemoveDefinitionCommand(*this, id));
}

bool TaskEditor::replaceImage(model::ImageRecord image, const QString& text) {
    if (!document_.image(image.id)) {
        return false;
    }
    return push(new ImageCommand(*this, ImageCommand::Change::Replace, std::move(image), text));
}

bool TaskEditor::removeImage(int id) {
    const model::ImageRecord* image = document_.image(id);
    if (!image) {
        return false;
    }
    const QString text = tr("删除图片 %1").arg(image->name);
    return push(new ImageCommand(*this, ImageCommand::Change::Remove, *image, text));
}

bool TaskEditor::changeModel(const QString& modelId, const QStringList& labelNames) {
    return push(new ModelCommand(*this, modelId, labelNames));
}

bool TaskEditor::changeSettings(model::TaskSettings settings, const QString& text) {
    TaskSetup setup = TaskSetup::of(document_);
    setup.settings = std::move(settings);
    return changeSetup(std::move(setup), text);
}

bool TaskEditor::changeSetup(TaskSetup setup, const QString& text) {
    return push(new SettingsCommand(*this, std::move(setup), text));
}

bool TaskEditor::push(QUndoCommand* command) {
    if (locked_) {
        delete command;
        return false;
    }
    undo_.push(command);
    return true;
}

void TaskEditor::undo() {
    if (!locked_) {
        undo_.undo();
    }
}

void TaskEditor::redo() {
    if (!locked_) {
        undo_.redo();
    }
}

bool TaskEditor::pasteEvents(int sceneRow, int row, const QByteArray& json, QString* error,
                             const QString& sourceFolder) {
    if (locked_ || row < 1 || row > eventRows(sceneRow)) {
        return false;
    }
    PastedEvents pasted = eventsFromTaskJson(json, document_, freeEventId());
    if (pasted.error.isEmpty()) {
        pasted.error = copyImageFiles(pasted, sourceFolder, document_);
    }
    if (!pasted.error.isEmpty()) {
        if (error) {
            *error = pasted.error;
        }
        return false;
    }
    undo_.beginMacro(tr("粘贴 %n 个事件", nullptr, int(pasted.events.size())));
    for (auto& definition : pasted.definitions) {
        addDefinition(std::move(definition));
    }
    for (auto& image : pasted.images) {
        addImage(std::move(image.record));
    }
    for (auto& color : pasted.colors) {
        addColor(std::move(color));
    }
    insertEvents(sceneRow, row, std::move(pasted.events), QString());
    undo_.endMacro();
    return true;
}

bool TaskEditor::replaceColor(model::ColorRecord color) {
    if (!document_.color(color.id)) {
        return false;
    }
    const QString text = tr("修改颜色 %1").arg(color.name);
    return push(new ColorCommand(*this, ColorCommand::Change::Replace, std::move(color), text));
}

bool TaskEditor::removeColor(int id) {
    const model::ColorRecord* color = document_.color(id);
    if (!color) {
        return false;
    }
    const QString text = tr("删除颜色 %1").arg(color->name);
    return push(new ColorCommand(*this, ColorCommand::Change::Remove, *color, text));
}

bool TaskEditor::save(QString* error) {
    saveFailed_ = !document_.save(error);
    if (!saveFailed_) {
        undo_.setClean();
    }
    return !saveFailed_;
}

}  // namespace autoscene::ui
