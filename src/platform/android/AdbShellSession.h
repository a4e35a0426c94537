#pragma once
// One "adb shell" kept open to a device, so that a run of short commands (input events)
// costs one adb process instead of one each. Each command is followed by an echo of a
// marker, and its output is what comes before the marker.

#include <memory>
#include <stop_token>
#include <string>

#include "android/AdbClient.h"
#include "system/PipedProcess.h"

namespace autoscene::platform::android {

class AdbShellSession {
public:
    AdbShellSession(const AdbClient& adb, std::string serial);
    ~AdbShellSession();
    AdbShellSession(const AdbShellSession&) = delete;
    AdbShellSession& operator=(const AdbShellSession&) = delete;

    // As AdbClient::shell, within the client's time limit. The shell is started on first
    // use, and again after a command whose answer did not come whole.
    AdbResult run(const std::string& deviceCommand, const std::stop_token& stop);

private:
    const AdbClient& adb_;
    const std::string serial_;
    std::unique_ptr<sys::PipedProcess> shell_;
};

}  // namespace autoscene::platform::android
