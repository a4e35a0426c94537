#include "model/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

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
    const qint64 written = temp.write(data);
    const bool flushed = temp.flush();
    temp.close();
    if (written != data.size() || !flushed || temp.error() != QFileDevice::NoError ||
        QFileInfo(tempPath).size() != data.size()) {
        return fail(QStringLiteral("could not write the whole file (%1)").arg(temp.errorString()));
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
