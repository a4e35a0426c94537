#include "system/Utf8.h"

namespace autoscene::sys {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isScalarValue(char32_t value) {
    return value <= 0x10FFFF && !(value >= 0xD800 && value <= 0xDFFF);
}

}  // namespace

CodePoint decodeUtf8At(std::string_view text, std::size_t pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    const CodePoint invalid{0, text.substr(pos, 1), false};
    std::size_t length = 0;
    char32_t value = 0;
    if (lead < 0x80) {
        return {lead, text.substr(pos, 1), true};
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        value = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        value = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        value = lead & 0x07;
    } else {
        return invalid;
    }
    if (length > text.size() - pos) {
        return invalid;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + i]);
        if ((next & 0xC0) != 0x80) {
            return invalid;
        }
        value = (value << 6) | (next & 0x3F);
    }
    const char32_t smallest = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    if (value < smallest || !isScalarValue(value)) {
        return invalid;
    }
    return {value, text.substr(pos, length), true};
}

std::vector<char32_t> decodeUtf8(std::string_view text) {
    std::vector<char32_t> codePoints;
    for (std::size_t pos = 0; pos < text.size();) {
        const CodePoint codePoint = decodeUtf8At(text, pos);
        codePoints.push_back(codePoint.valid ? codePoint.value : kReplacement);
        pos += codePoint.bytes.size();
    }
    return codePoints;
}

std::string repairUtf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const CodePoint codePoint = decodeUtf8At(text, pos);
        repaired += codePoint.valid ? codePoint.bytes : std::string_view("\xEF\xBF\xBD");
        pos += codePoint.bytes.size();
    }
    return repaired;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    if (!isScalarValue(codePoint)) {
        codePoint = kReplacement;
    }
    if (codePoint < 0x80) {
        text.push_back(static_cast<char>(codePoint));
    } else if (codePoint < 0x800) {
        text.push_back(static_cast<char>(0xC0 | (codePoint >> 6)));
        text.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    } else if (codePoint < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | (codePoint >> 12)));
        text.push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
        text.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    } else {
        text.push_back(static_cast<char>(0xF0 | (codePoint >> 18)));
        text.push_back(static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F)));
        text.push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
        text.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    }
}

}  // namespace autoscene::sys
