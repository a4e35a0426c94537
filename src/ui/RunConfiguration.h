#pragma once
// A saved run configuration of the task page: the windows or devices one task runs on at
// once, each with its own values of the task's configuration variables. Kept as JSON files
// in the task's "saves" folder, named by the user.

#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::ui {

struct ConfiguredTarget {
    // A window is known by its handle while it lives and by its title for the reader; a
    // device by its serial.
    platform::WindowHandle window = 0;
    QString title;
    QString serial;
    std::map<int, QString> variables;  // variable id → value as text

    bool isDevice() const { return !serial.isEmpty(); }
};

struct RunConfiguration {
    std::vector<ConfiguredTarget> targets;
};

QByteArray configurationToJson(const RunConfiguration& configuration);
// Nothing, with `error` naming the first bad field, when the text is not a configuration.
std::optional<RunConfiguration> configurationFromJson(const QByteArray& json, QString* error);

// The folder of a task's saved configurations.
QString savesFolder(const QString& taskFolder);
// The names of the saved configurations ("NAME" of each "NAME.json"), sorted.
QStringList savedConfigurations(const QString& taskFolder);
// False with `error` set when the name cannot name a file or the file cannot be written.
bool saveConfiguration(const QString& taskFolder, const QString& name,
                       const RunConfiguration& configuration, QString* error);
std::optional<RunConfiguration> loadConfiguration(const QString& taskFolder, const QString& name,
                                                  QString* error);

}  // namespace autoscene::ui
