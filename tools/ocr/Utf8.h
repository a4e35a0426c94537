#pragma once

#include <string>
#include <string_view>

namespace autoscene::ocr {

struct CodePoint {
    char32_t value = 0;
    std::string_view bytes;  // the encoded sequence, or the one offending byte
    bool valid = false;
};

// Decodes the sequence starting at `pos` (< text.size()). An invalid or cut sequence
// comes back as its first byte alone, not valid, so a caller can step over it.
CodePoint decodeUtf8At(std::string_view text, std::size_t pos);

// `text` with each invalid byte replaced by U+FFFD.
std::string repairUtf8(std::string_view text);

}  // namespace autoscene::ocr
