#include "android/AdbOutput.h"

#include <charconv>
#include <climits>
#include <cstdint>

namespace autoscene::platform::android {

namespace {

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> out;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        out.push_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return out;
}

std::string_view trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The value after "NAME:" of the first line starting with NAME.
std::optional<std::string_view> field(std::string_view output, std::string_view name) {
    for (const std::string_view line : lines(output)) {
        if (line.substr(0, name.size()) == name && line.size() > name.size() &&
            line[name.size()] == ':') {
            return trim(line.substr(name.size() + 1));
        }
    }
    return std::nullopt;
}

std::optional<ScreenSize> parseSize(std::string_view text, std::string& error) {
    const size_t x = text.find('x');
    if (x == std::string_view::npos) {
        error = kNotANumber;
        return std::nullopt;
    }
    const auto width = toCheckedInt(text.substr(0, x), error);
    const auto height = width ? toCheckedInt(text.substr(x + 1), error) : std::nullopt;
    if (!height) {
        return std::nullopt;
    }
    return ScreenSize{*width, *height};
}

}  // namespace

std::vector<DeviceEntry> parseDeviceList(std::string_view output) {
    std::vector<DeviceEntry> devices;
    for (const std::string_view line : lines(output)) {
        const size_t tab = line.find('\t');
        if (line.empty() || line[0] == '*' || tab == std::string_view::npos) {
            continue;
        }
        const std::string_view rest = line.substr(tab + 1);
        devices.push_back(
            {std::string(line.substr(0, tab)), std::string(trim(rest.substr(0, rest.find(' '))))});
    }
    return devices;
}

std::vector<std::string> readySerials(const std::vector<DeviceEntry>& devices) {
    std::vector<std::string> serials;
    for (const DeviceEntry& device : devices) {
        if (device.state == "device") {
            serials.push_back(device.serial);
        }
    }
    return serials;
}

std::optional<int> forwardedLocalPort(std::string_view output, std::string_view serial,
                                      int remotePort) {
    const std::string remote = "tcp:" + std::to_string(remotePort);
    for (const std::string_view line : lines(output)) {
        // SERIAL tcp:LOCAL tcp:REMOTE
        const size_t first = line.find(' ');
        const size_t second = line.find(' ', first + 1);
        if (first == std::string_view::npos || second == std::string_view::npos ||
            line.substr(0, first) != serial || trim(line.substr(second + 1)) != remote) {
            continue;
        }
        const std::string_view local = line.substr(first + 1, second - first - 1);
        std::string error;
        if (local.substr(0, 4) == "tcp:") {
            if (const auto port = toCheckedInt(local.substr(4), error)) {
                return port;
            }
        }
    }
    return std::nullopt;
}

std::optional<int> toCheckedInt(std::string_view text, std::string& error) {
    text = trim(text);
    std::int64_t value = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (status == std::errc::result_out_of_range ||
        (status == std::errc() && (value > INT_MAX || value < INT_MIN))) {
        error = kOutOfIntRange;
        return std::nullopt;
    }
    if (status != std::errc() || end != text.data() + text.size()) {
        error = kNotANumber;
        return std::nullopt;
    }
    return int(value);
}

std::optional<ScreenSize> parseWmSize(std::string_view output, std::string& error) {
    const auto chosen = field(output, "Override size") ? field(output, "Override size")
                                                       : field(output, "Physical size");
    if (!chosen) {
        error = kNotANumber;
        return std::nullopt;
    }
    return parseSize(*chosen, error);
}

std::optional<int> parseWmDensity(std::string_view output, std::string& error) {
    const auto chosen = field(output, "Override size") ? field(output, "Override size")
                                                       : field(output, "Physical density");
    if (!chosen) {
        error = kNotANumber;
        return std::nullopt;
    }
    return toCheckedInt(*chosen, error);
}

}  // namespace autoscene::platform::android
