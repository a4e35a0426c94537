#pragma once

#include <string>

namespace autoscene::sys {

// True when `text` contains a dotted IPv4 address (four numbers 0 to 255) standing as
// a word of its own; "host 10.0.0.2:5555" passes, "10.0.0.256" and "1.2.3" do not.
bool containsIpv4Address(const std::string& text);

}  // namespace autoscene::sys
