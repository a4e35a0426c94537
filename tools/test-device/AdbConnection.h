#pragma once
// The device end of one adb transport connection: answers the host's CNXN at once (no
// AUTH), opens a service per OPEN and moves stream bytes with WRTE, one unacknowledged
// WRTE per stream as the protocol asks.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "AdbMessage.h"
#include "StreamService.h"

namespace autoscene::testdevice {

// The service for a name such as "shell:wm size"; null when the device has none.
using ServiceFactory = std::function<std::unique_ptr<StreamService>(const std::string& name)>;

class AdbConnection {
public:
    AdbConnection(int socket, ServiceFactory factory, std::string banner);
    // Serves until the host goes away or sends something that is not adb.
    void serve();

private:
    struct Stream {
        std::uint32_t hostId = 0;
        std::shared_ptr<StreamService> service;
        std::string pending;
        std::size_t sent = 0;  // bytes of `pending` already written
        bool awaitingOkay = false;
        bool closeWhenDrained = false;
    };

    bool readExactly(void* buffer, std::size_t size);
    void send(std::uint32_t command, std::uint32_t arg0, std::uint32_t arg1,
              std::string_view payload = {});
    void handle(const AdbHeader& header, const std::string& payload);
    void open(std::uint32_t hostId, const std::string& name);
    StreamOutput outputOf(std::uint32_t localId);
    // The stream's service, taken out of the table when `forget`; null for an unknown id.
    std::shared_ptr<StreamService> serviceOf(std::uint32_t localId, bool forget);
    // Sends the next chunk of the stream, or its CLSE once everything was acknowledged.
    // Called with mutex_ held.
    void pump(std::uint32_t localId);

    const int socket_;
    const ServiceFactory factory_;
    const std::string banner_;
    std::mutex sendMutex_;
    std::mutex mutex_;  // streams_ and what they hold
    std::map<std::uint32_t, Stream> streams_;
    std::uint32_t nextId_ = 1;
    std::uint32_t maxPayload_ = 4096;
};

}  // namespace autoscene::testdevice
