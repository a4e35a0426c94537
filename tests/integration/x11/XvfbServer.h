#pragma once
// A private Xvfb for one test program, on a display number the server picks itself.

#include <memory>
#include <string>
#include <vector>

#include "ClientProcess.h"

namespace autoscene::testing {

class XvfbServer {
public:
    // Starts a server of the given size and depth, with further Xvfb arguments (such as
    // "-extension NAME"); `display()` is empty when it did not start.
    XvfbServer(int width, int height, int depth = 24,
               const std::vector<std::string>& arguments = {});

    const std::string& display() const { return display_; }
    // Ends the server, as when a session closes under the programs using it.
    void stop();

private:
    std::unique_ptr<ClientProcess> process_;
    std::string display_;
};

}  // namespace autoscene::testing
