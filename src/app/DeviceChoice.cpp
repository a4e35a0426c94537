#include "app/DeviceChoice.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <algorithm>

#include "android/AdbOutput.h"
#include "app/TaskRun.h"

namespace autoscene::app {

Q_LOGGING_CATEGORY(lcDevices, "autoscene.app.devices")

namespace android = platform::android;

android::AdbClient adbClientFor(const RunOptions& options) {
    return android::AdbClient(
        android::findAdbProgram(QCoreApplication::applicationDirPath().toStdString(),
                                options.adbProgram.toStdString()),
        std::chrono::seconds(options.adbTimeoutSeconds));
}

targets::DeviceTarget::Options deviceTargetOptions(const RunOptions& options) {
    using Route = targets::DeviceTarget::Route;
    targets::DeviceTarget::Options device;
    device.route = options.deviceRoute == "service" ? Route::Service
                   : options.deviceRoute == "adb"   ? Route::Adb
                                                    : Route::Auto;
    device.serviceFile = (options.deviceService.isEmpty()
                              ? QCoreApplication::applicationDirPath() + "/adb/localservice.jar"
                              : options.deviceService)
                             .toStdString();
    device.lostAfter = std::chrono::seconds(options.deviceLostSeconds);
    return device;
}

std::variant<std::vector<engine::RunTarget>, int> chooseDevices(const RunOptions& options,
                                                                const android::AdbClient& adb,
                                                                QTextStream& err) {
    const android::AdbResult listed = adb.run({}, "devices");
    if (!listed.ran) {
        err << "adb is not available (" << QString::fromStdString(listed.output)
            << "); install it or name it with --adb PATH\n";
        return kNoTarget;
    }
    const std::vector<std::string> ready =
        android::readySerials(android::parseDeviceList(listed.output));
    std::vector<std::string> chosen;
    if (options.devices.isEmpty()) {
        chosen = ready;
    }
    for (const QString& serial : options.devices) {
        if (std::find(ready.begin(), ready.end(), serial.toStdString()) == ready.end()) {
            err << "device " << serial << " is not connected (adb devices)\n";
        } else {
            chosen.push_back(serial.toStdString());
        }
    }
    if (chosen.empty()) {
        qCWarning(lcDevices) << "未发现ADB设备，请先连接设备";
        err << "no ADB device found; connect a device first\n";
        return kNoTarget;
    }
    std::vector<engine::RunTarget> targets;
    for (const std::string& serial : chosen) {
        engine::RunTarget target;
        target.kind = engine::TargetKind::AndroidDevice;
        target.serial = QString::fromStdString(serial);
        target.variableOverrides = options.variables;
        targets.push_back(std::move(target));
    }
    return targets;
}

bool printDeviceTargets(const android::AdbClient& adb, bool json, QTextStream& out,
                        QTextStream& err) {
    const android::AdbResult listed = adb.run({}, "devices");
    if (!listed.ran) {
        err << "adb is not available (" << QString::fromStdString(listed.output) << ")\n";
        return false;
    }
    for (const android::DeviceEntry& device : android::parseDeviceList(listed.output)) {
        const QString serial = QString::fromStdString(device.serial);
        const QString state = QString::fromStdString(device.state);
        if (json) {
            const QJsonObject line{
                {"type", "target"}, {"kind", "device"}, {"serial", serial}, {"state", state}};
            out << QJsonDocument(line).toJson(QJsonDocument::Compact) << '\n';
        } else {
            out << "device " << serial << " (" << state << ")\n";
        }
    }
    return true;
}

}  // namespace autoscene::app
