#pragma once
// Driving one device by adb alone, with nothing installed on it: frames from
// "exec-out screencap", input through "shell input", apps through monkey and am.

#include <chrono>
#include <mutex>
#include <string>

#include "android/AdbClient.h"
#include "desktop/DesktopBackend.h"

namespace autoscene::platform::android {

struct DeviceCapture {
    BgraFrame frame;  // the frame when it came raw
    std::string png;  // or its PNG bytes, for a device whose raw format is unknown here
    std::string error;

    bool ok() const { return !frame.empty() || !png.empty(); }
};

// What an adb call said when it failed; empty for success.
using AdbError = std::string;

class AdbRoute {
public:
    AdbRoute(const AdbClient& adb, std::string serial) : adb_(adb), serial_(std::move(serial)) {}

    DeviceCapture capture();
    // A press of `pressMs` (0: a plain tap) at one point.
    AdbError tap(Point point, int pressMs);
    AdbError swipe(Point from, Point to, int durationMs);
    AdbError key(int androidKeyCode);
    // Types `shellArgument` (see inputTextArgument).
    AdbError text(const std::string& shellArgument);
    // The launcher activity of `package`, or `activity` of it when one is given.
    AdbError startApp(const std::string& package, const std::string& activity);
    // For a device reached over the network ("host:port") that adb reports offline or
    // missing: connects it afresh, at most once a second. adb does not do it by itself
    // once the device's end of the connection has gone.
    void reconnectIfLost(const std::string& error);

private:
    AdbError shellInput(const std::string& command);

    const AdbClient& adb_;
    const std::string serial_;
    std::mutex mutex_;
    bool pngOnly_ = false;  // the device's raw pixel format is one this side cannot read
    std::chrono::steady_clock::time_point lastReconnect_;
};

}  // namespace autoscene::platform::android
