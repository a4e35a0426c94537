// Virtual keys and typed characters to keysyms.

// gtest first: Xlib defines macros (None, Bool) that clash with its names.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/keysym.h>

#include "x11/VirtualKeys.h"

namespace autoscene::platform::x11 {
namespace {

constexpr unsigned long kNoSymbol = NoSymbol;

TEST(VirtualKeys, MapToKeysymsAndEveryMappedOneIsReal) {
    // The computed ranges' ends, and one row of the table; letters are keys, not capitals.
    const std::pair<int, unsigned long> known[] = {
        {0x30, XK_0},       {0x39, XK_9},           {0x41, XK_a},      {0x5A, XK_z},
        {0x60, XK_KP_0},    {0x70, XK_F1},          {0x87, XK_F24},    {0x0D, XK_Return},
        {-1, kNoSymbol},    {0, kNoSymbol},         {0x3A, kNoSymbol}, {0x40, kNoSymbol},
        {0x100, kNoSymbol}, {0x7FFFFFFF, kNoSymbol}};
    for (const auto& [code, keysym] : known) {
        EXPECT_EQ(keysymForVirtualKey(code), keysym) << code;
    }
    int mapped = 0;
    for (int code = 0; code < 256; ++code) {
        if (const unsigned long keysym = keysymForVirtualKey(code); keysym != NoSymbol) {
            ++mapped;
            EXPECT_NE(XKeysymToString(keysym), nullptr) << "virtual key " << code;
        }
    }
    EXPECT_GE(mapped, 160) << "the table covers the keyboard";
}

TEST(TypedCharacters, CodePointsTypeLatin1OrUnicodeKeysyms) {
    const std::pair<char32_t, unsigned long> known[] = {
        {U'a', XK_a},    {U'é', XK_eacute}, {U'开', 0x1005F00ul}, {U'\n', XK_Return},
        {U'\t', XK_Tab}, {0x01, kNoSymbol}, {0x85, kNoSymbol}};
    for (const auto& [codePoint, keysym] : known) {
        EXPECT_EQ(keysymForCodePoint(codePoint), keysym) << std::uint32_t(codePoint);
    }
}

}  // namespace
}  // namespace autoscene::platform::x11
