#pragma once
// What stands behind one adb stream on the device: a shell command, the file-sync
// service, a TCP connection. Output may be delivered from any thread.

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace autoscene::testdevice {

// Hands bytes to the host; `close` ends the stream once they have been acknowledged.
using StreamOutput = std::function<void(std::string bytes, bool close)>;

// Shared, so that a service whose output comes from its own thread can keep itself alive
// until that thread is done.
class StreamService : public std::enable_shared_from_this<StreamService> {
public:
    virtual ~StreamService() = default;
    // Called once the host has been told the stream is open.
    virtual void opened(const StreamOutput& output) = 0;
    // Bytes the host wrote to the stream.
    virtual void received(std::string_view bytes, const StreamOutput& output) = 0;
    // The host closed the stream.
    virtual void closed() {}
};

}  // namespace autoscene::testdevice
