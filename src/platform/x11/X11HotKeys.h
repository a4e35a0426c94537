#pragma once
// Global hot keys on X11: passive grabs on the root window of a connection of their own, so
// the presses reach the program whichever window has the focus. Each key is grabbed once
// per combination of the lock keys (Caps, Num and Scroll Lock), which X counts as
// modifiers, so that a lit Caps Lock does not turn the hot key off.

#include <memory>

#include "desktop/GlobalHotKeys.h"

namespace autoscene::platform {

// Null when the display cannot be opened; `display` null means $DISPLAY.
std::unique_ptr<IGlobalHotKeys> makeX11HotKeys(const char* display);

}  // namespace autoscene::platform
