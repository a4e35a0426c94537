#include "keys/QtKeyTable.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace autoscene::platform::keys {
namespace {

struct KeyRow {
    int qtKey = 0;
    int virtualKey = 0;
    std::string_view name;
};

// Shifted symbols share the virtual key of the key that types them on a US layout.
constexpr std::array kRows = std::to_array<KeyRow>({
    {0x01000000, 0x1B, "Esc"},
    {0x01000001, 0x09, "Tab"},
    {0x01000002, 0x09, "Backtab"},
    {0x01000003, 0x08, "Backspace"},
    {0x01000004, 0x0D, "Return"},
    {0x01000005, 0x0D, "Enter"},
    {0x01000006, 0x2D, "Ins"},
    {0x01000007, 0x2E, "Del"},
    {0x01000008, 0x13, "Pause"},
    {0x01000009, 0x2C, "Print"},
    {0x0100000A, 0x2C, "SysReq"},
    {0x0100000B, 0x0C, "Clear"},
    {0x01000010, 0x24, "Home"},
    {0x01000011, 0x23, "End"},
    {0x01000012, 0x25, "Left"},
    {0x01000013, 0x26, "Up"},
    {0x01000014, 0x27, "Right"},
    {0x01000015, 0x28, "Down"},
    {0x01000016, 0x21, "PgUp"},
    {0x01000017, 0x22, "PgDown"},
    {kQtKeyShift, 0x10, "Shift"},
    {kQtKeyControl, 0x11, "Ctrl"},
    {kQtKeyMeta, 0x5B, "Meta"},
    {kQtKeyAlt, 0x12, "Alt"},
    {0x01000024, 0x14, "CapsLock"},
    {0x01000025, 0x90, "NumLock"},
    {0x01000026, 0x91, "ScrollLock"},
    {0x01000055, 0x5D, "Menu"},
    {0x01000058, 0x2F, "Help"},
    {0x01000030, 0x70, "F1"},
    {0x01000031, 0x71, "F2"},
    {0x01000032, 0x72, "F3"},
    {0x01000033, 0x73, "F4"},
    {0x01000034, 0x74, "F5"},
    {0x01000035, 0x75, "F6"},
    {0x01000036, 0x76, "F7"},
    {0x01000037, 0x77, "F8"},
    {0x01000038, 0x78, "F9"},
    {0x01000039, 0x79, "F10"},
    {0x0100003A, 0x7A, "F11"},
    {0x0100003B, 0x7B, "F12"},
    {0x0100003C, 0x7C, "F13"},
    {0x0100003D, 0x7D, "F14"},
    {0x0100003E, 0x7E, "F15"},
    {0x0100003F, 0x7F, "F16"},
    {0x01000040, 0x80, "F17"},
    {0x01000041, 0x81, "F18"},
    {0x01000042, 0x82, "F19"},
    {0x01000043, 0x83, "F20"},
    {0x01000044, 0x84, "F21"},
    {0x01000045, 0x85, "F22"},
    {0x01000046, 0x86, "F23"},
    {0x01000047, 0x87, "F24"},
    {0x20, 0x20, "Space"},
    {0x21, 0x31, "!"},
    {0x22, 0xDE, "\""},
    {0x23, 0x33, "#"},
    {0x24, 0x34, "$"},
    {0x25, 0x35, "%"},
    {0x26, 0x37, "&"},
    {0x27, 0xDE, "'"},
    {0x28, 0x39, "("},
    {0x29, 0x30, ")"},
    {0x2A, 0x38, "*"},
    {0x2B, 0xBB, "+"},
    {0x2C, 0xBC, ","},
    {0x2D, 0xBD, "-"},
    {0x2E, 0xBE, "."},
    {0x2F, 0xBF, "/"},
    {0x30, 0x30, "0"},
    {0x31, 0x31, "1"},
    {0x32, 0x32, "2"},
    {0x33, 0x33, "3"},
    {0x34, 0x34, "4"},
    {0x35, 0x35, "5"},
    {0x36, 0x36, "6"},
    {0x37, 0x37, "7"},
    {0x38, 0x38, "8"},
    {0x39, 0x39, "9"},
    {0x3A, 0xBA, ":"},
    {0x3B, 0xBA, ";"},
    {0x3C, 0xBC, "<"},
    {0x3D, 0xBB, "="},
    {0x3E, 0xBE, ">"},
    {0x3F, 0xBF, "?"},
    {0x40, 0x32, "@"},
    {0x41, 0x41, "A"},
    {0x42, 0x42, "B"},
    {0x43, 0x43, "C"},
    {0x44, 0x44, "D"},
    {0x45, 0x45, "E"},
    {0x46, 0x46, "F"},
    {0x47, 0x47, "G"},
    {0x48, 0x48, "H"},
    {0x49, 0x49, "I"},
    {0x4A, 0x4A, "J"},
    {0x4B, 0x4B, "K"},
    {0x4C, 0x4C, "L"},
    {0x4D, 0x4D, "M"},
    {0x4E, 0x4E, "N"},
    {0x4F, 0x4F, "O"},
    {0x50, 0x50, "P"},
    {0x51, 0x51, "Q"},
    {0x52, 0x52, "R"},
    {0x53, 0x53, "S"},
    {0x54, 0x54, "T"},
    {0x55, 0x55, "U"},
    {0x56, 0x56, "V"},
    {0x57, 0x57, "W"},
    {0x58, 0x58, "X"},
    {0x59, 0x59, "Y"},
    {0x5A, 0x5A, "Z"},
    {0x5B, 0xDB, "["},
    {0x5C, 0xDC, "\\"},
    {0x5D, 0xDD, "]"},
    {0x5E, 0x36, "^"},
    {0x5F, 0xBD, "_"},
    {0x60, 0xC0, "`"},
    {0x7B, 0xDB, "{"},
    {0x7C, 0xDC, "|"},
    {0x7D, 0xDD, "}"},
    {0x7E, 0xC0, "~"},
});

const KeyRow* findRow(int qtKey) {
    const auto row = std::find_if(kRows.begin(), kRows.end(),
                                  [qtKey](const KeyRow& r) { return r.qtKey == qtKey; });
    return row == kRows.end() ? nullptr : &*row;
}

struct Modifier {
    std::uint32_t flag = 0;
    int qtKey = 0;
    std::string_view name;
};

// Display and key-group order of the modifiers.
constexpr std::array<Modifier, 4> kModifiers = {{
    {kQtControlModifier, kQtKeyControl, "Ctrl"},
    {kQtAltModifier, kQtKeyAlt, "Alt"},
    {kQtShiftModifier, kQtKeyShift, "Shift"},
    {kQtMetaModifier, kQtKeyMeta, "win"},
}};

}  // namespace

bool isQtModifierKey(int qtKey) {
    return qtKey == kQtKeyShift || qtKey == kQtKeyControl || qtKey == kQtKeyMeta ||
           qtKey == kQtKeyAlt;
}

int virtualKeyFromQtKey(int qtKey) {
    const KeyRow* row = findRow(qtKey);
    return row ? row->virtualKey : 0;
}

int virtualKeyFromName(std::string_view name) {
    const auto row = std::find_if(kRows.begin(), kRows.end(), [name](const KeyRow& r) {
        const bool letter = name.size() == 1 && std::isalpha(static_cast<unsigned char>(name[0]));
        return r.name == name || (letter && r.name.size() == 1 &&
                                  r.name[0] == std::toupper(static_cast<unsigned char>(name[0])));
    });
    return row == kRows.end() ? 0 : row->virtualKey;
}

std::string_view qtKeyName(int qtKey) {
    const KeyRow* row = findRow(qtKey);
    return row ? row->name : std::string_view{};
}

std::string keyEventName(int qtKey, std::uint32_t qtModifiers) {
    std::string name;
    const auto append = [&name](std::string_view part) {
        if (part.empty()) {
            return;
        }
        if (!name.empty()) {
            name += '+';
        }
        name += part;
    };
    for (const Modifier& modifier : kModifiers) {
        if (qtModifiers & modifier.flag) {
            append(modifier.name);
        }
    }
    if (!isQtModifierKey(qtKey)) {
        append(qtKeyName(qtKey));
    }
    return name;
}

std::vector<int> keyGroupFromEvent(int qtKey, std::uint32_t qtModifiers) {
    std::vector<int> group;
    for (const Modifier& modifier : kModifiers) {
        if (qtModifiers & modifier.flag) {
            group.push_back(modifier.qtKey);
        }
    }
    const int mainKey = isQtModifierKey(qtKey) ? 0 : virtualKeyFromQtKey(qtKey);
    if (mainKey != 0 && std::find(group.begin(), group.end(), mainKey) == group.end()) {
        group.push_back(mainKey);
    }
    return group;
}

std::string keyGroupLogText(const std::vector<int>& group) {
    std::string text = "group keys:";
    for (std::size_t i = 0; i < group.size(); ++i) {
        if (i > 0) {
            text += ", ";
        }
        text += std::to_string(group[i]);
    }
    return text;
}

}  // namespace autoscene::platform::keys
