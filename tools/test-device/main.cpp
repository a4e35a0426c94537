// autoscene-test-device: a stand-in Android device that the real adb connects to over TCP
// ("adb connect 127.0.0.1:PORT"), with a small shell and an app screen that logs its input.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

#include "AdbConnection.h"
#include "DeviceOptions.h"
#include "DeviceService.h"
#include "DeviceShell.h"
#include "SyncService.h"
#include "TcpBridge.h"

namespace {

using namespace autoscene::testdevice;

constexpr const char* kServiceClass = "cn.morvane.adb_operation.httpserver.SimpleWebServer";
constexpr const char* kServiceFile = "/data/local/tmp/localservice.jar";
constexpr int kServicePort = 10240;

class ShellCommand : public StreamService {
public:
    ShellCommand(DeviceShell& shell, std::string command)
        : shell_(shell), command_(std::move(command)) {}
    void opened(const StreamOutput& output) override { output(shell_.run(command_), true); }
    void received(std::string_view, const StreamOutput&) override {}

private:
    DeviceShell& shell_;
    const std::string command_;
};

// "adb shell" without a command: runs each line the host writes, answering as it goes.
class InteractiveShell : public StreamService {
public:
    explicit InteractiveShell(DeviceShell& shell) : shell_(shell) {}
    void opened(const StreamOutput&) override {}
    void received(std::string_view bytes, const StreamOutput& output) override {
        pending_.append(bytes);
        for (size_t end = pending_.find('\n'); end != std::string::npos;
             end = pending_.find('\n')) {
            const std::string line = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            output(shell_.run(line), false);
        }
    }

private:
    DeviceShell& shell_;
    std::string pending_;
};

int listenOn(int port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    const int yes = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(std::uint16_t(port));
    if (::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(fd, 8) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

int boundPort(int fd) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

}  // namespace

int main(int argc, char** argv) {
    std::string error;
    const auto options = parseDeviceOptions(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) {
        std::fprintf(stderr, "autoscene-test-device: %s\n%s", error.c_str(), kDeviceUsage);
        return 2;
    }
    if (options->help) {
        std::fputs(kDeviceUsage, stdout);
        return 0;
    }
    EventLog log;
    if (!log.open(options->logPath)) {
        std::fprintf(stderr, "autoscene-test-device: cannot write the log %s\n",
                     options->logPath.c_str());
        return 2;
    }
    const int listener = listenOn(options->port);
    if (listener < 0) {
        std::fprintf(stderr, "autoscene-test-device: cannot listen on 127.0.0.1:%d\n",
                     options->port);
        return 1;
    }
    std::signal(SIGPIPE, SIG_IGN);
    DeviceShell shell(options->device, log);
    DeviceFiles files;
    ServiceSlot slot;
    shell.setServiceKiller([&] { return slot.kill(); });
    const ServiceFactory factory = [&](const std::string& name) -> std::unique_ptr<StreamService> {
        for (const char* prefix : {"shell:", "exec:"}) {
            const std::string p(prefix);
            if (name.compare(0, p.size(), p) != 0) {
                continue;
            }
            if (name == "shell:") {
                return std::make_unique<InteractiveShell>(shell);
            }
            if (name.size() == p.size()) {
                continue;
            }
            const std::string command = name.substr(p.size());
            if (command.find(kServiceClass) != std::string::npos) {
                const std::string key =
                    command.substr(command.rfind(kServiceClass) + std::strlen(kServiceClass));
                log.write("service key " + key.substr(std::min(key.size(), std::size_t(1))));
                return std::make_unique<ServiceCommand>(
                    shell, log, slot, files.mode(kServiceFile) != 0 && !options->serviceBroken,
                    options->device.density);
            }
            return std::make_unique<ShellCommand>(shell, command);
        }
        if (name == "tcp:" + std::to_string(kServicePort)) {
            const auto service = slot.current();
            const int socket = service ? TcpBridge::connectLoopback(service->port()) : -1;
            return socket < 0 ? nullptr : std::make_unique<TcpBridge>(socket);
        }
        if (name == "sync:") {
            return std::make_unique<SyncService>(files, log);
        }
        return nullptr;
    };
    const std::string banner =
        "device::ro.product.name=autoscene_test;ro.product.model=Autoscene_Test_Device;"
        "ro.product.device=autoscene_test;features=cmd";
    std::printf("listening on 127.0.0.1:%d\n", boundPort(listener));
    std::fflush(stdout);
    for (;;) {
        const int client = ::accept(listener, nullptr, nullptr);
        if (client < 0) {
            continue;
        }
        // Packets go out as written: waiting to merge small ones stalls every exchange
        // by the peer's delayed acknowledgement.
        const int noDelay = 1;
        ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay);
        std::thread([client, &factory, &banner] {
            AdbConnection(client, factory, banner).serve();
            ::close(client);
        }).detach();
    }
}
