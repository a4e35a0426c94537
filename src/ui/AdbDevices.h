#pragma once
// Asking adb for its devices from the window's thread without freezing the window: adb
// runs on a thread of its own, and when it takes long (its server is starting) the user is
// told so.

#include <optional>
#include <vector>

#include "android/AdbClient.h"
#include "android/AdbOutput.h"

class QWidget;

namespace autoscene::ui {

// The devices adb lists, ready or not. Nothing, after the box "ADB服务启动失败" over
// `parent`, when adb cannot be run or its server does not start.
std::optional<std::vector<platform::android::DeviceEntry>> listAdbDevices(
    QWidget* parent, const platform::android::AdbClient& adb);

}  // namespace autoscene::ui
