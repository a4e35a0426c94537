#include "targets/DeviceTarget.h"

#include <QLoggingCategory>
#include <algorithm>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "android/AdbOutput.h"
#include "android/AdbRoute.h"
#include "android/AndroidInput.h"
#include "android/ServiceRoute.h"
#include "keys/KeyGroupPress.h"

namespace autoscene::targets {

Q_LOGGING_CATEGORY(lcDevice, "autoscene.targets.device")

using platform::MouseOp;
using platform::Point;
namespace android = platform::android;

namespace {

constexpr const char* kServiceInputMethod = "cn.morvane.remoteinput/.EditorIME";

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

std::string selectInputMethod(const std::string& id) {
    return "ime enable " + id + " && ime set " + id;
}

}  // namespace

DeviceTarget::DeviceTarget(android::AdbClient adb, Options options)
    : adb_(std::move(adb)),
      options_(std::move(options)),
      services_(
          adb_, options_.serviceFile, options_.keys,
          [](const std::string& line) { qCDebug(lcDevice).noquote() << line.c_str(); },
          cancelled_.get_token()) {}

DeviceTarget::~DeviceTarget() = default;

std::unique_ptr<android::IDeviceRoute> DeviceTarget::chooseRoute(const std::string& serial) {
    std::error_code error;
    const bool serviceFile = std::filesystem::is_regular_file(options_.serviceFile, error);
    if (options_.route == Route::Adb || (options_.route == Route::Auto && !serviceFile)) {
        return std::make_unique<android::AdbRoute>(adb_, serial);
    }
    auto service = std::make_unique<android::ServiceRoute>(
        services_, serial,
        [](const std::string& line) { qCDebug(lcDevice).noquote() << line.c_str(); },
        options_.serviceWait);
    if (options_.route == Route::Service) {
        return service;
    }
    const android::DeviceCapture trial = service->capture(cancelled_.get_token());
    if (!trial.frame.empty()) {
        return service;
    }
    if (cancelled_.stop_requested()) {
        qCInfo(lcDevice).noquote()
            << "device" << serial.c_str() << "the run ended before its service answered: adb alone";
        return std::make_unique<android::AdbRoute>(adb_, serial);
    }
    qCWarning(lcDevice).noquote() << "device" << serial.c_str()
                                  << "service did not answer:" << trial.error.c_str()
                                  << "- driving it by adb alone";
    return std::make_unique<android::AdbRoute>(adb_, serial);
}

DeviceTarget::Device& DeviceTarget::device(const QString& serial) {
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = devices_.find(serial); found != devices_.end()) {
            return *found->second;
        }
    }
    // Chosen without the lock: trying the service may take seconds, and other devices'
    // workers must not wait for that.
    auto chosen = std::make_unique<Device>();
    chosen->route = chooseRoute(serial.toStdString());
    const std::lock_guard lock(mutex_);
    std::unique_ptr<Device>& entry = devices_[serial];
    if (!entry) {
        entry = std::move(chosen);
        qCInfo(lcDevice).noquote() << "device" << serial << "route" << entry->route->name();
    }
    return *entry;
}

QString DeviceTarget::routeOf(const QString& serial) {
    return QString::fromUtf8(device(serial).route->name());
}

void DeviceTarget::report(const QString& serial, const char* what, const std::string& error) const {
    if (!error.empty()) {
        qCWarning(lcDevice).noquote() << "device" << serial << what << "failed:" << error.c_str();
    }
}

void DeviceTarget::reportInput(const QString& serial, Device& d, const char* what,
                               const std::string& error) {
    report(serial, what, error);
    if (!error.empty() && d.inputError.empty()) {
        d.inputError = std::string(what) + ": " + error;
    }
}

QString DeviceTarget::takeInputError(const engine::TaskInfo& task) {
    return QString::fromStdString(std::exchange(device(task.serial).inputError, {}));
}

void DeviceTarget::targetStarted(const engine::TaskInfo& task) {
    Device& d = device(task.serial);
    const std::string serial = task.serial.toStdString();
    const android::AdbResult size = adb_.shell(serial, "wm size", task.stop);
    // A device that did not answer the first will not answer the second either.
    const android::AdbResult density =
        size.ran ? adb_.shell(serial, "wm density", task.stop) : size;
    if (task.stop.stop_requested()) {
        return;
    }
    std::string error = size.ran ? std::string() : size.output;
    std::optional<android::ScreenSize> screen;
    std::optional<int> dpi;
    if (size.ran) {
        screen = android::parseWmSize(size.output, error);
        dpi = android::parseWmDensity(density.output, error);
    }
    if (!screen || !dpi) {
        qCWarning(lcDevice).noquote()
            << "device" << task.serial << "screen size unknown:" << error.c_str();
    } else {
        qCDebug(lcDevice).noquote() << "device" << task.serial << "screen" << screen->width << "x"
                                    << screen->height << "density" << *dpi;
    }
    if (std::string(d.route->name()) == "service") {
        const android::AdbResult current =
            adb_.shell(serial, "settings get secure default_input_method", task.stop);
        if (!current.ran) {
            report(task.serial, "reading the input method", current.output);
            return;
        }
        d.savedInputMethod = current.output.substr(0, current.output.find_first_of("\r\n"));
        adb_.shell(serial, selectInputMethod(kServiceInputMethod), task.stop);
    }
}

void DeviceTarget::targetEnded(const engine::TaskInfo& task) {
    Device& d = device(task.serial);
    if (d.savedInputMethod.empty()) {
        return;
    }
    // Not bound by the run's stop, which has come by now: only the time limit ends it.
    const std::string serial = task.serial.toStdString();
    adb_.shell(serial, d.savedInputMethod == "null" ? std::string("ime reset")
                                                    : selectInputMethod(d.savedInputMethod));
    d.savedInputMethod.clear();
}

bool DeviceTarget::capture(const engine::TaskInfo& task, const platform::FrameConsumer& consume) {
    Device& d = device(task.serial);
    const android::DeviceCapture captured = d.route->capture(task.stop);
    if (!captured.frame.empty() || !captured.png.empty()) {
        d.missingSince.reset();
    }
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
    if (task.stop.stop_requested()) {
        return false;  // the run is ending: not a failure of the device
    }
    report(task.serial, "capture", captured.error);
    d.route->recover(captured.error);
    checkPresence(task, d);
    return false;
}

void DeviceTarget::checkPresence(const engine::TaskInfo& task, Device& d) {
    const android::AdbResult listed = adb_.run({}, "devices", task.stop);
    if (task.stop.stop_requested()) {
        return;
    }
    const std::vector<std::string> ready =
        android::readySerials(android::parseDeviceList(listed.output));
    const auto now = std::chrono::steady_clock::now();
    if (listed.ran &&
        std::find(ready.begin(), ready.end(), task.serial.toStdString()) != ready.end()) {
        d.missingSince.reset();
    } else if (!d.missingSince) {
        d.missingSince = now;
    } else if (now - *d.missingSince >= options_.lostAfter && !lost_) {
        const std::lock_guard lock(mutex_);
        if (!lost_) {
            lostText_ =
                QStringLiteral("device %1 has not been listed by adb devices for %2 s")
                    .arg(task.serial)
                    .arg(std::chrono::duration_cast<std::chrono::seconds>(options_.lostAfter)
                             .count());
            qCWarning(lcDevice).noquote() << lostText_;
            lost_ = true;
        }
    }
}

QString DeviceTarget::lostTargetText() {
    const std::lock_guard lock(mutex_);
    return lostText_;
}

void DeviceTarget::mouse(const engine::TaskInfo& task, Point point, MouseOp op, int pressMs) {
    Device& d = device(task.serial);
    const bool atLast = point.x < 0 || point.y < 0;  // a mouse-up action names no point
    const Point at = atLast ? d.last : point;
    std::string error;
    switch (op) {
        case MouseOp::LeftClick:
            error = d.route->tap(at, pressMs, task.stop);
            break;
        case MouseOp::LeftDown:
            d.path = {at};
            d.downAt = std::chrono::steady_clock::now();
            break;
        case MouseOp::Move:
            if (!d.path.empty()) {
                d.path.push_back(at);
            }
            break;
        case MouseOp::LeftUp:
            if (!d.path.empty()) {
                d.path.push_back(at);
                const auto heldMs = std::chrono::duration_cast<std::chrono::milliseconds>(
                                        std::chrono::steady_clock::now() - d.downAt)
                                        .count();
                error = d.route->swipe(d.path, int(std::max<std::int64_t>(heldMs, 1)), task.stop);
                d.path.clear();
            }
            break;
        default:  // the right button does nothing on a device
            return;
    }
    d.last = at;
    reportInput(task.serial, d, "touch", error);
}

void DeviceTarget::key(const engine::TaskInfo& task, int virtualKey, platform::KeyOp op) {
    Device& d = device(task.serial);
    reportInput(task.serial, d, "key",
                d.route->key(android::androidKeyCode(virtualKey), op, task.stop));
}

bool DeviceTarget::keyGroup(const engine::TaskInfo& task, const std::vector<int>& group) {
    return platform::keys::sendKeyGroup(
        group, task.stop, [&](int entry, platform::KeyOp op) { key(task, entry, op); });
}

void DeviceTarget::inputText(const engine::TaskInfo& task, const QString& text) {
    Device& d = device(task.serial);
    reportInput(task.serial, d, "text", d.route->text(text.toStdString(), task.stop));
}

QString DeviceTarget::untypableText(const engine::TaskInfo& task, const QString& text) {
    return QString::fromStdString(device(task.serial).route->untypable(text.toStdString()));
}

QString DeviceTarget::startApp(const engine::TaskInfo& task, const QString& package,
                               const QString& activity) {
    const std::string error =
        device(task.serial)
            .route->startApp(package.toStdString(), activity.toStdString(), task.stop);
    report(task.serial, "app start", error);
    return QString::fromStdString(error);
}

}  // namespace autoscene::targets
