#pragma once
// What the fuzz targets and the regression replay run on bytes from outside. Each
// check returns what went wrong, or "" when the input was handled correctly;
// refusing bad input with an error counts as handled.

#include <QByteArray>
#include <QLatin1String>
#include <QString>
#include <QStringView>

namespace autoscene::fuzz {

using CheckFunction = QString(const QByteArray& input);
using Check = CheckFunction*;

CheckFunction checkTaskFile, checkRectText, checkKeyNames, checkPluginDescription,
    checkImageFileName, checkOcrAnswer, checkOcrUpload, checkDeviceOutput;

// Each check under the name of its fuzz target and of its folder under tests/fuzz/regressions.
struct NamedCheck {
    const char* target;
    Check check;
};
inline constexpr NamedCheck kChecks[] = {
    // Opens, describes every item (colours as "#rrggbb"), saves, reopens whole, saves the same.
    {"task_file", checkTaskFile},
    // Rectangle text: edges agree with the size; the formatted text parses back the same.
    {"rect_text", checkRectText},
    // A key group as a task file holds it: display text, key names, written back as read.
    {"key_names", checkKeyNames},
    // Plug-in descriptions: raw option and result values are written back as read.
    {"plugin_description", checkPluginDescription},
    // A name that is taken leads directly into the task's image folder.
    {"image_file_name", checkImageFileName},
    // Answers as the client reads them: boxes within bounds; the service's writing reads back.
    {"ocr_answer", checkOcrAnswer},
    // Multipart uploads on loopback: a readable recognition or a 400 with a JSON error.
    {"ocr_upload", checkOcrUpload},
    // Screencap, device-service frame, adb and wm output: whole frames, or none and a reason.
    {"device_output", checkDeviceOutput},
};

inline Check findCheck(QStringView target) {
    for (const auto& named : kChecks) {
        if (target == QLatin1String(named.target)) {
            return named.check;
        }
    }
    return nullptr;
}

}  // namespace autoscene::fuzz
