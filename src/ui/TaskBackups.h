#pragma once
// Copies of a task's script.json taken when the task is opened, pruned when it is closed.

#include <QDateTime>
#include <QString>

namespace autoscene::ui {

// "script_yyyyMMdd_HHmmss.json" in `backupFolder` (created when missing). An existing copy
// of the same second is kept as it is; the path of the new copy, empty when none was made.
QString backUpScript(const QString& scriptPath, const QString& backupFolder,
                     const QDateTime& now = QDateTime::currentDateTime());

// With 50 or more "*.json" files in the folder, deletes the oldest by modification time
// until 30 remain; fewer than 50 are left alone, so that pruning does not run on every
// close. Returns the number of files deleted.
int pruneBackups(const QString& backupFolder);

}  // namespace autoscene::ui
