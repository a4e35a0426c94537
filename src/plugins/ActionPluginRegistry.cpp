#include "plugins/ActionPluginRegistry.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include "plugins/PluginLibrary.h"

namespace autoscene::plugins {

Q_LOGGING_CATEGORY(lcActionPlugins, "autoscene.plugins.action")

ActionPluginRegistry& ActionPluginRegistry::shared() {
    static ActionPluginRegistry registry;
    return registry;
}

QLibrary* ActionPluginRegistry::loaded(const QString& libraryPath) {
    const QString key = QFileInfo(libraryPath).absoluteFilePath();
    if (const auto found = byPath_.find(key); found != byPath_.end()) {
        return found->second;
    }
    auto library = loadPluginLibrary(key);
    if (!library) {
        return nullptr;
    }
    QLibrary* raw = library.get();
    libraries_.push_back(std::move(library));
    byPath_.emplace(key, raw);
    return raw;
}

bool ActionPluginRegistry::load(const QString& libraryPath) {
    std::lock_guard lock(mutex_);
    return loaded(libraryPath) != nullptr;
}

mv_action_function ActionPluginRegistry::resolve(const QString& libraryPath,
                                                 const QByteArray& function) {
    std::lock_guard lock(mutex_);
    QLibrary* library = loaded(libraryPath);
    if (!library) {
        return nullptr;
    }
    qCDebug(lcActionPlugins).noquote() << "resolve func:" << function;
    return reinterpret_cast<mv_action_function>(library->resolve(function.constData()));
}

void ActionPluginRegistry::initAll() {
    std::lock_guard lock(mutex_);
    for (const auto& library : libraries_) {
        if (auto init = reinterpret_cast<plugin_init_function>(library->resolve("plugin_init"))) {
            init();
        }
    }
}

void ActionPluginRegistry::uninitAndUnloadAll() {
    std::lock_guard lock(mutex_);
    for (const auto& library : libraries_) {
        if (auto uninit =
                reinterpret_cast<plugin_uninit_function>(library->resolve("plugin_uninit"))) {
            uninit();
        }
    }
    for (const auto& library : libraries_) {
        library->unload();
    }
    libraries_.clear();
    byPath_.clear();
    ++generation_;
}

std::uint64_t ActionPluginRegistry::generation() const {
    std::lock_guard lock(mutex_);
    return generation_;
}

std::vector<QString> ActionPluginRegistry::libraries() const {
    std::lock_guard lock(mutex_);
    std::vector<QString> paths;
    for (const auto& library : libraries_) {
        paths.push_back(library->fileName());
    }
    return paths;
}

}  // namespace autoscene::plugins
