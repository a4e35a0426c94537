#pragma once
// Replacing a file so that a failed write (full disk, no rights, size limit) leaves
// the previous file as it was.

#include <QByteArray>
#include <QString>

namespace autoscene::model {

// Writes `data` to a temporary file beside `path`, checks that every byte reached
// it, and renames it over `path`. On failure the temporary file is removed.
bool writeFileAtomically(const QString& path, const QByteArray& data, QString* error);

}  // namespace autoscene::model
