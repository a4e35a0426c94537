#pragma once
// UTF-8 for the code without Qt: decoding that never reads past the text and replaces
// what is malformed, and encoding.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace autoscene::sys {

struct CodePoint {
    char32_t value = 0;
    std::string_view bytes;  // the encoded sequence, or the one offending byte
    bool valid = false;
};

// Decodes the sequence starting at `pos` (< text.size()). A malformed sequence (stray
// continuation byte, overlong form, surrogate, value past U+10FFFF, cut short) comes back
// as its first byte alone, not valid, so that a caller can step over it.
CodePoint decodeUtf8At(std::string_view text, std::size_t pos);

// The code points of `text`, with U+FFFD for each byte of a malformed sequence, so that
// bad text still yields what is readable.
std::vector<char32_t> decodeUtf8(std::string_view text);

// `text` with each byte of a malformed sequence replaced by U+FFFD.
std::string repairUtf8(std::string_view text);

// Appends the UTF-8 form of `codePoint`; U+FFFD for a surrogate or a value past U+10FFFF.
void appendUtf8(std::string& text, char32_t codePoint);

}  // namespace autoscene::sys
