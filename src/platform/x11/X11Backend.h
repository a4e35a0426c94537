#pragma once
// The X11 desktop back end. Any thread may call it; each calling thread gets its own
// connection to the display, kept until the back end is destroyed (destroy it only after
// the threads that used it have stopped calling).
//
// captureView hands over the pixels of the thread's MIT-SHM segment without copying them; their
// alpha bytes are undefined on a depth-24 screen (read them as BGR). capture() returns an owned
// copy with opaque alpha.

#include <memory>

#include "desktop/DesktopBackend.h"
#include "x11/LogSink.h"

namespace autoscene::platform {

// `display` names the X display (nullptr: $DISPLAY). Null when it cannot be opened. `log`
// receives the diagnostic lines ("lpRect:...", "窗口不存在"), from any calling thread, possibly
// from several at once; without one they are dropped.
std::unique_ptr<IDesktopBackend> makeX11Backend(const char* display, x11::LogSink log = {});

}  // namespace autoscene::platform
