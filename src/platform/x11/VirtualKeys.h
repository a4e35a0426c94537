#pragma once
// X11 types keysyms: task files name keys by Windows virtual-key code, and text is typed
// one keysym per code point.

namespace autoscene::platform::x11 {

// The keysym of the key a virtual-key code names (letters give the unshifted, lower-case
// keysym, as the key itself is meant, not a character). 0 (NoSymbol) for codes outside
// 0..255 and for codes with no key on X11 (mouse buttons, reserved codes).
unsigned long keysymForVirtualKey(int virtualKey);

// The keysym that types a code point: Latin-1 keysyms for Latin-1, the Unicode keysym range
// for the rest, Return/Tab/BackSpace for their control characters; 0 (NoSymbol) for other
// control characters, which have nothing to type.
unsigned long keysymForCodePoint(char32_t codePoint);

}  // namespace autoscene::platform::x11
