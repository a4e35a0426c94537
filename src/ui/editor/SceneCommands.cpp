#include "editor/SceneCommands.h"

#include "editor/TaskEditor.h"

namespace autoscene::ui {

namespace {

std::vector<model::EditorScene>::iterator at(TaskEditor& editor, int index) {
    return editor.document().scenes.begin() + index;
}

}  // namespace

InsertSceneCommand::InsertSceneCommand(TaskEditor& editor, int index, model::EditorScene scene)
    : editor_(editor), index_(index), scene_(std::move(scene)) {
    setText(TaskEditor::tr("添加界面 %1").arg(scene_.name));
}

void InsertSceneCommand::redo() {
    editor_.document().scenes.insert(at(editor_, index_), std::move(scene_));
    editor_.announceScenes();
}

void InsertSceneCommand::undo() {
    scene_ = std::move(*at(editor_, index_));
    editor_.document().scenes.erase(at(editor_, index_));
    editor_.announceScenes();
}

RemoveSceneCommand::RemoveSceneCommand(TaskEditor& editor, int index)
    : editor_(editor), index_(index) {
    setText(TaskEditor::tr("删除界面 %1").arg(at(editor_, index_)->name));
}

void RemoveSceneCommand::redo() {
    scene_ = std::move(*at(editor_, index_));
    editor_.document().scenes.erase(at(editor_, index_));
    editor_.announceScenes();
}

void RemoveSceneCommand::undo() {
    editor_.document().scenes.insert(at(editor_, index_), std::move(scene_));
    editor_.announceScenes();
}

MoveSceneCommand::MoveSceneCommand(TaskEditor& editor, int from, int to)
    : editor_(editor), from_(from), to_(to) {
    setText(TaskEditor::tr("移动界面 %1").arg(at(editor_, from_)->name));
}

void MoveSceneCommand::move(int from, int to) {
    model::EditorScene moving = std::move(*at(editor_, from));
    editor_.document().scenes.erase(at(editor_, from));
    editor_.document().scenes.insert(at(editor_, to), std::move(moving));
    editor_.announceScenes();
}

RenameSceneCommand::RenameSceneCommand(TaskEditor& editor, int index, QString name)
    : editor_(editor), index_(index), name_(std::move(name)) {
    setText(TaskEditor::tr("重命名界面 %1").arg(name_));
}

void RenameSceneCommand::swap() {
    std::swap(at(editor_, index_)->name, name_);
    editor_.announceScenes();
}

}  // namespace autoscene::ui
