#include "Checks.h"

#include <QLatin1String>

namespace autoscene::fuzz {

namespace {

constexpr struct {
    const char* target;
    Check check;
} kChecks[] = {
    {"task_file", checkTaskFile},
    {"rect_text", checkRectText},
    {"key_names", checkKeyNames},
    {"plugin_description", checkPluginDescription},
    {"image_file_name", checkImageFileName},
    {"ocr_answer", checkOcrAnswer},
    {"ocr_upload", checkOcrUpload},
    {"device_output", checkDeviceOutput},
};

}  // namespace

Check findCheck(QStringView target) {
    for (const auto& named : kChecks) {
        if (target == QLatin1String(named.target)) {
            return named.check;
        }
    }
    return nullptr;
}

}  // namespace autoscene::fuzz
