#pragma once
// The device services of every device: one HTTP service per device, started on the
// device with app_process from an adb shell that is kept as a child process, reached
// through an adb forward. A device's local port is in the map exactly while its service
// process lives; when it ends the entry and the forward go, and the next request starts
// everything again.

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "android/AdbClient.h"
#include "system/Process.h"

namespace autoscene::platform::android {

constexpr int kServiceDevicePort = 10240;

// Hands out the key the device service asks for, anew for each start.
class IServiceKeyProvider {
public:
    virtual ~IServiceKeyProvider() = default;
    virtual std::string serviceKey() = 0;
};

using LogSink = std::function<void(const std::string&)>;

class DeviceServices {
public:
    // `serviceFile` is the service's code on this computer; `keys` may be null (empty key).
    // Once `cancelled` is requested, waits for a port end at once.
    DeviceServices(const AdbClient& adb, std::string serviceFile, IServiceKeyProvider* keys,
                   LogSink log, std::stop_token cancelled);
    // Ends every service process started here and waits for their threads.
    ~DeviceServices();
    DeviceServices(const DeviceServices&) = delete;
    DeviceServices& operator=(const DeviceServices&) = delete;

    // The local port of the device's service. When there is none, starts it, looks again
    // after 500 ms and then every 50 ms; none once `limit` has passed, `stop` is requested
    // or the waits are cancelled.
    std::optional<int> port(const std::string& serial, std::chrono::milliseconds limit,
                            const std::stop_token& stop = {});

private:
    std::optional<int> lookUp(const std::string& serial);
    // The service thread: forward, push, start, wait for the end, clean up.
    void serve(const std::string& serial);
    std::optional<int> forwardedPort(const std::string& serial) const;

    const AdbClient& adb_;
    const std::string serviceFile_;
    IServiceKeyProvider* const keys_;
    const LogSink log_;
    const std::stop_token cancelled_;
    std::mutex mutex_;  // everything below
    std::map<std::string, int> ports_;
    std::set<std::string> starting_;
    std::vector<sys::HiddenProcess> processes_;
    std::vector<std::thread> threads_;
    bool closing_ = false;
    std::stop_source closingStop_;  // ends the adb calls of service threads on closing
};

}  // namespace autoscene::platform::android
