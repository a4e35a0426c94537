#include "editor/SettingsCommand.h"

#include <utility>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

SettingsCommand::SettingsCommand(TaskEditor& editor, model::TaskSettings settings,
                                 const QString& text)
    : QUndoCommand(text), editor_(editor), other_(std::move(settings)) {}

void SettingsCommand::swap() {
    std::swap(editor_.document().settings, other_);
    editor_.announceSettings();
}

}  // namespace autoscene::ui
