#pragma once
// Task files name keys by Windows virtual-key code; X11 types keysyms.

namespace autoscene::platform::x11 {

// The keysym of the key a virtual-key code names (letters give the unshifted, lower-case
// keysym, as the key itself is meant, not a character). 0 (NoSymbol) for codes outside
// 0..255 and for codes with no key on X11 (mouse buttons, reserved codes).
unsigned long keysymForVirtualKey(int virtualKey);

}  // namespace autoscene::platform::x11
