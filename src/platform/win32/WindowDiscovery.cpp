#include "win32/WindowDiscovery.h"

#include <algorithm>
#include <array>

namespace autoscene::platform::win32 {
namespace {

constexpr int kTextBufferChars = 260;

BOOL CALLBACK collectWindow(HWND window, LPARAM list) {
    auto* windows = reinterpret_cast<std::vector<HWND>*>(list);
    if (std::find(windows->begin(), windows->end(), window) == windows->end()) {
        windows->push_back(window);
    }
    return TRUE;
}

}  // namespace

std::string windowText(HWND window) {
    std::array<char, kTextBufferChars> buffer{};
    const int length = GetWindowTextA(window, buffer.data(), kTextBufferChars);
    return std::string(buffer.data(), static_cast<std::size_t>(std::max(length, 0)));
}

std::string windowClassName(HWND window) {
    std::array<char, kTextBufferChars> buffer{};
    const int length = GetClassNameA(window, buffer.data(), kTextBufferChars);
    return std::string(buffer.data(), static_cast<std::size_t>(std::max(length, 0)));
}

std::vector<HWND> candidateTopLevelWindows() {
    std::vector<HWND> windows;
    const DWORD ownProcess = GetCurrentProcessId();
    HWND window = GetForegroundWindow();
    if (window == nullptr) {
        window = GetTopWindow(nullptr);
    }
    for (; window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != ownProcess && IsWindowVisible(window)) {
            windows.push_back(window);
        }
    }
    return windows;
}

std::vector<HWND> descendantWindows(HWND window) {
    std::vector<HWND> windows;
    EnumChildWindows(window, collectWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

bool matchesTopLevel(HWND window, const WindowQuery& query) {
    if (!IsWindow(window)) {
        return false;
    }
    if (!query.title.empty()) {
        const std::string text = windowText(window);
        const bool titleMatches = query.fullMatchTitle
                                      ? text == query.title
                                      : text.find(query.title) != std::string::npos;
        if (!titleMatches) {
            return false;
        }
    }
    return query.className.empty() || windowClassName(window) == query.className;
}

HWND findMatchingChild(HWND window, const WindowQuery& query) {
    if (query.childTitle.empty() && query.childClassName.empty()) {
        return nullptr;
    }
    for (HWND child : descendantWindows(window)) {
        if ((query.childTitle.empty() || windowText(child) == query.childTitle) &&
            (query.childClassName.empty() || windowClassName(child) == query.childClassName)) {
            return child;
        }
    }
    return nullptr;
}

}  // namespace autoscene::platform::win32
