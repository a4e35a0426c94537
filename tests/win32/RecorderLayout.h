#pragma once
// What the recorder application shows and how it reports, shared by the recorder
// and the tests that check it.

#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>

namespace autoscene::win32test {

inline constexpr wchar_t kRecorderClass[] = L"AutosceneRecorder";
inline constexpr wchar_t kChildClass[] = L"RecorderChild";
inline constexpr char kRecorderTitle[] = "Autoscene Recorder";
inline constexpr wchar_t kHiddenTitle[] = L"Autoscene Recorder (hidden)";
inline constexpr int kClientWidth = 400;
inline constexpr int kClientHeight = 300;
inline constexpr int kMarkerMessage = 0x8000;  // WM_APP: a posted marker, logged as is

struct ChildPlace {
    const char* name;
    int parent;               // index into kWindows; -1 for the top-level window
    int x, y, width, height;  // in the parent's client coordinates
};

// Index 0 is the top-level window; the others are its children in creation order.
inline constexpr ChildPlace kWindows[] = {
    {"top", -1, 0, 0, kClientWidth, kClientHeight},
    {"outer", 0, 50, 40, 200, 150},
    {"inner", 1, 20, 30, 60, 50},
    {"side", 0, 300, 200, 50, 50},
};

// The colour every window paints at a point given in top-level client coordinates;
// each window adds its own index so the children show in a capture.
inline std::uint32_t patternBgra(int x, int y, int windowIndex) {
    const auto blue =
        static_cast<std::uint32_t>((windowIndex * 60 + (x >> 8) * 7 + (y >> 8)) & 0xFF);
    const auto green = static_cast<std::uint32_t>(y & 0xFF);
    const auto red = static_cast<std::uint32_t>(x & 0xFF);
    return blue | (green << 8) | (red << 16);
}

// The index of the window that shows a top-level client point: the last, deepest, of
// kWindows holding it.
inline int windowIndexAt(int x, int y) {
    int found = 0;
    int left[std::size(kWindows)] = {}, top[std::size(kWindows)] = {};
    for (std::size_t i = 1; i < std::size(kWindows); ++i) {
        const ChildPlace& place = kWindows[i];
        left[i] = left[place.parent] + place.x;
        top[i] = top[place.parent] + place.y;
        if (x >= left[i] && x < left[i] + place.width && y >= top[i] && y < top[i] + place.height) {
            found = static_cast<int>(i);
        }
    }
    return found;
}

// One logged message: window name, message, wParam and lParam in hex.
inline std::string logLine(const char* window, unsigned message, std::uint64_t wParam,
                           std::uint64_t lParam) {
    char line[128] = {};
    std::snprintf(line, sizeof(line), "%s %04x %llx %llx", window, message,
                  static_cast<unsigned long long>(wParam), static_cast<unsigned long long>(lParam));
    return line;
}

}  // namespace autoscene::win32test
