#pragma once
// The matching rules of a window query, on titles and classes already read.

#include <string_view>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::x11 {

// Title equal (full match) or containing the wanted text, class equal; an empty wanted
// field matches everything. Case-sensitive.
bool topLevelMatches(std::string_view title, std::string_view className, const WindowQuery& query);

// Both child fields compare exactly; a query naming no child matches no child.
bool childMatches(std::string_view title, std::string_view className, const WindowQuery& query);

}  // namespace autoscene::platform::x11
