#pragma once
// The device target service: capture and input for Android devices (target kind 3),
// driven by adb alone. One worker thread serves each device, so a device's pointer state
// is touched by that thread only.

#include <QString>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "android/AdbClient.h"
#include "android/AdbRoute.h"
#include "engine/TargetService.h"

namespace autoscene::targets {

class DeviceTarget : public engine::ITargetService {
public:
    explicit DeviceTarget(platform::android::AdbClient adb);

    bool capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) override;
    bool isWindow(platform::WindowHandle) override { return false; }
    std::vector<platform::WindowHandle> candidateWindows() override { return {}; }
    void targetStarted(const engine::TaskInfo& task) override;

    // Left button only: a click taps; a down, moves and an up make one swipe from the down
    // point to the up point that lasts as long as the button was held.
    void mouse(const engine::TaskInfo& task, platform::Point point, platform::MouseOp op,
               int pressMs) override;
    void wheel(const engine::TaskInfo&, int, platform::Point) override {}
    // A device has no separate key down and up here: a press is sent on click, system
    // press and down; an up sends nothing.
    void key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) override;
    // The keys one after the other: "input keyevent" has no chords.
    void keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) override;
    void inputText(const engine::TaskInfo& task, const QString& text) override;
    QString untypableText(const engine::TaskInfo& task, const QString& text) override;
    QString startApp(const engine::TaskInfo& task, const QString& package,
                     const QString& activity) override;

private:
    struct Device {
        explicit Device(const platform::android::AdbClient& adb, const std::string& serial)
            : route(adb, serial) {}
        platform::android::AdbRoute route;
        std::optional<platform::Point> down;  // where the left button went down
        platform::Point last;                 // where the pointer was last sent
        std::chrono::steady_clock::time_point downAt;
    };

    Device& device(const QString& serial);
    void report(const QString& serial, const char* what, const std::string& error) const;

    const platform::android::AdbClient adb_;
    std::mutex mutex_;
    std::map<QString, std::unique_ptr<Device>> devices_;
};

}  // namespace autoscene::targets
