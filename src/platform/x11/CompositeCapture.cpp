#include <X11/extensions/Xcomposite.h>

#include "x11/Capture.h"
#include "x11/ErrorTrap.h"
#include "x11/InputTiming.h"

namespace autoscene::platform::x11 {
namespace {

constexpr int kFirstRepaintMs = 50;

// The window's off-screen pixmap, released however the read ends (the consumer may throw).
class NamedPixmap {
public:
    NamedPixmap(Display* display, Window window)
        : display_(display), pixmap_(XCompositeNameWindowPixmap(display, window)) {}
    ~NamedPixmap() { XFreePixmap(display_, pixmap_); }
    NamedPixmap(const NamedPixmap&) = delete;
    NamedPixmap& operator=(const NamedPixmap&) = delete;

    Pixmap get() const { return pixmap_; }

private:
    Display* display_ = nullptr;
    Pixmap pixmap_ = None;
};

// Automatic redirection keeps the window on screen as before and gives it an off-screen
// pixmap that the window draws into even where other windows cover it. It lasts as long
// as this connection.
bool redirect(Connection& connection, Window window, int width, int height) {
    if (connection.redirected().contains(window)) {
        return true;
    }
    ErrorTrap trap(connection.display());
    XCompositeRedirectWindow(connection.display(), window, CompositeRedirectAutomatic);
    // What was covered when the off-screen copy was made is missing from it: ask the window
    // to repaint itself whole, and give it a moment before the first read. An expose event
    // rather than clearing the window, which would make it flicker on screen.
    XEvent expose{};
    expose.xexpose.type = Expose;
    expose.xexpose.window = window;
    expose.xexpose.width = width;
    expose.xexpose.height = height;
    XSendEvent(connection.display(), window, False, ExposureMask, &expose);
    if (trap.failed()) {
        return false;
    }
    connection.redirected().insert(window);
    sleepMs(kFirstRepaintMs);
    return true;
}

}  // namespace

bool captureComposited(Connection& connection, Window window, const FrameConsumer& consume) {
    Display* display = connection.display();
    if (window == None || !connection.hasComposite()) {
        return false;
    }
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display, window, &attributes) == 0 ||
        attributes.map_state != IsViewable ||
        !redirect(connection, window, attributes.width, attributes.height)) {
        return false;
    }
    // Naming fails without a reply for a window that was never redirected (an id reused
    // by a new window); the read below then fails on the bad pixmap. The pixmap holds the
    // border around the client area: read inside it, as the screen shows the client area.
    const NamedPixmap pixmap(display, window);
    const int border = attributes.border_width;
    const bool ok = connection.transfer().read(
        pixmap.get(), attributes.visual, attributes.depth,
        Rect{border, border, attributes.width, attributes.height}, consume);
    if (!ok) {
        connection.redirected().erase(window);
    }
    return ok;
}

}  // namespace autoscene::platform::x11
