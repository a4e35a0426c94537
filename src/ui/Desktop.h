#pragma once
// The desktop the application drives, handed down from the program's entry: capture and
// input for runs, window control for the task's scripts, global hot keys. Null members
// without a display.

#include "desktop/DesktopBackend.h"
#include "desktop/GlobalHotKeys.h"
#include "desktop/WindowControl.h"

namespace autoscene::ui {

struct Desktop {
    platform::IDesktopBackend* backend = nullptr;
    platform::IWindowControl* windows = nullptr;
    platform::IGlobalHotKeys* hotKeys = nullptr;
};

}  // namespace autoscene::ui
