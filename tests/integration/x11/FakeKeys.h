#pragma once
// Key presses as a user makes them, through XTest on a connection of the test's own.

#include <X11/Xlib.h>

#include <vector>

namespace autoscene::testing {

// Holds the keysyms down in order and lets them go in reverse.
void pressKeys(Display* display, const std::vector<KeySym>& keysyms);

}  // namespace autoscene::testing
