#include <gtest/gtest.h>

#include "keys/HotKeyText.h"
#include "keys/QtKeyTable.h"

using namespace autoscene::platform::keys;

TEST(KeyEventName, JoinsModifiersInFixedOrderThenTheKey) {
    EXPECT_EQ(keyEventName('S', kQtShiftModifier | kQtAltModifier), "Alt+Shift+S");
    EXPECT_EQ(keyEventName(0x01000037, 0), "F8");
    EXPECT_EQ(
        keyEventName('X', kQtMetaModifier | kQtShiftModifier | kQtControlModifier | kQtAltModifier),
        "Ctrl+Alt+Shift+win+X");
    // A modifier pressed alone names only the modifiers held.
    EXPECT_EQ(keyEventName(kQtKeyControl, kQtControlModifier), "Ctrl");
    EXPECT_EQ(keyEventName(kQtKeyShift, 0), "");
}

TEST(KeyGroup, ModifierQtCodesThenMainVirtualKey) {
    EXPECT_EQ(keyGroupFromEvent('C', kQtControlModifier), (std::vector<int>{kQtKeyControl, 0x43}));
    EXPECT_EQ(keyGroupFromEvent(0x01000012, kQtShiftModifier | kQtMetaModifier | kQtAltModifier |
                                                kQtControlModifier),
              (std::vector<int>{kQtKeyControl, kQtKeyAlt, kQtKeyShift, kQtKeyMeta, 37}));
    // The modifier key itself is never the main key.
    EXPECT_EQ(keyGroupFromEvent(kQtKeyAlt, kQtAltModifier), (std::vector<int>{kQtKeyAlt}));
    EXPECT_TRUE(keyGroupFromEvent(0x01FFFFFF, 0).empty());
    EXPECT_EQ(keyGroupLogText({kQtKeyControl, 0x43}) + '|' + keyGroupLogText({}),
              "group keys:16777249, 67|group keys:");
}

namespace {

using autoscene::platform::keys::parseHotKey;

TEST(HotKeyText, ReadsModifiersAndOneKey) {
    // {text, {control, alt, shift, win, virtual key}}
    const std::pair<const char*, std::tuple<bool, bool, bool, bool, int>> cases[] = {
        {"Alt+Shift+S", {false, true, true, false, 0x53}},
        {"F8", {false, false, false, false, 0x77}},
        {"F10", {false, false, false, false, 0x79}},
        {"Ctrl+Win+a", {true, false, false, true, 0x41}},
        {"Ctrl++", {true, false, false, false, 0xBB}}};
    for (const auto& [text, expected] : cases) {
        const auto key = parseHotKey(text);
        ASSERT_TRUE(key) << text;
        EXPECT_EQ(std::tuple(key->control, key->alt, key->shift, key->win, key->virtualKey),
                  expected)
            << text;
    }
}

TEST(HotKeyText, RefusesWhatNamesNoSingleKey) {
    for (const char* text : {"", "Alt+Shift", "F8+F10", "Hyper+S", "Alt+", "S+Alt+Q"}) {
        EXPECT_FALSE(parseHotKey(text)) << text;
    }
}

}  // namespace
