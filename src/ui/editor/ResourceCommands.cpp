#include "editor/ResourceCommands.h"

#include <algorithm>
#include <type_traits>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

template <class Record>
void AddResourceCommand<Record>::redo() {
    model::TaskDocument& task = editor_.document();
    (task.*list_).push_back(record_);
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        task.imageRects.insert(record_.file, record_.rect);
    }
    editor_.announceResources();
}

template <class Record>
void AddResourceCommand<Record>::undo() {
    model::TaskDocument& task = editor_.document();
    std::erase_if(task.*list_, [this](const Record& r) { return r.id == record_.id; });
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        task.imageRects.remove(record_.file);
    }
    editor_.announceResources();
}

template class AddResourceCommand<model::ImageRecord>;
template class AddResourceCommand<model::ColorRecord>;
template class AddResourceCommand<model::OriginalImageRecord>;

namespace {

std::vector<model::ImageRecord>::iterator find(TaskEditor& editor, int id) {
    auto& list = editor.document().images;
    return std::find_if(list.begin(), list.end(), [&](const auto& i) { return i.id == id; });
}

}  // namespace

ReplaceImageCommand::ReplaceImageCommand(TaskEditor& editor, model::ImageRecord image,
                                         const QString& text)
    : editor_(editor), other_(std::move(image)) {
    setText(text);
}

void ReplaceImageCommand::swap() {
    std::swap(*find(editor_, other_.id), other_);
    editor_.announceResources();
}

RemoveImageCommand::RemoveImageCommand(TaskEditor& editor, int id) : editor_(editor), id_(id) {
    setText(TaskEditor::tr("删除图片 %1").arg(find(editor_, id_)->name));
}

void RemoveImageCommand::redo() {
    const auto at = find(editor_, id_);
    index_ = size_t(at - editor_.document().images.begin());
    image_ = std::move(*at);
    editor_.document().images.erase(at);
    editor_.announceResources();
}

void RemoveImageCommand::undo() {
    auto& list = editor_.document().images;
    list.insert(list.begin() + std::ptrdiff_t(index_), std::move(image_));
    editor_.announceResources();
}

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
