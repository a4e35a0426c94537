#pragma once
// Where the back end's diagnostic lines go (UTF-8); the owner of the back end decides.

#include <functional>
#include <string>

namespace autoscene::platform::x11 {

using LogSink = std::function<void(const std::string&)>;

}  // namespace autoscene::platform::x11
