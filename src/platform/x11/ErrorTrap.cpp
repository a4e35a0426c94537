#include "x11/ErrorTrap.h"

namespace autoscene::platform::x11 {
namespace {

// Every thread has its own connection, so the errors of a thread's requests are reported
// on that thread: a thread-local count needs no lock.
thread_local unsigned long t_errorCount = 0;

int countError(Display*, XErrorEvent*) {
    ++t_errorCount;
    return 0;
}

// Returning lets the connection's exit handler decide; connections without one of their
// own still end the process as Xlib's default does.
int ignoreLostServer(Display*) {
    return 0;
}

}  // namespace

void installErrorHandler() {
    XSetErrorHandler(countError);
    XSetIOErrorHandler(ignoreLostServer);
}

ErrorTrap::ErrorTrap(Display* display) : display_(display) {
    XSync(display_, False);
    errorsAtStart_ = t_errorCount;
}

bool ErrorTrap::failed() {
    XSync(display_, False);
    return t_errorCount != errorsAtStart_;
}

}  // namespace autoscene::platform::x11
