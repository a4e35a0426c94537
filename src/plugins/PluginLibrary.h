#pragma once
// Loading one plug-in library, shared by both kinds of plug-in.

#include <QLibrary>
#include <QString>
#include <memory>

namespace autoscene::plugins {

// The loaded library, or nothing with "Failed to load library: " and the loader's error in
// the log. A library that exports mv_plugin_abi with another version than this host's is
// not kept loaded.
std::unique_ptr<QLibrary> loadPluginLibrary(const QString& path, QString* error = nullptr);

}  // namespace autoscene::plugins
