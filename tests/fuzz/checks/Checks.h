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

// Each check under the name of its fuzz target and its regressions folder (see README.md).
struct NamedCheck {
    const char* target;
    Check check;
};
inline constexpr NamedCheck kChecks[] = {
    {"task_file", checkTaskFile},
    {"rect_text", checkRectText},
    {"key_names", checkKeyNames},
    {"plugin_description", checkPluginDescription},
    {"image_file_name", checkImageFileName},
    {"ocr_answer", checkOcrAnswer},
    {"ocr_upload", checkOcrUpload},
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
