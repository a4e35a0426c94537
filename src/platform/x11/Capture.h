#pragma once
// The two capture methods; each hands the pixels to `consume` as a view into the connection's
// transfer buffer and returns false, without calling it, when there is nothing to capture.

#include <X11/Xlib.h>

#include "desktop/DesktopBackend.h"
#include "x11/Connection.h"
#include "x11/LogSink.h"

namespace autoscene::platform::x11 {

// Foreground: the screen as it shows, cropped to the window's client rectangle; the whole
// screen for window None. Fails for a window that is gone or not viewable. Logs the client
// rectangle it crops to.
bool captureScreen(Connection& connection, Window window, const LogSink& log,
                   const FrameConsumer& consume);

// Background: the window's own contents, kept off screen by the Composite extension, so
// that covered parts are still there. Fails for a window that is gone or unmapped.
bool captureComposited(Connection& connection, Window window, const FrameConsumer& consume);

}  // namespace autoscene::platform::x11
