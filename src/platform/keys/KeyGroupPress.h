#pragma once
// Pressing a stored key group on a desktop back end.

#include <functional>
#include <stop_token>
#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::keys {

// Every key down in list order, then every key up in reverse order. Groups keep their
// modifiers as Qt key codes; those go out as the modifiers' virtual keys. A stop ends
// the downs, and only the keys already down go up; false when it did. Only the runner
// thread that owns foreground input may call this (the caller checks).
bool pressKeyGroup(IDesktopBackend& backend, const InputTarget& target,
                   const std::vector<int>& group, bool background,
                   const std::stop_token& stop = {});

// The order and stop of pressKeyGroup for any sender: `send` gets each entry as stored,
// for the sender to map to its own key codes. False when a stop cut the group short.
bool sendKeyGroup(const std::vector<int>& group, const std::stop_token& stop,
                  const std::function<void(int entry, KeyOp op)>& send);

// The virtual key sent for one entry of a key group.
int virtualKeyOfGroupEntry(int code);

}  // namespace autoscene::platform::keys
