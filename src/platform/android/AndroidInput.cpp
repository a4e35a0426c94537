#include "android/AndroidInput.h"

#include <array>
#include <utility>

namespace autoscene::platform::android {

int androidKeyCode(int virtualKey) {
    static constexpr std::array<std::pair<int, int>, 11> kNamed{{
        {27, 4},    // Escape: back
        {36, 3},    // Home
        {38, 19},   // Up
        {40, 20},   // Down
        {37, 21},   // Left
        {39, 22},   // Right
        {13, 66},   // Enter
        {46, 112},  // Delete: forward delete
        {8, 67},    // Backspace: delete
        {91, 187},  // left Windows key: app switch
        {92, 187},  // right Windows key: app switch
    }};
    for (const auto& [key, code] : kNamed) {
        if (key == virtualKey) {
            return code;
        }
    }
    if (virtualKey >= 0x30 && virtualKey <= 0x39) {
        return virtualKey - 41;
    }
    if (virtualKey >= 0x41 && virtualKey <= 0x5A) {
        return virtualKey - 36;
    }
    return virtualKey;
}

ShellText inputTextArgument(std::string_view utf8) {
    ShellText result;
    result.argument.push_back('\'');
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x80) {
            // Keep the whole UTF-8 sequence together in what was dropped.
            size_t end = i + 1;
            while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) {
                ++end;
            }
            result.dropped.append(utf8.substr(i, end - i));
            i = end - 1;
        } else if (c == ' ') {
            result.argument += "%s";
        } else if (c == '\'') {
            result.argument += "'\\''";
        } else if (c < 0x20 || c == 0x7f) {
            result.dropped.push_back(char(c));
        } else {
            result.argument.push_back(char(c));
        }
    }
    result.argument += "'";
    return result;
}

}  // namespace autoscene::platform::android
