#pragma once
// A "tcp:PORT" stream: bytes between the host's forward and a loopback port of this
// program that stands for the device port.

#include <memory>
#include <thread>

#include "StreamService.h"

namespace autoscene::testdevice {

class TcpBridge : public StreamService {
public:
    // `socket` is connected already; the bridge owns it.
    explicit TcpBridge(int socket) : socket_(socket) {}
    ~TcpBridge() override;

    void opened(const StreamOutput& output) override;
    void received(std::string_view bytes, const StreamOutput& output) override;
    // Ends the reader, which holds the bridge until it has gone.
    void closed() override;

    // A socket connected to 127.0.0.1:`port`, or -1.
    static int connectLoopback(int port);

private:
    const int socket_;
    std::thread reader_;
};

}  // namespace autoscene::testdevice
