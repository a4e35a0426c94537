#include "x11/WindowMatch.h"

namespace autoscene::platform::x11 {

bool topLevelMatches(std::string_view title, std::string_view className, const WindowQuery& query) {
    if (!query.title.empty()) {
        const bool titleOk = query.fullMatchTitle
                                 ? title == query.title
                                 : title.find(query.title) != std::string_view::npos;
        if (!titleOk) {
            return false;
        }
    }
    return query.className.empty() || className == query.className;
}

bool childMatches(std::string_view title, std::string_view className, const WindowQuery& query) {
    if (query.childTitle.empty() && query.childClassName.empty()) {
        return false;
    }
    return (query.childTitle.empty() || title == query.childTitle) &&
           (query.childClassName.empty() || className == query.childClassName);
}

}  // namespace autoscene::platform::x11
