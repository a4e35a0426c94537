#include "x11/Utf8.h"

#include <X11/X.h>
#include <X11/keysym.h>

namespace autoscene::platform::x11 {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr unsigned long kUnicodeKeysymBase = 0x01000000;

// Length of the sequence a lead byte announces, 0 for a byte that cannot start one.
int sequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return 4;
    }
    return 0;
}

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

}  // namespace

std::vector<char32_t> decodeUtf8(std::string_view text) {
    static constexpr char32_t kMinimum[] = {0, 0, 0x80, 0x800, 0x10000};
    std::vector<char32_t> codePoints;
    std::size_t index = 0;
    while (index < text.size()) {
        const auto lead = static_cast<unsigned char>(text[index]);
        const int length = sequenceLength(lead);
        bool valid = length > 0 && index + static_cast<std::size_t>(length) <= text.size();
        char32_t value = length == 1 ? lead : lead & (0x7F >> length);
        for (int k = 1; valid && k < length; ++k) {
            const auto byte = static_cast<unsigned char>(text[index + k]);
            valid = isContinuation(byte);
            value = (value << 6) | (byte & 0x3F);
        }
        valid = valid && value >= kMinimum[length] && value <= 0x10FFFF &&
                !(value >= 0xD800 && value <= 0xDFFF);
        codePoints.push_back(valid ? value : kReplacement);
        index += valid ? static_cast<std::size_t>(length) : 1;
    }
    return codePoints;
}

unsigned long keysymForCodePoint(char32_t codePoint) {
    switch (codePoint) {
        case U'\n':
        case U'\r':
            return XK_Return;
        case U'\t':
            return XK_Tab;
        case U'\b':
            return XK_BackSpace;
        default:
            break;
    }
    if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint > 0x10FFFF) {
        return NoSymbol;
    }
    if (codePoint <= 0xFF) {
        return codePoint;
    }
    return kUnicodeKeysymBase | codePoint;
}

}  // namespace autoscene::platform::x11
