#pragma once
// Which Android devices a run drives: those named with --device, or every device adb
// lists as ready; and the devices there are.

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

// The device part of listing targets: every device adb lists, ready or not, one line each
// (a JSON object with `json`). False when adb cannot be run (said on `err`).
bool printDeviceTargets(const platform::android::AdbClient& adb, bool json, QTextStream& out,
                        QTextStream& err);

}  // namespace autoscene::app
