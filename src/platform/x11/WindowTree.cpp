#include "x11/WindowTree.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <unistd.h>

#include <algorithm>

#include "system/Utf8.h"

namespace autoscene::platform::x11 {
namespace {

// Every request here has a reply, and a failed request fails its reply: errors (the window
// is gone) show in the return values without a round trip to check for them.

// Titles and lists longer than this are cut, so that a hostile property cannot make us
// allocate without bound (in 32-bit units).
constexpr long kMaxPropertyLongs = 16384;

struct Property {
    Atom type = None;
    int format = 0;
    std::vector<unsigned char> bytes;
    unsigned long items = 0;
};

std::optional<Property> readProperty(Connection& connection, Window window, Atom name, Atom type) {
    Atom actualType = None;
    int actualFormat = 0;
    unsigned long items = 0;
    unsigned long bytesAfter = 0;
    unsigned char* data = nullptr;
    const int status =
        XGetWindowProperty(connection.display(), window, name, 0, kMaxPropertyLongs, False, type,
                           &actualType, &actualFormat, &items, &bytesAfter, &data);
    if (status != Success || data == nullptr || actualType == None) {
        if (data != nullptr) {
            XFree(data);
        }
        return std::nullopt;
    }
    // Xlib hands 32-bit items back as longs.
    const std::size_t itemBytes = actualFormat == 32 ? sizeof(long) : actualFormat / 8;
    Property property;
    property.type = actualType;
    property.format = actualFormat;
    property.items = items;
    property.bytes.assign(data, data + items * itemBytes);
    XFree(data);
    return property;
}

std::vector<Window> windowList(Connection& connection, Window window, Atom name) {
    std::vector<Window> windows;
    const auto property = readProperty(connection, window, name, XA_WINDOW);
    if (!property || property->format != 32) {
        return windows;
    }
    const auto* ids = reinterpret_cast<const long*>(property->bytes.data());
    for (unsigned long i = 0; i < property->items; ++i) {
        windows.push_back(static_cast<Window>(ids[i]));
    }
    return windows;
}

std::string latin1ToUtf8(const std::vector<unsigned char>& bytes) {
    std::string text;
    for (unsigned char byte : bytes) {
        sys::appendUtf8(text, byte);
    }
    return text;
}

std::vector<Window> children(Connection& connection, Window window) {
    Window root = None;
    Window parent = None;
    Window* list = nullptr;
    unsigned int count = 0;
    std::vector<Window> result;
    const Status status = XQueryTree(connection.display(), window, &root, &parent, &list, &count);
    if (status != 0 && list != nullptr) {
        result.assign(list, list + count);
    }
    if (list != nullptr) {
        XFree(list);
    }
    return result;
}

// A window manager announces itself through a check window that names itself.
bool windowManagerRuns(Connection& connection) {
    const Atom check = connection.atoms().netSupportingWmCheck;
    const auto fromRoot = windowList(connection, connection.root(), check);
    if (fromRoot.size() != 1) {
        return false;
    }
    const auto fromCheck = windowList(connection, fromRoot.front(), check);
    return fromCheck.size() == 1 && fromCheck.front() == fromRoot.front();
}

bool ownedByThisProcess(Connection& connection, Window window) {
    const auto property =
        readProperty(connection, window, connection.atoms().netWmPid, XA_CARDINAL);
    if (!property || property->format != 32 || property->items != 1) {
        return false;
    }
    return *reinterpret_cast<const long*>(property->bytes.data()) == static_cast<long>(getpid());
}

bool isCandidate(Connection& connection, Window window) {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(connection.display(), window, &attributes) == 0) {
        return false;
    }
    return attributes.map_state == IsViewable && attributes.c_class == InputOutput &&
           attributes.override_redirect == False && !ownedByThisProcess(connection, window);
}

// The top-level window (child of the root) that holds the keyboard focus, if any.
Window focusedTopLevel(Connection& connection) {
    Window focus = None;
    int revert = 0;
    XGetInputFocus(connection.display(), &focus, &revert);
    while (focus != None && focus != PointerRoot && focus != connection.root()) {
        Window root = None;
        Window parent = None;
        Window* list = nullptr;
        unsigned int count = 0;
        const Status status =
            XQueryTree(connection.display(), focus, &root, &parent, &list, &count);
        if (list != nullptr) {
            XFree(list);
        }
        if (status == 0) {
            return None;
        }
        if (parent == connection.root()) {
            return focus;
        }
        focus = parent;
    }
    return None;
}

}  // namespace

bool windowExists(Connection& connection, Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(connection.display(), window, &attributes) != 0;
}

bool isViewable(Connection& connection, Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(connection.display(), window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

std::vector<Window> topLevelCandidates(Connection& connection) {
    std::vector<Window> bottomToTop;
    Window active = None;
    if (windowManagerRuns(connection)) {
        bottomToTop =
            windowList(connection, connection.root(), connection.atoms().netClientListStacking);
        const auto activeList =
            windowList(connection, connection.root(), connection.atoms().netActiveWindow);
        active = activeList.empty() ? None : activeList.front();
    } else {
        bottomToTop = children(connection, connection.root());
        active = focusedTopLevel(connection);
    }
    std::vector<Window> ordered;
    if (active != None &&
        std::find(bottomToTop.begin(), bottomToTop.end(), active) != bottomToTop.end()) {
        ordered.push_back(active);
    }
    for (auto it = bottomToTop.rbegin(); it != bottomToTop.rend(); ++it) {
        if (*it != active) {
            ordered.push_back(*it);
        }
    }
    std::erase_if(ordered, [&](Window window) { return !isCandidate(connection, window); });
    return ordered;
}

std::vector<Window> descendants(Connection& connection, Window window) {
    std::vector<Window> result;
    for (Window child : children(connection, window)) {
        result.push_back(child);
        const auto below = descendants(connection, child);
        result.insert(result.end(), below.begin(), below.end());
    }
    return result;
}

std::string windowTitle(Connection& connection, Window window) {
    const auto utf8 = readProperty(connection, window, connection.atoms().netWmName,
                                   connection.atoms().utf8String);
    if (utf8 && utf8->format == 8) {
        return std::string(utf8->bytes.begin(), utf8->bytes.end());
    }
    const auto legacy = readProperty(connection, window, XA_WM_NAME, AnyPropertyType);
    if (!legacy || legacy->format != 8) {
        return {};
    }
    if (legacy->type == connection.atoms().utf8String) {
        return std::string(legacy->bytes.begin(), legacy->bytes.end());
    }
    if (legacy->type == XA_STRING) {
        return latin1ToUtf8(legacy->bytes);
    }
    // Compound text: let Xlib convert it.
    XTextProperty text{};
    text.value = const_cast<unsigned char*>(legacy->bytes.data());
    text.encoding = legacy->type;
    text.format = legacy->format;
    text.nitems = legacy->items;
    char** list = nullptr;
    int count = 0;
    std::string title;
    if (Xutf8TextPropertyToTextList(connection.display(), &text, &list, &count) >= Success &&
        list != nullptr) {
        if (count > 0 && list[0] != nullptr) {
            title = list[0];
        }
        XFreeStringList(list);
    }
    return title;
}

std::string windowClass(Connection& connection, Window window) {
    const auto property = readProperty(connection, window, XA_WM_CLASS, XA_STRING);
    if (!property || property->format != 8) {
        return {};
    }
    // "instance\0class\0"; the class is the second string.
    const auto& bytes = property->bytes;
    const auto separator = std::find(bytes.begin(), bytes.end(), '\0');
    if (separator == bytes.end()) {
        return {};
    }
    const auto classEnd = std::find(separator + 1, bytes.end(), '\0');
    return std::string(separator + 1, classEnd);
}

std::optional<Rect> rectRelativeTo(Connection& connection, Window window, Window reference) {
    XWindowAttributes attributes{};
    int x = 0;
    int y = 0;
    Window child = None;
    if (XGetWindowAttributes(connection.display(), window, &attributes) == 0 ||
        XTranslateCoordinates(connection.display(), window, reference, 0, 0, &x, &y, &child) ==
            False) {
        return std::nullopt;
    }
    return Rect{x, y, attributes.width, attributes.height};
}

}  // namespace autoscene::platform::x11
