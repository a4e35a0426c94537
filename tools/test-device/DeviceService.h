#pragma once
// The device service a host starts with app_process: HTTP on the device's port 10240
// (really a loopback port of this program, reached through "tcp:10240" streams), serving
// frames with their geometry in headers and taking touches, keys, text, slides and apps.

#include <httplib.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "DeviceShell.h"
#include "EventLog.h"
#include "StreamService.h"

namespace autoscene::testdevice {

class DeviceService {
public:
    DeviceService(DeviceShell& shell, EventLog& log, int density);
    ~DeviceService();
    DeviceService(const DeviceService&) = delete;
    DeviceService& operator=(const DeviceService&) = delete;

    // The loopback port that stands for device port 10240; 0 when it could not listen.
    int port() const { return port_; }
    // Ends the service (as killing its process would) and waits for it.
    void stop();
    // Blocks until the service has ended.
    void wait();

private:
    void route();

    DeviceShell& shell_;
    EventLog& log_;
    const int density_;
    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
    std::atomic<bool> ended_{false};
    std::mutex touchMutex_;
    int downX_ = -1;
    int downY_ = -1;
};

// The one service a device runs at a time, found by the "tcp:10240" streams and ended by
// "pkill app_process".
class ServiceSlot {
public:
    std::shared_ptr<DeviceService> current() const;
    void set(std::shared_ptr<DeviceService> service);
    // Ends the running service; false when none runs.
    bool kill();

private:
    mutable std::mutex mutex_;
    std::shared_ptr<DeviceService> service_;
};

}  // namespace autoscene::testdevice

namespace autoscene::testdevice {

// "app_process ... SimpleWebServer KEY": runs the service while the stream stays open, as
// the shell that hosts it would; ends the stream when the service ends. Needs the service
// file pushed first.
class ServiceCommand : public StreamService {
public:
    ServiceCommand(DeviceShell& shell, EventLog& log, ServiceSlot& slot, bool filePresent,
                   int density)
        : shell_(shell), log_(log), slot_(slot), filePresent_(filePresent), density_(density) {}
    ~ServiceCommand() override;

    void opened(const StreamOutput& output) override;
    void received(std::string_view, const StreamOutput&) override {}
    void closed() override;

private:
    DeviceShell& shell_;
    EventLog& log_;
    ServiceSlot& slot_;
    const bool filePresent_;
    const int density_;
    std::shared_ptr<DeviceService> service_;
    std::thread waiter_;
};

}  // namespace autoscene::testdevice
