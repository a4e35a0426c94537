#include "ui/TaskBackups.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcBackups, "autoscene.ui.backups")

namespace autoscene::ui {

namespace {

constexpr qsizetype kPruneFrom = 50;
constexpr qsizetype kKeep = 30;

}  // namespace

QString backUpScript(const QString& scriptPath, const QString& backupFolder, const QDateTime& now) {
    if (!QFileInfo(scriptPath).isFile() || !QDir().mkpath(backupFolder)) {
        return {};
    }
    const QString copy = QDir(backupFolder)
                             .filePath(QStringLiteral("script_%1.json")
                                           .arg(now.toString(QStringLiteral("yyyyMMdd_HHmmss"))));
    // QFile::copy never replaces an existing file, so the first copy of a second stays.
    return QFile::copy(scriptPath, copy) ? copy : QString();
}

int pruneBackups(const QString& backupFolder) {
    QFileInfoList files =
        QDir(backupFolder)
            .entryInfoList({QStringLiteral("*.json")}, QDir::Files | QDir::Readable, QDir::Time);
    if (files.size() < kPruneFrom) {
        return 0;
    }
    // QDir::Time lists the newest first.
    int removed = 0;
    for (qsizetype i = kKeep; i < files.size(); ++i) {
        const QString path = files[i].absoluteFilePath();
        if (QFile::remove(path)) {
            ++removed;
        } else {
            qCDebug(lcBackups).noquote() << "Failed to remove old file: " << path;
        }
    }
    return removed;
}

}  // namespace autoscene::ui
