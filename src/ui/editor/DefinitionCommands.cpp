#include "editor/DefinitionCommands.h"

#include <algorithm>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

namespace {

std::vector<std::unique_ptr<model::EditorVariable>>::iterator find(TaskEditor& editor, int id) {
    auto& list = editor.document().definitions;
    return std::find_if(list.begin(), list.end(), [&](const auto& d) { return d->id == id; });
}

}  // namespace

AddDefinitionCommand::AddDefinitionCommand(TaskEditor& editor,
                                           std::unique_ptr<model::EditorVariable> definition)
    : editor_(editor), id_(definition->id), definition_(std::move(definition)) {
    setText(TaskEditor::tr("添加变量 %1").arg(definition_->name));
}

void AddDefinitionCommand::redo() {
    editor_.document().definitions.push_back(std::move(definition_));
    editor_.announceDefinitions();
}

void AddDefinitionCommand::undo() {
    const auto at = find(editor_, id_);
    definition_ = std::move(*at);
    editor_.document().definitions.erase(at);
    editor_.announceDefinitions();
}

RemoveDefinitionCommand::RemoveDefinitionCommand(TaskEditor& editor, int id)
    : editor_(editor), id_(id) {
    setText(TaskEditor::tr("删除变量 %1").arg((*find(editor_, id_))->name));
}

void RemoveDefinitionCommand::redo() {
    const auto at = find(editor_, id_);
    index_ = size_t(at - editor_.document().definitions.begin());
    definition_ = std::move(*at);
    editor_.document().definitions.erase(at);
    editor_.announceDefinitions();
}

void RemoveDefinitionCommand::undo() {
    auto& list = editor_.document().definitions;
    list.insert(list.begin() + std::ptrdiff_t(index_), std::move(definition_));
    editor_.announceDefinitions();
}

ReplaceDefinitionCommand::ReplaceDefinitionCommand(
    TaskEditor& editor, std::unique_ptr<model::EditorVariable> definition)
    : editor_(editor), other_(std::move(definition)) {
    setText(TaskEditor::tr("修改变量 %1").arg(other_->name));
}

void ReplaceDefinitionCommand::swap() {
    std::swap(*find(editor_, other_->id), other_);
    editor_.announceDefinitions();
}

}  // namespace autoscene::ui
