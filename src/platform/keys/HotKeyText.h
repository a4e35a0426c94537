#pragma once
// Hot keys as the settings keep them: modifier names ("Ctrl", "Alt", "Shift", "Win") joined
// with "+" in front of one key name, for example "Alt+Shift+S".

#include <optional>
#include <string_view>

#include "desktop/GlobalHotKeys.h"

namespace autoscene::platform::keys {

// Nothing for an unknown name, a missing main key or a second one.
std::optional<HotKey> parseHotKey(std::string_view text);

}  // namespace autoscene::platform::keys
