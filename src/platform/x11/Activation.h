#pragma once
// Bringing a window to the front for foreground capture and input.

#include <X11/Xlib.h>

#include "x11/Connection.h"

namespace autoscene::platform::x11 {

// Asks a window manager, if one runs, to activate the window, then raises and focuses it
// directly for a bare server. False when the window cannot take the focus (gone, unmapped).
bool activate(Connection& connection, Window window);

// True when a viewable top-level window stacked above the window's own top-level overlaps
// it, so that a capture of the screen would show the other window.
bool coveredByAnother(Connection& connection, Window window);

}  // namespace autoscene::platform::x11
