#include "plugins/PluginCall.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>

namespace autoscene::plugins {

namespace {

QJsonArray arrayOf(const model::RawJson& raw) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(raw.text)).array();
}

template <class Fn>
void forEachNamed(const model::RawJson& raw, const char* nameKey, Fn&& fn) {
    for (const auto& entry : arrayOf(raw)) {
        const QString name = entry[QLatin1String(nameKey)].toString();
        if (entry.isObject() && !name.isEmpty()) {
            fn(name, entry.toObject());
        }
    }
}

int variableIdOf(const QJsonValue& value) {
    return value.isDouble() ? value.toInt() : 0;
}

}  // namespace

PluginCall readPluginCall(const model::EditorPluginAction& record) {
    PluginCall call;
    call.actionName = record.actionName;
    call.configFile = record.configFile;
    forEachNamed(record.actionInputs, "action_arg", [&](const QString& name, const QJsonObject& e) {
        const QJsonValue value = e[QLatin1String("action_varvalue")];
        call.inputs.push_back({name, value.toString(), variableIdOf(value)});
    });
    forEachNamed(record.actionOptioninputs, "action_arg",
                 [&](const QString& name, const QJsonObject& e) {
                     QString chosen = e[QLatin1String("action_varvalue")].toString();
                     const QJsonArray allowed = e[QLatin1String("action_option")].toArray();
                     if (chosen.isEmpty() && !allowed.isEmpty()) {
                         chosen = allowed.first().toString();
                     }
                     call.choices.push_back({name, chosen});
                 });
    forEachNamed(
        record.actionOutputs, "action_result", [&](const QString& name, const QJsonObject& e) {
            call.outputs.push_back({name, variableIdOf(e[QLatin1String("action_varvalue")])});
        });
    return call;
}

QString taskFilePath(const QString& taskFolder, const QString& configFile) {
    QString file = configFile;
    file.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QDir::cleanPath(QDir(taskFolder).filePath(file));
}

QString libraryPath(const QString& descriptionFile, const QString& pluginFile) {
    const QFileInfo description(descriptionFile);
    QString name = pluginFile.isEmpty() ? description.completeBaseName() : pluginFile;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QFileInfo(name).isAbsolute()) {
        return name;
    }
    const QDir folder = description.absoluteDir();
    const QStringList candidates{folder.filePath(QStringLiteral("mv-plugin/") + name),
                                 folder.filePath(name)};
    for (const QString& candidate : candidates) {
        if (QFileInfo(candidate).isFile()) {
            return candidate;
        }
        for (const char* suffix : {".so", ".dll", ".dylib"}) {
            QString withSuffix = candidate + QLatin1String(suffix);
            if (QFileInfo(withSuffix).isFile() && QLibrary::isLibrary(withSuffix)) {
                return withSuffix;
            }
        }
    }
    return candidates.front();
}

}  // namespace autoscene::plugins
