#pragma once
// Key presses and clicks as a user makes them, through XTest on a connection of the test's own.

#include <X11/Xlib.h>

#include <vector>

namespace autoscene::testing {

// Holds the keysyms down in order and lets them go in reverse.
void pressKeys(Display* display, const std::vector<KeySym>& keysyms);

// Moves the pointer to the screen point and clicks `button` there.
void clickAt(Display* display, int x, int y, unsigned button = 1);

}  // namespace autoscene::testing
