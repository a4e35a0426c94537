#include "keys/HotKeyText.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "keys/QtKeyTable.h"

namespace autoscene::platform::keys {

namespace {

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) ==
               std::tolower(static_cast<unsigned char>(y));
    });
}

// Sets the modifier `part` names; false when it names none.
bool setModifier(std::string_view part, HotKey& key) {
    const struct {
        std::string_view name;
        bool HotKey::*flag;
    } modifiers[] = {{"Ctrl", &HotKey::control},
                     {"Alt", &HotKey::alt},
                     {"Shift", &HotKey::shift},
                     {"Win", &HotKey::win}};
    for (const auto& modifier : modifiers) {
        if (sameName(part, modifier.name)) {
            key.*modifier.flag = true;
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<HotKey> parseHotKey(std::string_view text) {
    HotKey key;
    // "+" is a key of its own: a part is empty only where it stands for that key.
    while (!text.empty()) {
        const size_t plus = text.find('+', 1);
        const std::string_view part = text.substr(0, plus);
        text = plus == std::string_view::npos ? std::string_view{} : text.substr(plus + 1);
        if (setModifier(part, key)) {
            continue;
        }
        const int virtualKey = virtualKeyFromName(part);
        if (virtualKey == 0 || key.virtualKey != 0) {
            return std::nullopt;
        }
        key.virtualKey = virtualKey;
    }
    if (key.virtualKey == 0) {
        return std::nullopt;
    }
    return key;
}

}  // namespace autoscene::platform::keys
