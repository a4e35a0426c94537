#pragma once
// Conversions between the interface's opaque handles and HWND, and a scope guard
// so that every GDI and kernel object is released on every path.

#include <windows.h>

#include <cstdint>
#include <utility>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::win32 {

inline HWND toHwnd(WindowHandle window) {
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(window));
}

inline WindowHandle toHandle(HWND window) {
    return static_cast<WindowHandle>(reinterpret_cast<std::uintptr_t>(window));
}

template <typename Release>
class ScopeExit {
public:
    explicit ScopeExit(Release release) : release_(std::move(release)) {}
    ~ScopeExit() { release_(); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

private:
    Release release_;
};

}  // namespace autoscene::platform::win32
