#include "editor/ResourceCommands.h"

#include <algorithm>
#include <type_traits>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

template <class Record>
ResourceCommand<Record>::ResourceCommand(TaskEditor& editor, Change change, Record record,
                                         const QString& text)
    : QUndoCommand(text), editor_(editor), change_(change), held_(std::move(record)) {}

template <>
std::vector<model::ImageRecord>& ResourceCommand<model::ImageRecord>::list() {
    return editor_.document().images;
}

template <>
std::vector<model::ColorRecord>& ResourceCommand<model::ColorRecord>::list() {
    return editor_.document().colors;
}

template <>
std::vector<model::OriginalImageRecord>& ResourceCommand<model::OriginalImageRecord>::list() {
    return editor_.document().originals;
}

template <class Record>
typename std::vector<Record>::iterator ResourceCommand<Record>::find(int id) {
    return std::find_if(list().begin(), list().end(), [id](const Record& r) { return r.id == id; });
}

// The task remembers each image's rectangle by its file as well.
template <class Record>
void ResourceCommand<Record>::insertAt(size_t index) {
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        editor_.document().imageRects.insert(held_.file, held_.rect);
    }
    list().insert(list().begin() + std::ptrdiff_t(std::min(index, list().size())), held_);
}

template <class Record>
void ResourceCommand<Record>::eraseHeld() {
    const auto at = find(held_.id);
    index_ = size_t(at - list().begin());
    held_ = *at;
    list().erase(at);
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        editor_.document().imageRects.remove(held_.file);
    }
}

template <class Record>
void ResourceCommand<Record>::swapHeld() {
    Record& current = *find(held_.id);
    std::swap(current, held_);
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        editor_.document().imageRects.remove(held_.file);
        editor_.document().imageRects.insert(current.file, current.rect);
    }
}

template <class Record>
void ResourceCommand<Record>::redo() {
    switch (change_) {
        case Change::Add:
            insertAt(list().size());
            break;
        case Change::Remove:
            eraseHeld();
            break;
        case Change::Replace:
            swapHeld();
            break;
    }
    editor_.announceResources();
}

template <class Record>
void ResourceCommand<Record>::undo() {
    switch (change_) {
        case Change::Add:
            eraseHeld();
            break;
        case Change::Remove:
            insertAt(index_);
            break;
        case Change::Replace:
            swapHeld();
            break;
    }
    editor_.announceResources();
}

template class ResourceCommand<model::ImageRecord>;
template class ResourceCommand<model::ColorRecord>;
template class ResourceCommand<model::OriginalImageRecord>;

ModelCommand::ModelCommand(TaskEditor& editor, QString modelId, QStringList labelNames)
    : editor_(editor), modelId_(std::move(modelId)), labelNames_(std::move(labelNames)) {
    setText(TaskEditor::tr("选择模型 %1").arg(modelId_));
}

void ModelCommand::swap() {
    model::TaskDocument& task = editor_.document();
    std::swap(task.modelId, modelId_);
    QStringList current;
    for (int id = 0; const auto name = task.labelName(id); ++id) {
        current << *name;
    }
    task.setLabelNames(labelNames_);
    labelNames_ = current;
    editor_.announceSettings();
}

}  // namespace autoscene::ui
