#pragma once
// Which Android devices a run drives: those named with --device, or every device adb
// lists as ready.

#include <QTextStream>
#include <variant>
#include <vector>

#include "android/AdbClient.h"
#include "app/RunOptions.h"
#include "engine/TaskInfo.h"
#include "targets/DeviceTarget.h"

namespace autoscene::app {

// The adb program the options ask for.
platform::android::AdbClient adbClientFor(const RunOptions& options);

// How the options ask devices to be driven.
targets::DeviceTarget::Options deviceTargetOptions(const RunOptions& options);

// One target per device to drive, or the exit code after saying on `err` why there is none.
std::variant<std::vector<engine::RunTarget>, int> chooseDevices(
    const RunOptions& options, const platform::android::AdbClient& adb, QTextStream& err);

}  // namespace autoscene::app
