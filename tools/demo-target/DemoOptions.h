#pragma once
// Command line of the demo target.

#include <optional>
#include <string>
#include <vector>

#include "DemoLayout.h"

namespace autoscene::demo {

struct Geometry {
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;
};

struct DemoOptions {
    Geometry geometry;
    std::string title;
    std::string logPath;  // empty: no log; "-": standard output
    Screen screen = Screen::Start;
    bool help = false;
};

// "WxH", "WxH+X+Y"; an offset written "-N" places the window N pixels left of (above) the
// screen, so that tests can put it partly off screen. Null on any malformed part.
std::optional<Geometry> parseGeometry(const std::string& text);

// Null with `error` set on a bad or unknown argument.
std::optional<DemoOptions> parseOptions(const std::vector<std::string>& arguments,
                                        std::string& error);

inline constexpr const char* kUsage =
    "usage: autoscene-demo-target [--geometry WxH[+X+Y]] [--title TEXT] [--log FILE|-]\n"
    "                             [--screen start|menu|form|finish]\n"
    "A small X11 application with known screens, for demos and tests.\n"
    "  --geometry WxH+X+Y  window size and position (default 640x480+0+0)\n"
    "  --title TEXT        window title (default \"Autoscene Demo\")\n"
    "  --log FILE          write one line per input event received ('-': standard output)\n"
    "  --screen NAME       the screen shown first (default start)\n";

}  // namespace autoscene::demo
