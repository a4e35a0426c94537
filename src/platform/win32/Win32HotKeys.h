#pragma once
// Global hot keys on Windows: RegisterHotKey on a thread of their own, whose message loop
// receives WM_HOTKEY whatever window has the focus. The registrations belong to that thread,
// so registering and unregistering run there while the caller waits.

#include <memory>

#include "desktop/GlobalHotKeys.h"

namespace autoscene::platform::win32 {

std::unique_ptr<IGlobalHotKeys> makeWin32HotKeys();

}  // namespace autoscene::platform::win32
