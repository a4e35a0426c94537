// autoscene-demo-target: a small X11 application with known screens, for demos and tests.

#include <X11/Xlib.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "DemoApp.h"
#include "DemoOptions.h"
#include "EventLog.h"

int main(int argc, char** argv) {
    using namespace autoscene::demo;
    std::string error;
    const auto options = parseOptions(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) {
        std::fprintf(stderr, "autoscene-demo-target: %s\n%s", error.c_str(), kUsage);
        return 2;
    }
    if (options->help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    EventLog log;
    if (!log.open(options->logPath)) {
        std::fprintf(stderr, "autoscene-demo-target: cannot write the log %s\n",
                     options->logPath.c_str());
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "autoscene-demo-target: cannot open the display (DISPLAY=%s)\n",
                     std::getenv("DISPLAY") != nullptr ? std::getenv("DISPLAY") : "");
        return 1;
    }
    {
        DemoApp app(display, *options, log);
        app.run();
    }
    XCloseDisplay(display);
    return 0;
}
