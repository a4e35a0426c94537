#include "TcpBridge.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace autoscene::testdevice {

TcpBridge::~TcpBridge() {
    if (reader_.joinable()) {
        if (reader_.get_id() == std::this_thread::get_id()) {
            reader_.detach();  // the reader let go of the last reference on its way out
        } else {
            ::shutdown(socket_, SHUT_RDWR);
            reader_.join();
        }
    }
    ::close(socket_);
}

int TcpBridge::connectLoopback(int port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(std::uint16_t(port));
    if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(fd);
        return -1;
    }
    const int noDelay = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay);
    return fd;
}

void TcpBridge::opened(const StreamOutput& output) {
    reader_ = std::thread([this, self = shared_from_this(), output] {
        char buffer[64 * 1024];
        for (;;) {
            const ssize_t got = ::recv(socket_, buffer, sizeof buffer, 0);
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                output({}, true);
                return;
            }
            output(std::string(buffer, std::size_t(got)), false);
        }
    });
}

void TcpBridge::received(std::string_view bytes, const StreamOutput&) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) {
            continue;
        }
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(std::size_t(sent));
    }
}

void TcpBridge::closed() {
    ::shutdown(socket_, SHUT_RDWR);
}

}  // namespace autoscene::testdevice
