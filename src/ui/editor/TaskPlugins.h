#pragma once
// The action plug-ins a task lists under plugin_files, read for the editor: each entry's
// description and whether its library loads. Loading goes through the process-wide registry,
// so the editor and a later run share the library.

#include <QString>
#include <optional>
#include <vector>

#include "model/PluginDescription.h"

namespace autoscene::model {
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

struct TaskPlugin {
    QString file;  // as the task lists it
    std::optional<model::PluginDescription> description;
    bool loaded = false;

    bool usable() const { return description && loaded; }
    // The plug-in's own name, or the file's base name when it has none or is not readable.
    QString name() const;
};

// Reads the description of `file` (absolute or relative to the task folder) and loads its
// library.
TaskPlugin readTaskPlugin(const model::TaskDocument& task, const QString& file);
std::vector<TaskPlugin> readTaskPlugins(const model::TaskDocument& task);
// How the task lists a file chosen by the user: relative when it lies in the task folder.
QString taskRelativeFile(const model::TaskDocument& task, const QString& absolutePath);

}  // namespace autoscene::ui
