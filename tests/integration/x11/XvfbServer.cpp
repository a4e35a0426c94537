#include "XvfbServer.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace autoscene::testing {
namespace {

constexpr int kStartTimeoutMs = 10000;

}  // namespace

XvfbServer::XvfbServer(int width, int height, int depth,
                       const std::vector<std::string>& arguments) {
    int fds[2] = {-1, -1};
    if (pipe(fds) != 0) {
        return;
    }
    const std::string screen =
        std::to_string(width) + "x" + std::to_string(height) + "x" + std::to_string(depth);
    std::vector<std::string> argv = {"Xvfb",      "-displayfd", std::to_string(fds[1]),
                                     "-screen",   "0",          screen,
                                     "-nolisten", "tcp",        "-noreset"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    std::vector<char*> raw;
    for (auto& argument : argv) {
        raw.push_back(argument.data());
    }
    raw.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
        close(fds[0]);
        std::freopen("/dev/null", "w", stderr);
        execvp(raw[0], raw.data());
        _exit(127);
    }
    close(fds[1]);
    // Xvfb writes its display number once it accepts connections.
    std::string number;
    pollfd readable{fds[0], POLLIN, 0};
    while (pid_ > 0 && poll(&readable, 1, kStartTimeoutMs) > 0) {
        char c = 0;
        if (read(fds[0], &c, 1) != 1 || c == '\n') {
            break;
        }
        number.push_back(c);
    }
    close(fds[0]);
    if (!number.empty()) {
        display_ = ":" + number;
    }
}

XvfbServer::~XvfbServer() {
    stop();
}

void XvfbServer::stop() {
    if (pid_ > 0) {
        kill(pid_, SIGTERM);
        int status = 0;
        waitpid(pid_, &status, 0);
        pid_ = -1;
    }
}

}  // namespace autoscene::testing
