#pragma once
// 8-bit text to UTF-16 for the wide Win32 calls.

#include <string>

namespace autoscene::platform::win32 {

// codePage is CP_UTF8 or CP_ACP. Invalid sequences become U+FFFD.
std::wstring toUtf16(const std::string& text, unsigned codePage);

}  // namespace autoscene::platform::win32
