#include "x11/Capture.h"
#include "x11/CropRect.h"

#include <optional>
#include <string>

namespace autoscene::platform::x11 {
namespace {

// The client rectangle on the screen, or nothing for a window that is gone or not shown.
// Two round trips: this runs every cycle.
std::optional<Rect> viewableClientRect(Connection& connection, Window window) {
    XWindowAttributes attributes{};
    int x = 0;
    int y = 0;
    Window child = None;
    if (XGetWindowAttributes(connection.display(), window, &attributes) == 0 ||
        attributes.map_state != IsViewable ||
        XTranslateCoordinates(connection.display(), window, connection.root(), 0, 0, &x, &y,
                              &child) == False) {
        return std::nullopt;
    }
    return Rect{x, y, attributes.width, attributes.height};
}

}  // namespace

bool captureScreen(Connection& connection, Window window, const LogSink& log,
                   const FrameConsumer& consume) {
    Display* display = connection.display();
    const int screen = DefaultScreen(display);
    // Read each time: the screen may be resized while a task runs.
    Window root = None;
    int x = 0;
    int y = 0;
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int border = 0;
    unsigned int depth = 0;
    if (XGetGeometry(display, connection.root(), &root, &x, &y, &width, &height, &border, &depth) ==
        0) {
        return false;
    }
    Rect area{0, 0, static_cast<int>(width), static_cast<int>(height)};
    if (window != None) {
        const auto client = viewableClientRect(connection, window);
        if (!client) {
            return false;
        }
        if (log) {
            log("lpRect:" + std::to_string(client->width) + "x" + std::to_string(client->height) +
                " toScreen:" + std::to_string(client->x) + "x" + std::to_string(client->y));
        }
        area = cropToScreen(*client, area.width, area.height);
    }
    return connection.transfer().read(connection.root(), DefaultVisual(display, screen),
                                      DefaultDepth(display, screen), area, consume);
}

}  // namespace autoscene::platform::x11
