#pragma once
// Parsers of what adb and the device's shell print. Pure functions on the text.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace autoscene::platform::android {

struct DeviceEntry {
    std::string serial;
    std::string state;  // "device", "offline", "unauthorized", ...
};

// The devices of "adb devices", in order; the header and daemon messages are skipped.
std::vector<DeviceEntry> parseDeviceList(std::string_view output);
// Serials of the entries in state "device".
std::vector<std::string> readySerials(const std::vector<DeviceEntry>& devices);

// A whole decimal number that fits an int; otherwise `error` says which of the two
// ways it failed.
constexpr const char* kNotANumber = "错误：字符串无法转换为数字。";
constexpr const char* kOutOfIntRange = "错误：数字超出int类型范围。";
std::optional<int> toCheckedInt(std::string_view text, std::string& error);

// The local port that "adb forward --list" shows forwarded to `remotePort` of `serial`.
std::optional<int> forwardedLocalPort(std::string_view output, std::string_view serial,
                                      int remotePort);

struct ScreenSize {
    int width = 0;
    int height = 0;
};

// "wm size": the override size when the device has one, else the physical size.
std::optional<ScreenSize> parseWmSize(std::string_view output, std::string& error);
// "wm density": the physical density. The override line is looked for under the name
// "Override size", as the device window always has, so an override density never wins.
std::optional<int> parseWmDensity(std::string_view output, std::string& error);

}  // namespace autoscene::platform::android
