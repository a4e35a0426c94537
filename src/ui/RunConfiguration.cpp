#include "ui/RunConfiguration.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSaveFile>

namespace autoscene::ui {

namespace {

// Names become file names: no folders, nothing hidden, nothing a file system refuses.
bool usableName(const QString& name) {
    static const QRegularExpression refused(QStringLiteral(R"([/\\:*?"<>|]|^\.|^\s|\s$)"));
    return !name.isEmpty() && name.size() <= 100 && !name.contains(refused);
}

QString pathOf(const QString& taskFolder, const QString& name) {
    return QDir(savesFolder(taskFolder)).filePath(name + QStringLiteral(".json"));
}

std::optional<ConfiguredTarget> targetFromJson(const QJsonValue& value, int index, QString* error) {
    const QString where = QStringLiteral("targets[%1]").arg(index);
    const QJsonObject object = value.toObject();
    ConfiguredTarget target;
    const QJsonValue window = object.value(QStringLiteral("window"));
    const QJsonValue serial = object.value(QStringLiteral("serial"));
    if (!value.isObject() || (!window.isString() && !serial.isString())) {
        *error = where + QCoreApplication::translate("RunConfiguration", ": 需要 window 或 serial");
        return std::nullopt;
    }
    bool ok = true;
    target.window = window.isString() ? window.toString().toULongLong(&ok, 16) : 0;
    target.serial = serial.toString();
    target.title = object.value(QStringLiteral("title")).toString();
    if (!ok || (window.isString() && target.window == 0)) {
        *error = where + QCoreApplication::translate("RunConfiguration", ".window: 不是窗口句柄");
        return std::nullopt;
    }
    const QJsonObject variables = object.value(QStringLiteral("variables")).toObject();
    for (auto it = variables.begin(); it != variables.end(); ++it) {
        const int id = it.key().toInt(&ok);
        if (!ok || !it.value().isString()) {
            *error = where + QCoreApplication::translate("RunConfiguration",
                                                         ".variables.%1: 需要变量编号和文本值")
                                 .arg(it.key());
            return std::nullopt;
        }
        target.variables[id] = it.value().toString();
    }
    return target;
}

}  // namespace

QByteArray configurationToJson(const RunConfiguration& configuration) {
    QJsonArray targets;
    for (const ConfiguredTarget& target : configuration.targets) {
        QJsonObject object;
        if (target.isDevice()) {
            object[QStringLiteral("serial")] = target.serial;
        } else {
            object[QStringLiteral("window")] = QString::number(target.window, 16);
            object[QStringLiteral("title")] = target.title;
        }
        QJsonObject variables;
        for (const auto& [id, value] : target.variables) {
            variables[QString::number(id)] = value;
        }
        object[QStringLiteral("variables")] = variables;
        targets.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("targets"), targets}}).toJson();
}

std::optional<RunConfiguration> configurationFromJson(const QByteArray& json, QString* error) {
    QJsonParseError parse;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parse);
    if (parse.error != QJsonParseError::NoError) {
        *error = QCoreApplication::translate("RunConfiguration", "第 %1 字节: %2")
                     .arg(parse.offset)
                     .arg(parse.errorString());
        return std::nullopt;
    }
    const QJsonValue targets = document.object().value(QStringLiteral("targets"));
    if (!targets.isArray()) {
        *error = QCoreApplication::translate("RunConfiguration", "targets: 需要数组");
        return std::nullopt;
    }
    RunConfiguration configuration;
    int index = 0;
    for (const QJsonValue value : targets.toArray()) {
        auto target = targetFromJson(value, index++, error);
        if (!target) {
            return std::nullopt;
        }
        configuration.targets.push_back(std::move(*target));
    }
    return configuration;
}

QString savesFolder(const QString& taskFolder) {
    return QDir(taskFolder).filePath(QStringLiteral("saves"));
}

QStringList savedConfigurations(const QString& taskFolder) {
    QStringList names;
    const QDir folder(savesFolder(taskFolder));
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.json")},
                                                      QDir::Files | QDir::Readable, QDir::Name)) {
        names << file.completeBaseName();
    }
    return names;
}

bool saveConfiguration(const QString& taskFolder, const QString& name,
                       const RunConfiguration& configuration, QString* error) {
    if (!usableName(name)) {
        *error = QCoreApplication::translate("RunConfiguration",
                                             "名称不能为空，也不能含有 / \\ : * ? \" < > |");
        return false;
    }
    if (!QDir(taskFolder).mkpath(QStringLiteral("saves"))) {
        *error = QCoreApplication::translate("RunConfiguration", "无法创建文件夹 %1")
                     .arg(savesFolder(taskFolder));
        return false;
    }
    // Written aside and renamed, so that a failed save leaves the old file whole.
    QSaveFile file(pathOf(taskFolder, name));
    if (!file.open(QIODevice::WriteOnly) || file.write(configurationToJson(configuration)) < 0 ||
        !file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

std::optional<RunConfiguration> loadConfiguration(const QString& taskFolder, const QString& name,
                                                  QString* error) {
    QFile file(pathOf(taskFolder, name));
    // Configurations are small; a huge file is not one.
    constexpr qint64 kMaxBytes = qint64(4) * 1024 * 1024;
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxBytes) {
        *error = file.isOpen() ? QCoreApplication::translate("RunConfiguration", "文件过大")
                               : file.errorString();
        return std::nullopt;
    }
    return configurationFromJson(file.readAll(), error);
}

}  // namespace autoscene::ui
