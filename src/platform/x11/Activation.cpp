#include "x11/Activation.h"

#include <algorithm>
#include <optional>

#include "x11/ErrorTrap.h"
#include "x11/WindowTree.h"

namespace autoscene::platform::x11 {
namespace {

struct Children {
    Window* list = nullptr;
    unsigned int count = 0;
    ~Children() {
        if (list != nullptr) {
            XFree(list);
        }
    }
};

// The child of the root that holds `window` (the window itself or its frame).
std::optional<Window> topLevelOf(Connection& connection, Window window) {
    Display* display = connection.display();
    Window current = window;
    while (true) {
        Window root = None;
        Window parent = None;
        Children children;
        if (XQueryTree(display, current, &root, &parent, &children.list, &children.count) == 0) {
            return std::nullopt;
        }
        if (parent == root || parent == None) {
            return current;
        }
        current = parent;
    }
}

std::optional<Rect> outerRect(Display* display, Window window) {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display, window, &attributes) == 0 ||
        attributes.map_state != IsViewable) {
        return std::nullopt;
    }
    const int border = attributes.border_width;
    return Rect{attributes.x, attributes.y, attributes.width + 2 * border,
                attributes.height + 2 * border};
}

bool overlap(const Rect& a, const Rect& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height &&
           b.y < a.y + a.height;
}

}  // namespace

bool activate(Connection& connection, Window window) {
    Display* display = connection.display();
    if (!isViewable(connection, window)) {
        return false;
    }
    XEvent request{};
    request.xclient.type = ClientMessage;
    request.xclient.window = window;
    request.xclient.message_type = connection.atoms().netActiveWindow;
    request.xclient.format = 32;
    request.xclient.data.l[0] = 2;  // source: a pager, which window managers always obey
    request.xclient.data.l[1] = CurrentTime;
    ErrorTrap trap(display);
    XSendEvent(display, connection.root(), False, SubstructureRedirectMask | SubstructureNotifyMask,
               &request);
    XRaiseWindow(display, window);
    XSetInputFocus(display, window, RevertToParent, CurrentTime);
    return !trap.failed();
}

bool coveredByAnother(Connection& connection, Window window) {
    Display* display = connection.display();
    ErrorTrap trap(display);
    const std::optional<Window> top = topLevelOf(connection, window);
    const std::optional<Rect> own = top ? outerRect(display, *top) : std::nullopt;
    Window root = None;
    Window parent = None;
    Children stack;  // bottom to top
    if (!own ||
        XQueryTree(display, connection.root(), &root, &parent, &stack.list, &stack.count) == 0) {
        return false;
    }
    const Window* begin = stack.list;
    const Window* end = begin + stack.count;
    const Window* ownPlace = std::find(begin, end, *top);
    for (const Window* other = ownPlace == end ? end : ownPlace + 1; other != end; ++other) {
        const std::optional<Rect> rect = outerRect(display, *other);
        if (rect && overlap(*own, *rect)) {
            return true;
        }
    }
    return false;
}

}  // namespace autoscene::platform::x11
