#include "android/AdbRoute.h"

#include "android/AndroidInput.h"
#include "android/ScreencapFrame.h"

namespace autoscene::platform::android {

namespace {

constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1a\n";

// adb itself prints "error: ..." (device offline, not found); a device command that
// does not exist, "... not found"; everything the commands here print on success is
// either nothing or a known first word.
AdbError failureOf(const AdbResult& result) {
    if (!result.ran) {
        return result.output;
    }
    if (result.output.find("error:") != std::string::npos ||
        result.output.find("Error:") != std::string::npos ||
        result.output.find("not found") != std::string::npos ||
        result.output.find("aborted") != std::string::npos ||
        result.output.find("Usage:") != std::string::npos) {
        const size_t end = result.output.find('\n');
        return result.output.substr(0, end);
    }
    return {};
}

std::string number(int value) {
    return std::to_string(value);
}

}  // namespace

DeviceCapture AdbRoute::capture(std::stop_token stop) {
    DeviceCapture result;
    bool png = false;
    {
        const std::lock_guard lock(mutex_);
        png = pngOnly_;
    }
    const AdbResult output = adb_.execOut(serial_, png ? "screencap -p" : "screencap", stop);
    if (!output.ran || output.output.compare(0, 6, "error:") == 0) {
        result.error = output.output.substr(0, output.output.find('\n'));
        return result;
    }
    if (png) {
        if (output.output.compare(0, kPngSignature.size(), kPngSignature) != 0) {
            result.error = "screencap -p: no PNG: " + output.output.substr(0, 80);
            return result;
        }
        result.png = output.output;
        return result;
    }
    DecodedFrame decoded = decodeScreencap(output.output);
    if (decoded.unknownFormat) {
        {
            const std::lock_guard lock(mutex_);
            pngOnly_ = true;
        }
        return capture(stop);
    }
    result.frame = std::move(decoded.frame);
    result.error = std::move(decoded.error);
    return result;
}

void AdbRoute::recover(const std::string& error) {
    const bool lost =
        error.find("offline") != std::string::npos || error.find("not found") != std::string::npos;
    if (!lost || serial_.find(':') == std::string::npos) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        const auto now = std::chrono::steady_clock::now();
        if (now - lastReconnect_ < std::chrono::seconds(1)) {
            return;
        }
        lastReconnect_ = now;
    }
    adb_.run({}, "disconnect " + quoteWord(serial_));
    adb_.run({}, "connect " + quoteWord(serial_));
}

AdbError AdbRoute::shellInput(const std::string& command, const std::stop_token& stop) {
    return failureOf(inputShell_.run("input " + command, stop));
}

AdbError AdbRoute::tap(Point point, int pressMs, std::stop_token stop) {
    const std::string at = number(point.x) + " " + number(point.y);
    return pressMs > 0 ? shellInput("swipe " + at + " " + at + " " + number(pressMs), stop)
                       : shellInput("tap " + at, stop);
}

AdbError AdbRoute::swipe(const std::vector<Point>& path, int durationMs, std::stop_token stop) {
    if (path.size() < 2) {
        return "a swipe needs two points";
    }
    const Point from = path.front();
    const Point to = path.back();
    return shellInput("swipe " + number(from.x) + " " + number(from.y) + " " + number(to.x) + " " +
                          number(to.y) + " " + number(durationMs),
                      stop);
}

AdbError AdbRoute::key(int androidKeyCode, KeyOp op, std::stop_token stop) {
    return op == KeyOp::Up ? AdbError() : shellInput("keyevent " + number(androidKeyCode), stop);
}

AdbError AdbRoute::text(const std::string& utf8, std::stop_token stop) {
    return shellInput("text " + inputTextArgument(utf8).argument, stop);
}

std::string AdbRoute::untypable(const std::string& utf8) const {
    return inputTextArgument(utf8).dropped;
}

AdbError AdbRoute::startApp(const std::string& package, const std::string& activity,
                            std::stop_token stop) {
    const auto safe = [](const std::string& name) {
        return !name.empty() && name.find_first_not_of(
                                    "abcdefghijklmnopqrstuvwxyz"
                                    "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._$") == std::string::npos;
    };
    if (!safe(package) || (!activity.empty() && !safe(activity))) {
        return "not a package or activity name: " + package + " " + activity;
    }
    const std::string command =
        activity.empty() ? "monkey -p " + package + " -c android.intent.category.LAUNCHER 1"
                         : "am start -n " + package + "/" + activity;
    return failureOf(adb_.shell(serial_, command, std::move(stop)));
}

}  // namespace autoscene::platform::android
