#include "AdbConnection.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace autoscene::testdevice {

AdbConnection::AdbConnection(int socket, ServiceFactory factory, std::string banner)
    : socket_(socket), factory_(std::move(factory)), banner_(std::move(banner)) {}

bool AdbConnection::readExactly(void* buffer, std::size_t size) {
    auto* bytes = static_cast<char*>(buffer);
    while (size > 0) {
        const ssize_t got = ::recv(socket_, bytes, size, 0);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        bytes += got;
        size -= std::size_t(got);
    }
    return true;
}

void AdbConnection::send(std::uint32_t command, std::uint32_t arg0, std::uint32_t arg1,
                         std::string_view payload) {
    const std::string packet = encodeMessage(command, arg0, arg1, payload);
    const std::lock_guard lock(sendMutex_);
    std::size_t sent = 0;
    while (sent < packet.size()) {
        const ssize_t n = ::send(socket_, packet.data() + sent, packet.size() - sent, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return;  // the reader notices the closed socket
        }
        sent += std::size_t(n);
    }
}

void AdbConnection::serve() {
    for (;;) {
        unsigned char raw[kHeaderBytes];
        if (!readExactly(raw, sizeof raw)) {
            break;
        }
        const auto header = decodeHeader(raw);
        if (!header) {
            break;
        }
        std::string payload(header->length, '\0');
        if (!readExactly(payload.data(), payload.size())) {
            break;
        }
        handle(*header, payload);
    }
    std::map<std::uint32_t, Stream> streams;
    {
        const std::lock_guard lock(mutex_);
        streams.swap(streams_);
    }
    for (auto& [id, stream] : streams) {
        stream.service->closed();
    }
}

void AdbConnection::handle(const AdbHeader& header, const std::string& payload) {
    switch (header.command) {
        case kCnxn:
            maxPayload_ = std::clamp<std::uint32_t>(header.arg1, 4096, kMaxPayloadBytes);
            send(kCnxn, kAdbVersion, maxPayload_, banner_);
            break;
        case kOpen:
            open(header.arg0, payload.substr(0, payload.find('\0')));
            break;
        case kOkay: {
            const std::lock_guard lock(mutex_);
            const auto found = streams_.find(header.arg1);
            if (found != streams_.end()) {
                found->second.awaitingOkay = false;
                pump(header.arg1);
            }
            break;
        }
        case kWrte:
            if (const auto service = serviceOf(header.arg1, false)) {
                send(kOkay, header.arg1, header.arg0);
                service->received(payload, outputOf(header.arg1));
            }
            break;
        case kClse:
            if (const auto service = serviceOf(header.arg1, true)) {
                send(kClse, header.arg1, header.arg0);
                service->closed();
            }
            break;
        default:
            break;  // SYNC and AUTH are not used once the connection is up
    }
}

std::shared_ptr<StreamService> AdbConnection::serviceOf(std::uint32_t localId, bool forget) {
    const std::lock_guard lock(mutex_);
    const auto found = streams_.find(localId);
    if (found == streams_.end()) {
        return nullptr;
    }
    std::shared_ptr<StreamService> service = found->second.service;
    if (forget) {
        streams_.erase(found);
    }
    return service;
}

void AdbConnection::open(std::uint32_t hostId, const std::string& name) {
    std::shared_ptr<StreamService> service = factory_(name);
    if (!service) {
        send(kClse, 0, hostId);
        return;
    }
    std::uint32_t localId = 0;
    {
        const std::lock_guard lock(mutex_);
        localId = nextId_++;
        Stream& stream = streams_[localId];
        stream.hostId = hostId;
        stream.service = service;
    }
    send(kOkay, localId, hostId);
    service->opened(outputOf(localId));
}

StreamOutput AdbConnection::outputOf(std::uint32_t localId) {
    return [this, localId](std::string bytes, bool close) {
        const std::lock_guard lock(mutex_);
        const auto found = streams_.find(localId);
        if (found == streams_.end()) {
            return;
        }
        Stream& stream = found->second;
        stream.pending.erase(0, stream.sent);
        stream.sent = 0;
        stream.pending += bytes;
        stream.closeWhenDrained = stream.closeWhenDrained || close;
        pump(localId);
    };
}

void AdbConnection::pump(std::uint32_t localId) {
    Stream& stream = streams_.at(localId);
    if (stream.awaitingOkay) {
        return;
    }
    if (stream.sent < stream.pending.size()) {
        const std::string_view rest = std::string_view(stream.pending).substr(stream.sent);
        const std::size_t size = std::min<std::size_t>(rest.size(), maxPayload_);
        send(kWrte, localId, stream.hostId, rest.substr(0, size));
        stream.sent += size;
        stream.awaitingOkay = true;
    } else if (stream.closeWhenDrained) {
        // The host answers with its own CLSE, which finds the stream gone.
        send(kClse, localId, stream.hostId);
        streams_.erase(localId);
    }
}

}  // namespace autoscene::testdevice
