#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace autoscene::test {

inline sockaddr_in loopbackAddress(int port = 0) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    return address;
}

// Binds the socket `fd` to a free loopback port, which it returns.
inline int bindToFreeLoopbackPort(int fd) {
    sockaddr_in address = loopbackAddress();
    socklen_t length = sizeof address;
    ::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

// A loopback port that was free a moment ago and that nobody listens on now: bound but never
// listening, then closed, so connecting to it is refused.
inline int unusedLoopbackPort() {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    const int port = bindToFreeLoopbackPort(fd);
    ::close(fd);
    return port;
}

// A loopback port that takes connections and never answers: a hung service. The kernel
// completes each connection from the backlog; nothing ever reads or writes.
class SilentListener {
public:
    SilentListener() : fd_(::socket(AF_INET, SOCK_STREAM, 0)), port_(bindToFreeLoopbackPort(fd_)) {
        ::listen(fd_, 16);
    }
    ~SilentListener() { ::close(fd_); }
    SilentListener(const SilentListener&) = delete;
    SilentListener& operator=(const SilentListener&) = delete;

    int port() const { return port_; }

private:
    int fd_;
    int port_;
};

}  // namespace autoscene::test
