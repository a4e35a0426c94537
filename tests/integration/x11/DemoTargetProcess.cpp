#include "DemoTargetProcess.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <sstream>
#include <thread>

namespace autoscene::testing {
namespace {

constexpr int kPollMs = 10;
constexpr int kSettleMs = 150;

// The lines from `from` on that start with `prefix`.
std::vector<std::string> matching(const std::vector<std::string>& lines, const std::string& prefix,
                                  std::size_t from) {
    std::vector<std::string> found;
    std::copy_if(lines.begin() + std::ptrdiff_t(std::min(from, lines.size())), lines.end(),
                 std::back_inserter(found),
                 [&](const std::string& line) { return line.rfind(prefix, 0) == 0; });
    return found;
}

Window hexField(const std::string& line, const std::string& key) {
    const auto at = line.find(key + "=");
    return at == std::string::npos ? None
                                   : std::stoul(line.substr(at + key.size() + 1), nullptr, 16);
}

bool isTopLevel(Display* display, Window window) {
    Window unused = None;
    Window* children = nullptr;  // stays null, with count 0, when the query fails
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &unused, &unused, &children, &count);
    const bool found = std::find(children, children + count, window) != children + count;
    XFree(children);
    return found;
}

}  // namespace

DemoTargetProcess::DemoTargetProcess(const std::string& display,
                                     const std::vector<std::string>& arguments)
    : display_(display) {
    std::vector<std::string> argv = {AUTOSCENE_DEMO_TARGET_PATH, "--log", "-"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    process_ = std::make_unique<ClientProcess>(display, argv);
    if (const auto ready = waitForLine("ready ", 0, 10000)) {
        window_ = hexField(*ready, "window");
        panel_ = hexField(*ready, "panel");
    }
}

DemoTargetProcess::~DemoTargetProcess() {
    stop();
}

void DemoTargetProcess::stop() {
    if (!process_ || !process_->started()) {
        return;
    }
    process_->stop();
    // The server destroys the windows when it notices the closed connection, a moment later.
    Display* display = window_ != None ? XOpenDisplay(display_.c_str()) : nullptr;
    if (display == nullptr) {
        return;
    }
    // Looked for among the root's children: asking about a destroyed window would raise an
    // X error in this process.
    for (int i = 0; i < 200 && isTopLevel(display, window_); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(kPollMs));
    }
    XCloseDisplay(display);
}

std::vector<std::string> DemoTargetProcess::lines() const {
    std::vector<std::string> result;
    std::istringstream log(process_->output());
    for (std::string line; std::getline(log, line);) {
        result.push_back(line);
    }
    return result;
}

std::optional<std::string> DemoTargetProcess::waitForLine(const std::string& prefix,
                                                          std::size_t from, int timeoutMs) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    do {
        if (const auto found = matching(lines(), prefix, from); !found.empty()) {
            return found.front();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(kPollMs));
    } while (std::chrono::steady_clock::now() < deadline);
    return std::nullopt;
}

std::vector<std::string> DemoTargetProcess::settledLines(const std::string& prefix,
                                                         std::size_t from) const {
    std::size_t count = 0;
    for (;;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(kSettleMs));
        const auto all = lines();
        if (all.size() == count) {
            return matching(all, prefix, from);
        }
        count = all.size();
    }
}

}  // namespace autoscene::testing
