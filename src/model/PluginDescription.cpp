#include "model/PluginDescription.h"

#include <QFile>
#include <QLoggingCategory>

#include "model/JsonReader.h"

namespace autoscene::model {

Q_LOGGING_CATEGORY(lcPlugins, "autoscene.model.plugins")

const PluginActionDescription* PluginDescription::action(const QString& actionName) const {
    for (const PluginActionDescription& entry : actions) {
        if (entry.name == actionName) {
            return &entry;
        }
    }
    return nullptr;
}

std::optional<PluginDescription> parsePluginDescription(const QByteArray& utf8) {
    rapidjson::Document json;
    QString error;
    if (!parseJson(utf8.constData(), size_t(utf8.size()), json, error)) {
        qCWarning(lcPlugins).noquote() << "parse error:" << error;
        return std::nullopt;
    }
    PluginDescription description;
    readMember(json, "plugin_name", description.pluginName);
    readMember(json, "plugin_file", description.pluginFile);
    const JsonValue* actions = findMember(json, "actions");
    if (!actions || !actions->IsArray()) {
        return description;
    }
    for (const JsonValue& entry : actions->GetArray()) {
        if (!entry.IsObject()) {
            continue;
        }
        PluginActionDescription action;
        readMember(entry, "name", action.name);
        readMember(entry, "func_name", action.funcName);
        readMember(entry, "options", action.options);
        readMember(entry, "results", action.results);
        if (const JsonValue* params = findMember(entry, "params"); params && params->IsArray()) {
            for (const JsonValue& param : params->GetArray()) {
                QString paramName;
                readMember(param, "param_name", paramName);
                action.params.push_back(paramName);
            }
        }
        description.actions.push_back(std::move(action));
    }
    return description;
}

std::optional<PluginDescription> loadPluginDescription(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcPlugins).noquote() << "parse error:" << path << file.errorString();
        return std::nullopt;
    }
    return parsePluginDescription(file.readAll());
}

}  // namespace autoscene::model
