#pragma once
// Driving one device through its device service: every request asks DeviceServices for
// the local port first (starting the service when needed) and then speaks HTTP to it.

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "android/DeviceRoute.h"
#include "android/DeviceServices.h"
#include "android/ServiceFrame.h"

namespace autoscene::platform::android {

// The touch action that stands for a whole tap (down, hold, up).
constexpr int kTouchTap = -1;

// The key action value of a key operation: -1 press and release, 0 down, 1 up.
int keyActionOf(KeyOp op);

// A swipe is one "/slide" of its whole path: "slideTime" the whole time from the first
// point to the last, "times" 1, "pressTime" 0. The first frame after any input is asked
// for with "?immediately=1", so that it shows what the input did.
class ServiceRoute : public IDeviceRoute {
public:
    // `portWait` bounds each request's wait for the service's port.
    ServiceRoute(DeviceServices& services, std::string serial, LogSink log,
                 std::chrono::milliseconds portWait);

    const char* name() const override { return "service"; }
    DeviceCapture capture(std::stop_token stop) override;
    AdbError tap(Point point, int pressMs, std::stop_token stop) override;
    AdbError swipe(const std::vector<Point>& path, int durationMs, std::stop_token stop) override;
    AdbError key(int androidKeyCode, KeyOp op, std::stop_token stop) override;
    // Typed by the device's input method, which takes any text.
    AdbError text(const std::string& utf8, std::stop_token stop) override;
    std::string untypable(const std::string&) const override { return {}; }
    std::optional<ServiceFrameInfo> lastFrameInfo() const override;
    AdbError startApp(const std::string& package, const std::string& activity,
                      std::stop_token stop) override;

private:
    // "http://127.0.0.1:PORT", or empty when the service did not come up in time.
    std::string base(const std::stop_token& stop);
    AdbError get(const std::string& pathAndQuery, const char* logPrefix,
                 const std::stop_token& stop);
    // Keeps `info` as the device's frame geometry, logged when it changes.
    void remember(const ServiceFrameInfo& info);

    DeviceServices& services_;
    const std::string serial_;
    const LogSink log_;
    const std::chrono::milliseconds portWait_;
    std::atomic<bool> inputSinceFrame_{false};
    mutable std::mutex infoMutex_;
    std::optional<ServiceFrameInfo> lastFrameInfo_;
};

// `text` percent-encoded for a query value (UTF-8 bytes; unreserved characters as they are).
std::string percentEncode(const std::string& text);

}  // namespace autoscene::platform::android
