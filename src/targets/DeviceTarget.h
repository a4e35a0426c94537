#pragma once
// The device target service: capture and input for Android devices (target kind 3),
// each device driven through its device service or by adb alone. One worker thread serves
// each device, so a device's pointer state is touched by that thread only.

#include <QString>
#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "android/AdbClient.h"
#include "android/DeviceRoute.h"
#include "android/DeviceServices.h"
#include "engine/TargetService.h"

namespace autoscene::targets {

class DeviceTarget : public engine::ITargetService {
public:
    enum class Route { Auto, Service, Adb };

    struct Options {
        // Auto: the device service when its file exists and it answers within
        // `serviceWait`, adb alone otherwise.
        Route route = Route::Auto;
        std::string serviceFile;  // the device service's code on this computer
        platform::android::IServiceKeyProvider* keys = nullptr;  // none: an empty key
        std::chrono::milliseconds serviceWait{5000};
        // A device that adb has not listed as ready for this long, while its captures
        // fail, is lost for good: the run ends.
        std::chrono::milliseconds lostAfter{30000};
    };

    DeviceTarget(platform::android::AdbClient adb, Options options);
    ~DeviceTarget() override;

    // "service" or "adb": how the device is driven, chosen on first use and logged once.
    // Choosing may wait for the device service; cancelWaits() cuts that short.
    QString routeOf(const QString& serial);
    // The geometry of the device's last frame, where its route is told it (the service).
    std::optional<platform::android::ServiceFrameInfo> frameInfo(const QString& serial) {
        return device(serial).route->lastFrameInfo();
    }
    // Ends every wait for a device service at once, and fails later ones at once: the run
    // is stopping.
    void cancelWaits() { cancelled_.request_stop(); }

    bool capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) override;
    bool isWindow(platform::WindowHandle) override { return false; }
    bool displayLost() override { return lost_; }
    QString lostTargetText() override;
    std::vector<platform::WindowHandle> candidateWindows() override { return {}; }
    // On the service route the device's input method is switched to the service's at the
    // start and the one it had is selected again at the end.
    void targetStarted(const engine::TaskInfo& task) override;
    void targetEnded(const engine::TaskInfo& task) override;

    // Left button only: a click taps; a down, moves and an up make one swipe along the
    // points, lasting as long as the button was held. The right button does nothing.
    void mouse(const engine::TaskInfo& task, platform::Point point, platform::MouseOp op,
               int pressMs) override;
    void wheel(const engine::TaskInfo&, int, platform::Point) override {}
    void key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) override;
    bool keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) override;
    void inputText(const engine::TaskInfo& task, const QString& text) override;
    QString takeInputError(const engine::TaskInfo& task) override;
    QString untypableText(const engine::TaskInfo& task, const QString& text) override;
    QString startApp(const engine::TaskInfo& task, const QString& package,
                     const QString& activity) override;

private:
    struct Device {
        std::unique_ptr<platform::android::IDeviceRoute> route;
        std::vector<platform::Point> path;  // since the left button went down
        platform::Point last;               // where the pointer was last sent
        std::chrono::steady_clock::time_point downAt;
        std::string savedInputMethod;  // on the service route, while a run uses it
        std::string inputError;        // the first since takeInputError last read it
        // Since when adb has not listed the device as ready; none while it does.
        std::optional<std::chrono::steady_clock::time_point> missingSince;
    };

    Device& device(const QString& serial);
    std::unique_ptr<platform::android::IDeviceRoute> chooseRoute(const std::string& serial);
    void report(const QString& serial, const char* what, const std::string& error) const;
    void reportInput(const QString& serial, Device& d, const char* what, const std::string& error);
    // After a failed capture: whether adb still lists the device, and for how long not.
    void checkPresence(const engine::TaskInfo& task, Device& d);

    const platform::android::AdbClient adb_;
    const Options options_;
    std::stop_source cancelled_;
    std::atomic<bool> lost_{false};
    QString lostText_;  // under mutex_; set once, before lost_
    platform::android::DeviceServices services_;
    std::mutex mutex_;
    std::map<QString, std::unique_ptr<Device>> devices_;
};

}  // namespace autoscene::targets
