#pragma once
// The user's settings in config.ini: an INI file without groups, read on every access and
// written at once, so that two windows of the program never disagree.

#include <QSize>
#include <QString>
#include <QStringList>
#include <optional>

#include "playback/RecordingPruning.h"

namespace autoscene::ui {

class AppConfig {
public:
    // ~/.config/autoscene/config.ini (the platform's per-user configuration folder).
    static QString defaultPath();

    explicit AppConfig(QString path = defaultPath()) : path_(std::move(path)) {}

    const QString& path() const { return path_; }

    QString captureKey() const;
    QString startKey() const;
    QString stopKey() const;
    void setHotKeys(const QString& capture, const QString& start, const QString& stop);

    // 0: the user has not chosen yet.
    int loopMode() const;
    void setLoopMode(int mode);
    bool playback() const;
    void setPlayback(bool on);
    // The folder the application's recordings go to: playback/ beside `configPath`.
    static QString playbackFolder(const QString& configPath);
    // How many recordings, and how many megabytes of them, that folder keeps:
    // playback_keep (100) and playback_max_mb (2048); 0 means no limit.
    playback::RecordingLimits playbackLimits() const;

    // Sizes are kept as "WIDTHxHEIGHT"; nothing for a missing or unreadable value.
    std::optional<QSize> mainWindowSize() const;
    void setMainWindowSize(QSize size);
    std::optional<QSize> launcherSize() const;
    void setLauncherSize(QSize size);

    // Task folders opened lately, the latest first.
    QStringList recentTasks() const;
    void addRecentTask(const QString& folder);

private:
    QString text(const char* key, const QString& fallback) const;
    void write(const char* key, const QVariant& value);
    std::optional<QSize> size(const char* key) const;

    QString path_;
};

}  // namespace autoscene::ui
