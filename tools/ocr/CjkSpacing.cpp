#include "CjkSpacing.h"

#include "system/Utf8.h"

#include <vector>

namespace autoscene::ocr {

namespace {

bool isCjk(char32_t c) {
    return (c >= 0x3001 && c <= 0x303F) ||  // CJK punctuation
           (c >= 0x3400 && c <= 0x4DBF) ||  // extension A
           (c >= 0x4E00 && c <= 0x9FFF) ||  // unified ideographs
           (c >= 0xF900 && c <= 0xFAFF) ||  // compatibility ideographs
           (c >= 0xFF00 && c <= 0xFFEF) ||  // full-width forms
           (c >= 0x20000 && c <= 0x2FA1F);  // extensions B and later
}

bool isBlank(char32_t c) {
    return c == U' ' || c == U'\t' || c == 0x3000;
}

}  // namespace

std::string removeSpacesBetweenCjk(std::string_view utf8) {
    std::vector<sys::CodePoint> codePoints;
    for (std::size_t pos = 0; pos < utf8.size();) {
        codePoints.push_back(sys::decodeUtf8At(utf8, pos));
        pos += codePoints.back().bytes.size();
    }
    std::string result;
    result.reserve(utf8.size());
    for (std::size_t i = 0; i < codePoints.size();) {
        if (isBlank(codePoints[i].value) && i > 0 && isCjk(codePoints[i - 1].value)) {
            std::size_t next = i;
            while (next < codePoints.size() && isBlank(codePoints[next].value)) {
                ++next;
            }
            if (next < codePoints.size() && isCjk(codePoints[next].value)) {
                i = next;
                continue;
            }
        }
        result += codePoints[i].bytes;
        ++i;
    }
    return result;
}

}  // namespace autoscene::ocr
