#include "targets/DeviceTarget.h"

#include <QLoggingCategory>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "android/AdbOutput.h"
#include "android/AndroidInput.h"

namespace autoscene::targets {

Q_LOGGING_CATEGORY(lcDevice, "autoscene.targets.device")

using platform::MouseOp;
using platform::Point;
namespace android = platform::android;

namespace {

bool deliverPng(const std::string& png, const platform::FrameConsumer& consume) {
    const cv::Mat encoded(1, int(png.size()), CV_8UC1, const_cast<char*>(png.data()));
    const cv::Mat decoded = cv::imdecode(encoded, cv::IMREAD_UNCHANGED);
    if (decoded.empty() || decoded.depth() != CV_8U ||
        (decoded.channels() != 3 && decoded.channels() != 4)) {
        return false;
    }
    cv::Mat bgra = decoded;
    if (decoded.channels() == 3) {
        cv::cvtColor(decoded, bgra, cv::COLOR_BGR2BGRA);
    }
    consume({bgra.cols, bgra.rows, int(bgra.step[0]), bgra.data});
    return true;
}

}  // namespace

DeviceTarget::DeviceTarget(android::AdbClient adb) : adb_(std::move(adb)) {}

DeviceTarget::Device& DeviceTarget::device(const QString& serial) {
    const std::lock_guard lock(mutex_);
    std::unique_ptr<Device>& entry = devices_[serial];
    if (!entry) {
        entry = std::make_unique<Device>(adb_, serial.toStdString());
    }
    return *entry;
}

void DeviceTarget::report(const QString& serial, const char* what, const std::string& error) const {
    if (!error.empty()) {
        qCWarning(lcDevice).noquote() << "device" << serial << what << "failed:" << error.c_str();
    }
}

void DeviceTarget::targetStarted(const engine::TaskInfo& task) {
    const std::string serial = task.serial.toStdString();
    const android::AdbResult size = adb_.shell(serial, "wm size");
    const android::AdbResult density = adb_.shell(serial, "wm density");
    std::string error;
    const auto screen = android::parseWmSize(size.output, error);
    const auto dpi = android::parseWmDensity(density.output, error);
    if (!screen || !dpi) {
        qCWarning(lcDevice).noquote()
            << "device" << task.serial << "screen size unknown:" << error.c_str();
    }
    qCInfo(lcDevice).noquote() << "device" << task.serial << "route adb, screen"
                               << (screen ? screen->width : 0) << "x"
                               << (screen ? screen->height : 0) << "density" << dpi.value_or(0);
}

bool DeviceTarget::capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) {
    const android::DeviceCapture captured = device(task.serial).route.capture();
    if (!captured.frame.empty()) {
        const platform::BgraFrame& frame = captured.frame;
        consume({frame.width, frame.height, frame.stride, frame.pixels.data()});
        return true;
    }
    if (!captured.png.empty()) {
        if (deliverPng(captured.png, consume)) {
            return true;
        }
        report(task.serial, "capture", "screencap -p: not a PNG image OpenCV can read");
        return false;
    }
    report(task.serial, "capture", captured.error);
    device(task.serial).route.reconnectIfLost(captured.error);
    return false;
}

void DeviceTarget::mouse(const engine::TaskInfo& task, Point point, MouseOp op, int pressMs) {
    Device& d = device(task.serial);
    const bool atLast = point.x < 0 || point.y < 0;  // a mouse-up action names no point
    const Point at = atLast ? d.last : point;
    std::string error;
    switch (op) {
        case MouseOp::LeftClick:
            error = d.route.tap(at, pressMs);
            break;
        case MouseOp::LeftDown:
            d.down = at;
            d.downAt = std::chrono::steady_clock::now();
            break;
        case MouseOp::Move:
            break;
        case MouseOp::LeftUp:
            if (d.down) {
                const auto heldMs = std::chrono::duration_cast<std::chrono::milliseconds>(
                                        std::chrono::steady_clock::now() - d.downAt)
                                        .count();
                const int durationMs = int(std::max<std::int64_t>(heldMs, 1));
                error = d.route.swipe(*d.down, at, durationMs);
                d.down.reset();
            }
            break;
        default:  // the right button does nothing on a device
            return;
    }
    d.last = at;
    report(task.serial, "touch", error);
}

void DeviceTarget::key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) {
    if (op == platform::KeyOp::Up) {
        return;
    }
    report(task.serial, "key", device(task.serial).route.key(android::androidKeyCode(virtualKey)));
}

void DeviceTarget::keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) {
    for (const int virtualKey : group) {
        key(task, virtualKey, platform::KeyOp::Click);
    }
}

void DeviceTarget::inputText(const engine::TaskInfo& task, const QString& text) {
    const android::ShellText typed = android::inputTextArgument(text.toStdString());
    report(task.serial, "text", device(task.serial).route.text(typed.argument));
}

QString DeviceTarget::untypableText(const engine::TaskInfo&, const QString& text) {
    return QString::fromStdString(android::inputTextArgument(text.toStdString()).dropped);
}

QString DeviceTarget::startApp(const engine::TaskInfo& task, const QString& package,
                               const QString& activity) {
    const std::string error =
        device(task.serial).route.startApp(package.toStdString(), activity.toStdString());
    report(task.serial, "app start", error);
    return QString::fromStdString(error);
}

}  // namespace autoscene::targets
