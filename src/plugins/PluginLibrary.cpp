#include "plugins/PluginLibrary.h"

#include <QLoggingCategory>

#include "plugins/include/autoscene_plugin.h"

namespace autoscene::plugins {

Q_LOGGING_CATEGORY(lcPluginLibrary, "autoscene.plugins.library")

std::unique_ptr<QLibrary> loadPluginLibrary(const QString& path, QString* error) {
    auto library = std::make_unique<QLibrary>(path);
    QString failure;
    if (!library->load()) {
        failure = library->errorString();
    } else if (auto abi =
                   reinterpret_cast<mv_plugin_abi_function>(library->resolve("mv_plugin_abi"));
               abi && abi() != MV_PLUGIN_ABI) {
        failure = QStringLiteral("%1 is built for plug-in interface %2, this program has %3")
                      .arg(path)
                      .arg(abi())
                      .arg(MV_PLUGIN_ABI);
        library->unload();
    }
    if (failure.isEmpty()) {
        return library;
    }
    qCWarning(lcPluginLibrary).noquote() << "Failed to load library: " + failure;
    if (error) {
        *error = failure;
    }
    return nullptr;
}

}  // namespace autoscene::plugins
