#include "ui/AppConfig.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>

namespace autoscene::ui {

namespace {

constexpr int kRecentTaskCount = 8;
constexpr int kPlaybackKeep = 100;
constexpr int kPlaybackMaxMb = 2048;

}  // namespace

QString AppConfig::defaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autoscene/config.ini");
}

QString AppConfig::text(const char* key, const QString& fallback) const {
    return QSettings(path_, QSettings::IniFormat).value(key, fallback).toString();
}

void AppConfig::write(const char* key, const QVariant& value) {
    QSettings settings(path_, QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

QString AppConfig::captureKey() const {
    return text("capture_key", QStringLiteral("Alt+Shift+S"));
}

QString AppConfig::startKey() const {
    return text("start_key", QStringLiteral("F8"));
}

QString AppConfig::stopKey() const {
    return text("stop_key", QStringLiteral("F10"));
}

void AppConfig::setHotKeys(const QString& capture, const QString& start, const QString& stop) {
    write("capture_key", capture);
    write("start_key", start);
    write("stop_key", stop);
}

int AppConfig::loopMode() const {
    return QSettings(path_, QSettings::IniFormat).value("loop_mode", 0).toInt();
}

void AppConfig::setLoopMode(int mode) {
    write("loop_mode", mode);
}

bool AppConfig::playback() const {
    return QSettings(path_, QSettings::IniFormat).value("playback", true).toBool();
}

void AppConfig::setPlayback(bool on) {
    write("playback", on);
}

QString AppConfig::playbackFolder(const QString& configPath) {
    return QFileInfo(configPath).absolutePath() + QStringLiteral("/playback");
}

playback::RecordingLimits AppConfig::playbackLimits() const {
    const QSettings settings(path_, QSettings::IniFormat);
    // A value that is not a number, or negative, leaves its default in force.
    const auto read = [&settings](const char* key, int fallback) {
        bool ok = false;
        const int value = settings.value(key, fallback).toInt(&ok);
        return ok && value >= 0 ? value : fallback;
    };
    return {read("playback_keep", kPlaybackKeep),
            qint64(read("playback_max_mb", kPlaybackMaxMb)) * 1024 * 1024};
}

std::optional<QSize> AppConfig::size(const char* key) const {
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const auto match = form.match(text(key, QString()));
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

std::optional<QSize> AppConfig::mainWindowSize() const {
    return size("mainwindow_size");
}

void AppConfig::setMainWindowSize(QSize size) {
    write("mainwindow_size", QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
}

std::optional<QSize> AppConfig::launcherSize() const {
    return size("launcher_size");
}

void AppConfig::setLauncherSize(QSize size) {
    write("launcher_size", QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
}

QStringList AppConfig::recentTasks() const {
    return QSettings(path_, QSettings::IniFormat).value("recent_tasks").toStringList();
}

void AppConfig::addRecentTask(const QString& folder) {
    QStringList recent = recentTasks();
    recent.removeAll(folder);
    recent.prepend(folder);
    write("recent_tasks", recent.mid(0, kRecentTaskCount));
}

}  // namespace autoscene::ui
