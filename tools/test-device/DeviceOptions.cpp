#include "DeviceOptions.h"

#include <charconv>

namespace autoscene::testdevice {

namespace {

bool parseInt(const std::string& text, int min, int max, int& out) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < min || value > max) {
        return false;
    }
    out = value;
    return true;
}

}  // namespace

std::optional<DeviceOptions> parseDeviceOptions(const std::vector<std::string>& arguments,
                                                std::string& error) {
    DeviceOptions options;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        if (name == "--help") {
            options.help = true;
            continue;
        }
        if (name == "--service-broken" || name == "--textured") {
            (name == "--textured" ? options.device.textured : options.serviceBroken) = true;
            continue;
        }
        if (i + 1 == arguments.size()) {
            error = "unknown option or missing value: " + name;
            return std::nullopt;
        }
        const std::string& value = arguments[++i];
        bool ok = true;
        if (name == "--port") {
            ok = parseInt(value, 0, 65535, options.port);
        } else if (name == "--log") {
            options.logPath = value;
        } else if (name == "--density") {
            ok = parseInt(value, 1, 2000, options.device.density);
        } else if (name == "--screencap-header") {
            ok = parseInt(value, 12, 16, options.device.screencapHeaderBytes) &&
                 (options.device.screencapHeaderBytes == 12 ||
                  options.device.screencapHeaderBytes == 16);
        } else if (name == "--raw-format") {
            ok = parseInt(value, 1, 255, options.device.rawFormat);
        } else if (name == "--size") {
            const size_t x = value.find('x');
            ok = x != std::string::npos &&
                 parseInt(value.substr(0, x), 1, 8192, options.device.width) &&
                 parseInt(value.substr(x + 1), 1, 8192, options.device.height);
        } else {
            error = "unknown option: " + name;
            return std::nullopt;
        }
        if (!ok) {
            error = "bad value for " + name + ": " + value;
            return std::nullopt;
        }
    }
    return options;
}

}  // namespace autoscene::testdevice
