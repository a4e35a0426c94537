#include "editor/TaskPlugins.h"

#include <QDir>
#include <QFileInfo>

#include "model/TaskDocument.h"
#include "plugins/ActionPluginRegistry.h"
#include "plugins/PluginCall.h"

namespace autoscene::ui {

QString TaskPlugin::name() const {
    if (description && !description->pluginName.isEmpty()) {
        return description->pluginName;
    }
    return QFileInfo(file).completeBaseName();
}

TaskPlugin readTaskPlugin(const model::TaskDocument& task, const QString& file) {
    TaskPlugin plugin{file, {}, false};
    const QString path = plugins::taskFilePath(task.folderPath, file);
    plugin.description = model::loadPluginDescription(path);
    if (plugin.description) {
        plugin.loaded = plugins::ActionPluginRegistry::shared().load(
            plugins::libraryPath(path, plugin.description->pluginFile));
    }
    return plugin;
}

std::vector<TaskPlugin> readTaskPlugins(const model::TaskDocument& task) {
    std::vector<TaskPlugin> list;
    for (const QString& file : task.pluginFiles) {
        list.push_back(readTaskPlugin(task, file));
    }
    return list;
}

QString taskRelativeFile(const model::TaskDocument& task, const QString& absolutePath) {
    const QString relative = QDir(task.folderPath).relativeFilePath(absolutePath);
    return relative.startsWith(QLatin1String("..")) || QDir::isAbsolutePath(relative)
               ? QDir::cleanPath(absolutePath)
               : relative;
}

}  // namespace autoscene::ui
