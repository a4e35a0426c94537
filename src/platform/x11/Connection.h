#pragma once
// One connection to the X server per calling thread: runner threads capture and send input
// at the same time, and separate connections need no locking inside Xlib. Each connection
// keeps what is expensive to set up (the shared-memory segment, the keyboard map, the
// windows redirected for background capture) for as long as it lives.

#include <X11/Xlib.h>

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>

#include "x11/ImageTransfer.h"
#include "x11/KeyboardMap.h"

namespace autoscene::platform::x11 {

struct Atoms {
    Atom netWmName = None;
    Atom utf8String = None;
    Atom netClientListStacking = None;
    Atom netActiveWindow = None;
    Atom netSupportingWmCheck = None;
    Atom netWmPid = None;
};

class Connection {
public:
    // Null when the display cannot be opened.
    static std::unique_ptr<Connection> open(const std::string& displayName);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    Display* display() const { return display_; }
    // The server went away; every further request fails at once.
    bool lost() const { return lost_; }
    Window root() const { return root_; }
    const Atoms& atoms() const { return atoms_; }
    ImageTransfer& transfer() { return *transfer_; }
    KeyboardMap& keyboard() { return *keyboard_; }
    // Composite 0.2 or later, which can name a window's off-screen pixmap.
    bool hasComposite() const { return hasComposite_; }
    // Windows this connection already redirected off screen for background capture.
    std::set<Window>& redirected() { return redirected_; }

private:
    explicit Connection(Display* display);

    static void markLost(Display* display, void* connection);

    Display* display_ = nullptr;
    bool lost_ = false;
    Window root_ = None;
    Atoms atoms_;
    std::unique_ptr<ImageTransfer> transfer_;
    std::unique_ptr<KeyboardMap> keyboard_;
    bool hasComposite_ = false;
    std::set<Window> redirected_;
};

class ConnectionPool {
public:
    explicit ConnectionPool(std::string displayName) : displayName_(std::move(displayName)) {}

    // The calling thread's connection, opened on first use and reopened after the server
    // was lost; null when the display cannot be opened.
    Connection* forThisThread();

private:
    std::string displayName_;
    std::mutex mutex_;
    std::map<std::thread::id, std::unique_ptr<Connection>> connections_;
};

}  // namespace autoscene::platform::x11
