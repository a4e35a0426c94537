#pragma once
// Text typed in the foreground arrives as UTF-8 and is typed one keysym per code point.

#include <string_view>
#include <vector>

namespace autoscene::platform::x11 {

// Malformed sequences (stray continuation bytes, overlong forms, surrogates, values past
// U+10FFFF, a truncated tail) become U+FFFD, one per offending byte, so that bad text
// still types what is readable.
std::vector<char32_t> decodeUtf8(std::string_view text);

// The keysym that types a code point: Latin-1 keysyms for Latin-1, the Unicode keysym range
// for the rest, Return/Tab/BackSpace for their control characters; 0 (NoSymbol) for other
// control characters, which have nothing to type.
unsigned long keysymForCodePoint(char32_t codePoint);

}  // namespace autoscene::platform::x11
