#pragma once
// Driving one device by adb alone, with nothing installed on it: frames from
// "exec-out screencap", input through "input" in a kept "adb shell", apps through monkey
// and am.

#include <chrono>
#include <mutex>
#include <string>

#include "android/AdbClient.h"
#include "android/AdbShellSession.h"
#include "android/DeviceRoute.h"

namespace autoscene::platform::android {

// Swipes go straight from the path's first point to its last ("input swipe" takes two);
// keys have no separate down and up: a press, a down and a system press send one key
// event, an up sends nothing.
class AdbRoute : public IDeviceRoute {
public:
    AdbRoute(const AdbClient& adb, std::string serial)
        : adb_(adb), serial_(std::move(serial)), inputShell_(adb, serial_) {}

    const char* name() const override { return "adb"; }
    DeviceCapture capture(std::stop_token stop) override;
    AdbError tap(Point point, int pressMs, std::stop_token stop) override;
    AdbError swipe(const std::vector<Point>& path, int durationMs, std::stop_token stop) override;
    AdbError key(int androidKeyCode, KeyOp op, std::stop_token stop) override;
    AdbError text(const std::string& utf8, std::stop_token stop) override;
    std::string untypable(const std::string& utf8) const override;
    AdbError startApp(const std::string& package, const std::string& activity,
                      std::stop_token stop) override;
    // For a device reached over the network ("host:port") that adb reports offline or
    // missing: connects it afresh, at most once a second. adb does not do it by itself
    // once the device's end of the connection has gone.
    void recover(const std::string& error) override;

private:
    AdbError shellInput(const std::string& command, const std::stop_token& stop);

    const AdbClient& adb_;
    const std::string serial_;
    std::mutex mutex_;
    bool pngOnly_ = false;        // the device's raw pixel format is one this side cannot read
    AdbShellSession inputShell_;  // the worker's thread only
    std::chrono::steady_clock::time_point lastReconnect_;
};

}  // namespace autoscene::platform::android
