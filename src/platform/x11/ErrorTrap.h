#pragma once
// X errors (a window destroyed between two calls, a bad size) are normal events for a
// back end that drives other programs' windows. Xlib's default handler exits the process,
// so the back end installs one that only counts errors per thread; an ErrorTrap turns the
// errors raised by the requests made during its lifetime into a failed call.

#include <X11/Xlib.h>

namespace autoscene::platform::x11 {

// Installs the counting error handler, and an I/O error handler that leaves the reaction
// to a lost server to each connection. Both are process-wide, and a toolkit that opens its
// own connection (Qt's xcb plug-in) puts in handlers that ignore errors and exit on any
// lost connection: call it again after such a toolkit started. Thread-safe.
void installErrorHandler();

class ErrorTrap {
public:
    explicit ErrorTrap(Display* display);

    // Waits for the server to process every request made so far; true when one of the
    // requests since construction raised an error.
    bool failed();

private:
    Display* display_ = nullptr;
    unsigned long errorsAtStart_ = 0;
};

}  // namespace autoscene::platform::x11
