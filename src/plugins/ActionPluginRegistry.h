#pragma once
// The process-wide set of loaded action plug-ins, by library path in load order. Libraries
// are loaded when their functions are resolved, initialised when a run starts, and
// released and unloaded when it ends.

#include <QLibrary>
#include <QString>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "plugins/include/autoscene_plugin.h"

namespace autoscene::plugins {

class ActionPluginRegistry {
public:
    static ActionPluginRegistry& shared();

    // Loads the library when it is not yet loaded and resolves the function; null when
    // either fails (logged).
    mv_action_function resolve(const QString& libraryPath, const QByteArray& function);
    // Loads the library when it is not yet loaded; false when it cannot be loaded.
    bool load(const QString& libraryPath);
    // plugin_init of every loaded library, in load order.
    void initAll();
    // plugin_uninit of every loaded library, then every library unloaded and forgotten.
    void uninitAndUnloadAll();
    // Changes whenever the libraries are unloaded: resolved functions of an earlier
    // generation are gone.
    std::uint64_t generation() const;
    std::vector<QString> libraries() const;

private:
    QLibrary* loaded(const QString& libraryPath);

    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<QLibrary>> libraries_;  // in load order
    std::map<QString, QLibrary*> byPath_;
    std::uint64_t generation_ = 0;
};

}  // namespace autoscene::plugins
