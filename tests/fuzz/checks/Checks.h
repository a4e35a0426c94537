#pragma once
// What the fuzz targets and the regression replay run on bytes from outside. Each
// check returns what went wrong, or "" when the input was handled correctly;
// refusing bad input with an error counts as handled.

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace autoscene::fuzz {

using Check = QString (*)(const QByteArray& input);

// Task-file text: what opens describes every item, shows colours as "#rrggbb", and
// saves, reopens with nothing skipped and saves again to the same bytes.
QString checkTaskFile(const QByteArray& input);
// Rectangle text: edges agree with the size; the formatted text parses back the same.
QString checkRectText(const QByteArray& input);
// A key group as a task file holds it: display text, key names, written back as read.
QString checkKeyNames(const QByteArray& input);
// Plug-in descriptions: raw option and result values are written back as read.
QString checkPluginDescription(const QByteArray& input);
// Image file names: a name that is taken leads directly into the task's image folder.
QString checkImageFileName(const QByteArray& input);
// Recognition answers as the client reads them: boxes within bounds, and the service's
// own writing of them reads back the same.
QString checkOcrAnswer(const QByteArray& input);
// Multipart uploads to the service on loopback: a readable recognition or a 400 with
// a JSON error.
QString checkOcrUpload(const QByteArray& input);

// Bytes from a device: raw screencap output, a device service's frame answer, adb and
// wm output. Frames come out whole or not at all, with a reason.
QString checkDeviceOutput(const QByteArray& input);

// The check named as a folder under tests/fuzz/regressions; nullptr for other names.
Check findCheck(QStringView target);

}  // namespace autoscene::fuzz
