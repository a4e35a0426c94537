#pragma once
// The desktop the application drives, handed down from the program's entry: capture and
// input for runs, window control for the task's scripts, global hot keys, choosing a window
// by clicking on it. Null members without a display.

#include "desktop/DesktopBackend.h"
#include "desktop/GlobalHotKeys.h"
#include "desktop/WindowControl.h"
#include "desktop/WindowPicker.h"

namespace autoscene::ui {

struct Desktop {
    platform::IDesktopBackend* backend = nullptr;
    platform::IWindowControl* windows = nullptr;
    platform::IGlobalHotKeys* hotKeys = nullptr;
    platform::IWindowPicker* picker = nullptr;
};

}  // namespace autoscene::ui
