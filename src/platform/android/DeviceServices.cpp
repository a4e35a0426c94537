#include "android/DeviceServices.h"

#include <algorithm>

#include "android/AdbOutput.h"
#include "system/ProcessEnd.h"

namespace autoscene::platform::android {

namespace {

constexpr const char* kDeviceServiceFile = "/data/local/tmp/localservice.jar";
constexpr const char* kServiceClass = "cn.morvane.adb_operation.httpserver.SimpleWebServer";

}  // namespace

DeviceServices::DeviceServices(const AdbClient& adb, std::string serviceFile,
                               IServiceKeyProvider* keys, LogSink log, std::stop_token cancelled)
    : adb_(adb),
      serviceFile_(std::move(serviceFile)),
      keys_(keys),
      log_(std::move(log)),
      cancelled_(std::move(cancelled)) {}

DeviceServices::~DeviceServices() {
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
        closingStop_.request_stop();
        for (const sys::HiddenProcess& process : processes_) {
            sys::terminateProcess(process);
        }
        threads.swap(threads_);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

std::optional<int> DeviceServices::lookUp(const std::string& serial) {
    const std::lock_guard lock(mutex_);
    const auto found = ports_.find(serial);
    return found == ports_.end() ? std::nullopt : std::optional<int>(found->second);
}

std::optional<int> DeviceServices::port(const std::string& serial, std::chrono::milliseconds limit,
                                        const std::stop_token& stop) {
    const auto start = std::chrono::steady_clock::now();
    const auto deadline = start + limit;
    const auto givenUp = [&] { return cancelled_.stop_requested() || stop.stop_requested(); };
    // Sleeps in 50 ms steps until `until`; false when the waits were given up.
    const auto sleepUntil = [&](std::chrono::steady_clock::time_point until) {
        while (!givenUp() && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return !givenUp();
    };
    if (givenUp()) {
        return std::nullopt;
    }
    if (!lookUp(serial)) {
        {
            const std::lock_guard lock(mutex_);
            if (starting_.insert(serial).second) {
                threads_.emplace_back([this, serial] { serve(serial); });
            }
        }
        if (!sleepUntil(std::min(start + std::chrono::milliseconds(500), deadline))) {
            return std::nullopt;
        }
    }
    for (;;) {
        if (const auto port = lookUp(serial)) {
            log_("AdbDevice port find and return....:" + std::to_string(*port));
            return port;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return std::nullopt;
        }
        log_("AdbDevice port not found waiting ....");
        if (!sleepUntil(std::chrono::steady_clock::now() + std::chrono::milliseconds(50))) {
            return std::nullopt;
        }
    }
}

std::optional<int> DeviceServices::forwardedPort(const std::string& serial) const {
    return forwardedLocalPort(adb_.run({}, "forward --list", closingStop_.get_token()).output,
                              serial, kServiceDevicePort);
}

void DeviceServices::serve(const std::string& serial) {
    log_("startLocalService in .... " + serial);
    const auto stopStarting = [&] {
        const std::lock_guard lock(mutex_);
        starting_.erase(serial);
    };
    std::optional<int> port = forwardedPort(serial);
    if (!port) {
        // tcp:0 lets adb choose a free local port.
        adb_.run(serial, "forward tcp:0 tcp:" + std::to_string(kServiceDevicePort),
                 closingStop_.get_token());
        port = forwardedPort(serial);
    }
    if (!port) {
        log_("forward failed...");
        stopStarting();
        return;
    }
    adb_.run(serial, "push " + quoteWord(serviceFile_) + " " + kDeviceServiceFile,
             closingStop_.get_token());
    const std::string key = keys_ != nullptr ? keys_->serviceKey() : std::string();
    const std::string command = std::string("export CLASSPATH=") + kDeviceServiceFile +
                                " ;app_process /system/bin/ " + kServiceClass + " " + key;
    const sys::HiddenProcess process =
        sys::startHiddenProcess(adb_.commandLine(serial, "shell " + quoteWord(command)));
    if (!process.started()) {
        log_("service start failed: cannot run " + adb_.program());
        stopStarting();
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        log_("setAdbServicePorts device:" + serial + "port:" + std::to_string(*port));
        ports_[serial] = *port;
        processes_.push_back(process);
        starting_.erase(serial);
        if (closing_) {
            sys::terminateProcess(process);
        }
    }
    sys::waitForProcessEnd(process);
    {
        const std::lock_guard lock(mutex_);
        const int code = sys::releaseProcess(process);
        log_("waitforsingleObject return...." + serial + " port:" + std::to_string(*port) +
             " ret:" + std::to_string(code));
        if (const auto found = ports_.find(serial);
            found != ports_.end() && found->second == *port) {
            ports_.erase(found);
        }
        std::erase_if(processes_, [&](const sys::HiddenProcess& p) {
            return p.processId == process.processId;
        });
        // Still under the mutex: a start that follows must not find this forward and reuse it.
        adb_.run(serial, "forward --remove tcp:" + std::to_string(*port));
    }
}

}  // namespace autoscene::platform::android
