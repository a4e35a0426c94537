#include "plugins/PluginItems.h"

#include <QLoggingCategory>
#include <algorithm>
#include <mutex>
#include <vector>

#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"
#include "model/PluginDescription.h"
#include "model/TaskDocument.h"
#include "plugins/ActionPluginRegistry.h"
#include "plugins/MVPluginAction.h"

namespace autoscene::plugins {

Q_LOGGING_CATEGORY(lcPluginItems, "autoscene.plugins.items")

namespace {

// The libraries that the actions built through one factory use: a run loads them again
// after the previous run unloaded them, so that plugin_init reaches them before any call.
struct UsedLibraries {
    std::mutex mutex;
    std::vector<QString> paths;  // in the order first used
};

std::unique_ptr<engine::IAction> buildPluginAction(const model::EditorPluginAction& record,
                                                   engine::RunContext& context,
                                                   UsedLibraries& used) {
    PluginCall call = readPluginCall(record);
    const QString description = taskFilePath(context.task.folderPath, call.configFile);
    const auto plugin = model::loadPluginDescription(description);
    if (!plugin) {
        qCWarning(lcPluginItems).noquote()
            << "createAction exception:" << model::missingPluginMessage() << description;
        return std::make_unique<MVPluginAction>(std::move(call), QString(), QByteArray(), context);
    }
    const model::PluginActionDescription* action = plugin->action(call.actionName);
    const QString function =
        action && !action->funcName.isEmpty() ? action->funcName : call.actionName;
    const QString library = libraryPath(description, plugin->pluginFile);
    if (!ActionPluginRegistry::shared().load(library)) {
        qCWarning(lcPluginItems).noquote()
            << "createAction exception:" << model::missingPluginMessage() << library;
        return std::make_unique<MVPluginAction>(std::move(call), QString(), QByteArray(), context);
    }
    {
        std::lock_guard lock(used.mutex);
        if (std::find(used.paths.begin(), used.paths.end(), library) == used.paths.end()) {
            used.paths.push_back(library);
        }
    }
    return std::make_unique<MVPluginAction>(std::move(call), library, function.toUtf8(), context);
}

}  // namespace

void registerPluginItems(engine::RuntimeFactory& factory) {
    auto used = std::make_shared<UsedLibraries>();
    factory.addAction<model::EditorPluginAction>(
        [used](const model::EditorPluginAction& record, engine::RunContext& context) {
            return buildPluginAction(record, context, *used);
        });
    factory.addRunStartHook([used](const model::TaskDocument&) {
        ActionPluginRegistry& registry = ActionPluginRegistry::shared();
        {
            std::lock_guard lock(used->mutex);
            for (const QString& path : used->paths) {
                registry.load(path);
            }
        }
        registry.initAll();
    });
    factory.addRunEndHook([] { ActionPluginRegistry::shared().uninitAndUnloadAll(); });
}

}  // namespace autoscene::plugins
