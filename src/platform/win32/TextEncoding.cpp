#include "win32/TextEncoding.h"

#include <windows.h>

#include <limits>

namespace autoscene::platform::win32 {

std::wstring toUtf16(const std::string& text, unsigned codePage) {
    if (text.empty() || text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return {};
    }
    const int inputBytes = static_cast<int>(text.size());
    const int units = MultiByteToWideChar(codePage, 0, text.data(), inputBytes, nullptr, 0);
    if (units <= 0) {
        return {};
    }
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), inputBytes, wide.data(), units);
    return wide;
}

}  // namespace autoscene::platform::win32
