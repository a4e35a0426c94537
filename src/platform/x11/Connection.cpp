#include "x11/Connection.h"

#include <X11/extensions/Xcomposite.h>

namespace autoscene::platform::x11 {
namespace {

bool compositeAvailable(Display* display) {
    int eventBase = 0;
    int errorBase = 0;
    int major = 0;
    int minor = 2;
    return XCompositeQueryExtension(display, &eventBase, &errorBase) == True &&
           XCompositeQueryVersion(display, &major, &minor) != 0 && (major > 0 || minor >= 2);
}

}  // namespace

std::unique_ptr<Connection> Connection::open(const std::string& displayName) {
    Display* display = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
    if (display == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<Connection>(new Connection(display));
}

Connection::Connection(Display* display)
    : display_(display),
      root_(DefaultRootWindow(display)),
      transfer_(std::make_unique<ImageTransfer>(display)),
      keyboard_(std::make_unique<KeyboardMap>(display)),
      hasComposite_(compositeAvailable(display)) {
    // Xlib exits the process when the server goes away unless this handler returns.
    XSetIOErrorExitHandler(display_, &Connection::markLost, this);
    atoms_.netWmName = XInternAtom(display_, "_NET_WM_NAME", False);
    atoms_.utf8String = XInternAtom(display_, "UTF8_STRING", False);
    atoms_.netClientListStacking = XInternAtom(display_, "_NET_CLIENT_LIST_STACKING", False);
    atoms_.netActiveWindow = XInternAtom(display_, "_NET_ACTIVE_WINDOW", False);
    atoms_.netSupportingWmCheck = XInternAtom(display_, "_NET_SUPPORTING_WM_CHECK", False);
    atoms_.netWmPid = XInternAtom(display_, "_NET_WM_PID", False);
}

void Connection::markLost(Display*, void* connection) {
    static_cast<Connection*>(connection)->lost_ = true;
}

Connection::~Connection() {
    // The members talk to the server while they release what they hold.
    keyboard_.reset();
    transfer_.reset();
    XCloseDisplay(display_);
}

Connection* ConnectionPool::forThisThread() {
    std::lock_guard lock(mutex_);
    auto& connection = connections_[std::this_thread::get_id()];
    if (!connection || connection->lost()) {
        connection = Connection::open(displayName_);
    }
    return connection.get();
}

}  // namespace autoscene::platform::x11
