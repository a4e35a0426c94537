#pragma once
// A full disk without root: a private user and mount namespace (unshare) with a one-page
// tmpfs at a folder, filled before the program under test starts there.

#include <QProcess>
#include <QString>
#include <QStringList>

namespace autoscene::test {

// The exit code of a run that could not make the namespace (user namespaces disabled).
constexpr int kNoFullDisk = 97;

// Starts `program` with `arguments` where `folder` is a full disk. Its programs see the
// rest of the file system and the environment as they are.
inline void startOnAFullDisk(QProcess& process, const QString& folder, const QString& program,
                             const QStringList& arguments) {
    const QString script = QStringLiteral(
                               "mount -t tmpfs -o size=4k none \"$0\" 2>/dev/null || exit %1; "
                               "cat /dev/zero > \"$0/filler\" 2>/dev/null; exec \"$@\"")
                               .arg(kNoFullDisk);
    process.start(QStringLiteral("unshare"),
                  QStringList{"-Urm", "sh", "-c", script, folder, program} + arguments);
}

}  // namespace autoscene::test
