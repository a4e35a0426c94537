#pragma once
// Pressing a stored key group on a desktop back end.

#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::keys {

// Every key down in list order, then every key up in reverse order. Groups keep their
// modifiers as Qt key codes; those go out as the modifiers' virtual keys. Only the
// runner thread that owns foreground input may call this (the caller checks).
void pressKeyGroup(IDesktopBackend& backend, const InputTarget& target,
                   const std::vector<int>& group, bool background);

// The virtual key sent for one entry of a key group.
int virtualKeyOfGroupEntry(int code);

}  // namespace autoscene::platform::keys
