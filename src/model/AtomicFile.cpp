#include "model/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace autoscene::model {

bool writeFileAtomically(const QString& path, const QByteArray& data, QString* error) {
    auto fail = [&](const QString& why) {
        if (error) {
            *error = QStringLiteral("%1: %2").arg(path, why);
        }
        return false;
    };
    // QSaveFile was seen to report success after a short write; every step is
    // checked here instead, down to the size that landed on disk.
    QTemporaryFile temp(path + QStringLiteral(".XXXXXX"));
    if (!temp.open()) {
        return fail(temp.errorString());
    }
    const QString tempPath = temp.fileName();
    errno = 0;
    const qint64 written = temp.write(data);
    const bool flushed = temp.flush();
    // The system's own words ("No space left on device") are what the user needs to hear;
    // Qt's error text does not always carry them.
    const int writeError = errno;
    const bool failed = written != data.size() || !flushed || temp.error() != QFileDevice::NoError;
    const QString reason = writeError != 0
                               ? QString::fromStdString(std::generic_category().message(writeError))
                               : temp.errorString();
    temp.close();
    if (failed || QFileInfo(tempPath).size() != data.size()) {
        return fail(QStringLiteral("could not write the whole file (%1)").arg(reason));
    }
    // The temporary file is private (0600); the file it replaces keeps its own mode, and a
    // new one gets the usual read rights for everyone.
    const QFileInfo previous(path);
    const QFileDevice::Permissions mode = previous.exists()
                                              ? previous.permissions()
                                              : QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                    QFileDevice::ReadUser | QFileDevice::WriteUser |
                                                    QFileDevice::ReadGroup | QFileDevice::ReadOther;
    if (!QFile::setPermissions(tempPath, mode)) {
        return fail(QStringLiteral("could not set the file's permissions"));
    }
    std::error_code code;
    std::filesystem::rename(std::filesystem::path(tempPath.toStdU16String()),
                            std::filesystem::path(path.toStdU16String()), code);
    if (code) {
        return fail(QString::fromStdString(code.message()));
    }
    temp.setAutoRemove(false);
    return true;
}

}  // namespace autoscene::model
