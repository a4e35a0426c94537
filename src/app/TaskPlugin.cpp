#include "app/TaskPlugin.h"

#include "model/TaskDocument.h"
#include "plugins/PluginCall.h"

namespace autoscene::app {

TaskPlugin loadTaskPlugin(const model::TaskDocument& task) {
    TaskPlugin loaded;
    if (task.funcPluginFile.isEmpty()) {
        return loaded;
    }
    const QString path = plugins::taskFilePath(task.folderPath, task.funcPluginFile);
    loaded.plugin = plugins::BackgroundPlugin::load(
        path, plugins::servicesFromJson(task.enabledPluginFunc.text), &loaded.error);
    if (!loaded.plugin && loaded.error.isEmpty()) {
        loaded.error = path;
    }
    return loaded;
}

}  // namespace autoscene::app
