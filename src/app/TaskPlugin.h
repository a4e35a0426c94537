#pragma once
// The background plug-in a task names, loaded the same way for the headless runner and the
// application.

#include <QString>
#include <memory>

#include "plugins/BackgroundPlugin.h"

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::app {

struct TaskPlugin {
    // Null when the task names none or it does not load.
    std::unique_ptr<plugins::BackgroundPlugin> plugin;
    // Why the named library does not load; empty otherwise.
    QString error;
};

// Loads the task's func_plugin_file with the services its enabled_plugin_func ticks.
TaskPlugin loadTaskPlugin(const model::TaskDocument& task);

}  // namespace autoscene::app
