#pragma once
// The demo target run as a user would run it, on a given display, logging its events to
// standard output for the tests to read.

#include <X11/Xlib.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ClientProcess.h"

namespace autoscene::testing {

class DemoTargetProcess {
public:
    // Starts the target and waits until it has drawn its first screen. `started()` tells
    // whether it did.
    DemoTargetProcess(const std::string& display, const std::vector<std::string>& arguments);
    ~DemoTargetProcess();
    DemoTargetProcess(const DemoTargetProcess&) = delete;
    DemoTargetProcess& operator=(const DemoTargetProcess&) = delete;

    bool started() const { return window_ != None; }
    Window window() const { return window_; }
    Window panel() const { return panel_; }

    std::vector<std::string> lines() const;
    // The number of lines logged so far, to look only at what comes after.
    std::size_t mark() const { return lines().size(); }
    // The first line from `from` on that starts with `prefix`, waiting up to `timeoutMs`.
    std::optional<std::string> waitForLine(const std::string& prefix, std::size_t from,
                                           int timeoutMs = 3000) const;
    // Lines from `from` on that start with `prefix`, once no new line has come for a while.
    std::vector<std::string> settledLines(const std::string& prefix, std::size_t from) const;

    // Ends the process and waits until the server has destroyed its windows.
    void stop();

private:
    std::string display_;
    std::unique_ptr<ClientProcess> process_;
    Window window_ = None;
    Window panel_ = None;
};

}  // namespace autoscene::testing
