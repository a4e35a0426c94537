#include "XvfbServer.h"

#include <chrono>
#include <thread>

namespace autoscene::testing {

XvfbServer::XvfbServer(int width, int height, int depth,
                       const std::vector<std::string>& arguments) {
    const std::string screen =
        std::to_string(width) + "x" + std::to_string(height) + "x" + std::to_string(depth);
    std::vector<std::string> argv = {"Xvfb", "-displayfd", "1",   "-screen", "0",
                                     screen, "-nolisten",  "tcp", "-noreset"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    process_ = std::make_unique<ClientProcess>("", argv);
    // Xvfb writes its display number once it accepts connections.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (process_->started() && std::chrono::steady_clock::now() < deadline) {
        const std::string output = process_->output();
        if (const auto end = output.find('\n'); end != std::string::npos) {
            if (end > 0) {
                display_ = ":" + output.substr(0, end);
            }
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void XvfbServer::stop() {
    process_->stop();
}

}  // namespace autoscene::testing
