#pragma once
// Command line of the test device, parsed apart from the sockets so that tests can call it.

#include <optional>
#include <string>
#include <vector>

#include "DeviceShell.h"

namespace autoscene::testdevice {

struct DeviceOptions {
    int port = 0;  // 0: any free port, printed on the first line of standard output
    std::string logPath;
    DeviceConfig device;
    bool serviceBroken = false;  // app_process cannot start the device service
    bool help = false;
};

inline constexpr const char* kDeviceUsage =
    "usage: autoscene-test-device [--port N] [--size WxH] [--density DPI]\n"
    "                             [--screencap-header 12|16] [--raw-format CODE]\n"
    "                             [--service-broken] [--textured]\n"
    "                             [--log FILE]\n";

std::optional<DeviceOptions> parseDeviceOptions(const std::vector<std::string>& arguments,
                                                std::string& error);

}  // namespace autoscene::testdevice
