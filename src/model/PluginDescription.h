#pragma once
// Plug-in description files: what a plug-in library offers, as UTF-8 JSON.

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "model/RawJson.h"

namespace autoscene::model {

struct PluginActionDescription {
    QString name;
    QString funcName;
    QStringList params;  // param_name of each parameter, in order
    RawJson options{"[]"};
    RawJson results{"[]"};
};

struct PluginDescription {
    QString pluginName;
    QString pluginFile;
    std::vector<PluginActionDescription> actions;

    const PluginActionDescription* action(const QString& name) const;
};

// Shown when a plug-in action's description is missing.
inline QString missingPluginMessage() {
    return QStringLiteral("未找到插件配置或插件加载失败");
}

// Nothing (and "parse error:" in the log) when the text is not a description.
std::optional<PluginDescription> parsePluginDescription(const QByteArray& utf8);
std::optional<PluginDescription> loadPluginDescription(const QString& path);

}  // namespace autoscene::model
