#pragma once
// What the fuzz targets and the regression replay run on bytes from outside. Each
// check returns what went wrong, or "" when the input was handled correctly;
// refusing bad input with an error counts as handled.

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace autoscene::fuzz {

using Check = QString (*)(const QByteArray& input);

// Task-file text: whatever opens must describe its items, show its colours as
// "#rrggbb", save, reopen without skipping anything and save again to the same bytes.
QString checkTaskFile(const QByteArray& input);

// Rectangle text: the edges agree with the size, and the formatted text parses back
// to the same rectangle.
QString checkRectText(const QByteArray& input);

// A key group as a task file holds it (JSON text): its display text, the names of
// its keys, and the group written back as it was read.
QString checkKeyNames(const QByteArray& input);

// Plug-in description files: their raw option and result values are written back
// as they were read.
QString checkPluginDescription(const QByteArray& input);

// Image file names from task files: a name that is taken leads to a file directly
// inside the task's image folder.
QString checkImageFileName(const QByteArray& input);

// Answers of the recognition service as the client reads them: boxes within bounds,
// and what the service would write for them reads back the same.
QString checkOcrAnswer(const QByteArray& input);

// Multipart uploads to a recognition service on loopback: the answer is either a
// recognition the client can read or a 400 with a JSON error.
QString checkOcrUpload(const QByteArray& input);

// The check of a fuzz target, named as the folders under tests/fuzz/regressions;
// nullptr for any other name.
Check findCheck(QStringView target);

}  // namespace autoscene::fuzz
