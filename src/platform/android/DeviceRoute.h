#pragma once
// How one device is driven: by adb alone (AdbRoute) or through its device service
// (ServiceRoute). Errors are texts, empty for success. Every call gives up once its
// `stop` is requested.

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "android/ServiceFrame.h"
#include "desktop/DesktopBackend.h"

namespace autoscene::platform::android {

struct DeviceCapture {
    BgraFrame frame;  // the frame when it came as pixels
    std::string png;  // or its PNG bytes, for a device whose raw format is unknown here
    std::string error;
};

using AdbError = std::string;

class IDeviceRoute {
public:
    virtual ~IDeviceRoute() = default;
    virtual const char* name() const = 0;  // "adb" or "service"

    virtual DeviceCapture capture(std::stop_token stop) = 0;
    // A press of `pressMs` (0: a plain tap) at one point.
    virtual AdbError tap(Point point, int pressMs, std::stop_token stop) = 0;
    // A swipe along `path` (at least two points) lasting `durationMs`.
    virtual AdbError swipe(const std::vector<Point>& path, int durationMs,
                           std::stop_token stop) = 0;
    virtual AdbError key(int androidKeyCode, KeyOp op, std::stop_token stop) = 0;
    virtual AdbError text(const std::string& utf8, std::stop_token stop) = 0;
    // The characters of `utf8` that text() cannot type.
    virtual std::string untypable(const std::string& utf8) const = 0;
    // The launcher activity of `package`, or `activity` of it when one is given.
    virtual AdbError startApp(const std::string& package, const std::string& activity,
                              std::stop_token stop) = 0;
    // The geometry of the last frame, where the route is told it; none before the first.
    virtual std::optional<ServiceFrameInfo> lastFrameInfo() const { return std::nullopt; }
    // Called with a failed capture's error: a route may try to get the device back.
    virtual void recover(const std::string&) {}
};

}  // namespace autoscene::platform::android
