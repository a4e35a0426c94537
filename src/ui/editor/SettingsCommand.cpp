#include "editor/SettingsCommand.h"

#include <utility>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

SettingsCommand::SettingsCommand(TaskEditor& editor, TaskSetup setup, const QString& text)
    : QUndoCommand(text), editor_(editor), other_(std::move(setup)) {}

void SettingsCommand::swap() {
    model::TaskDocument& task = editor_.document();
    std::swap(task.settings, other_.settings);
    std::swap(task.funcPluginFile, other_.pluginFile);
    std::swap(task.enabledPluginFunc, other_.pluginServices);
    std::swap(task.pluginFiles, other_.actionPluginFiles);
    editor_.announceSettings();
}

}  // namespace autoscene::ui
