#pragma once
// The one translation from Qt key codes to Windows virtual-key codes, and the
// display names of keys. Standard C++ only: shared by every desktop back end.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace autoscene::platform::keys {

// Qt key codes of the four modifier keys and Qt's modifier flags, as Qt defines them.
inline constexpr int kQtKeyShift = 0x01000020;
inline constexpr int kQtKeyControl = 0x01000021;
inline constexpr int kQtKeyMeta = 0x01000022;
inline constexpr int kQtKeyAlt = 0x01000023;

inline constexpr std::uint32_t kQtShiftModifier = 0x02000000;
inline constexpr std::uint32_t kQtControlModifier = 0x04000000;
inline constexpr std::uint32_t kQtAltModifier = 0x08000000;
inline constexpr std::uint32_t kQtMetaModifier = 0x10000000;

bool isQtModifierKey(int qtKey);

// The Windows virtual-key code of a Qt key; 0 when the table has no row for it.
int virtualKeyFromQtKey(int qtKey);

// The virtual-key code of the key shown as `name` (letters in either case); 0 when none is.
int virtualKeyFromName(std::string_view name);

// The name shown for a Qt key ("A", "F5", "PgUp", ","); empty when unknown.
std::string_view qtKeyName(int qtKey);

// A captured key event as shown to the user: "Ctrl", "Alt", "Shift", "win" for the
// modifiers held, in that order, then the key's own name unless it is a modifier,
// joined with "+".
std::string keyEventName(int qtKey, std::uint32_t qtModifiers);

// A key group as the key action stores it: the Qt codes of Control, Alt, Shift and
// Meta for each modifier held, in that order, then the virtual-key code of the main
// key (left out when it is a modifier or has no row), without duplicates.
std::vector<int> keyGroupFromEvent(int qtKey, std::uint32_t qtModifiers);

// "group keys:" followed by the codes joined with ", ".
std::string keyGroupLogText(const std::vector<int>& group);

}  // namespace autoscene::platform::keys
