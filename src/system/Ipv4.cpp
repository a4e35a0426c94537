#include "system/Ipv4.h"

#include <regex>

namespace autoscene::sys {

bool containsIpv4Address(const std::string& text) {
    static const std::regex pattern(
        R"(\b(25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\.(25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\.)"
        R"((25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\.(25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\b)");
    return std::regex_search(text, pattern);
}

}  // namespace autoscene::sys
