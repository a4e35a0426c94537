// Virtual keys and typed characters to keysyms.

// gtest first: Xlib defines macros (None, Bool) that clash with its names.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/keysym.h>

#include "Utf8.h"
#include "VirtualKeys.h"

namespace autoscene::targets::x11 {
namespace {

TEST(VirtualKeys, CommonKeysMapToTheirKeysyms) {
    EXPECT_EQ(keysymForVirtualKey(0x0D), XK_Return);
    EXPECT_EQ(keysymForVirtualKey(0x25), XK_Left);
    EXPECT_EQ(keysymForVirtualKey(0x28), XK_Down);
    EXPECT_EQ(keysymForVirtualKey(0x30), XK_0);
    EXPECT_EQ(keysymForVirtualKey(0x39), XK_9);
    EXPECT_EQ(keysymForVirtualKey(0x41), XK_a) << "letters are keys, not capitals";
    EXPECT_EQ(keysymForVirtualKey(0x5A), XK_z);
    EXPECT_EQ(keysymForVirtualKey(0x60), XK_KP_0);
    EXPECT_EQ(keysymForVirtualKey(0x70), XK_F1);
    EXPECT_EQ(keysymForVirtualKey(0x87), XK_F24);
    EXPECT_EQ(keysymForVirtualKey(0x5B), XK_Super_L);
    EXPECT_EQ(keysymForVirtualKey(0xBC), XK_comma);
    EXPECT_EQ(keysymForVirtualKey(0xDE), XK_apostrophe);
    EXPECT_EQ(keysymForVirtualKey(0xA5), XK_Alt_R);
}

TEST(VirtualKeys, CodesWithoutAKeyAndOutOfRangeGiveNoSymbol) {
    for (const int code : {-1, 0, 0x01, 0x02, 0x07, 0x3A, 0x40, 0xFF, 0x100, 0x7FFFFFFF}) {
        EXPECT_EQ(keysymForVirtualKey(code), static_cast<unsigned long>(NoSymbol)) << code;
    }
}

TEST(VirtualKeys, EveryMappedKeysymIsARealKeysym) {
    int mapped = 0;
    for (int code = 0; code < 256; ++code) {
        const unsigned long keysym = keysymForVirtualKey(code);
        if (keysym != NoSymbol) {
            ++mapped;
            EXPECT_NE(XKeysymToString(keysym), nullptr) << "virtual key " << code;
        }
    }
    EXPECT_GE(mapped, 160) << "the table covers the keyboard";
}

TEST(Utf8, DecodesEveryLength) {
    EXPECT_EQ(decodeUtf8("aé开😀"), (std::vector<char32_t>{U'a', U'é', U'开', U'😀'}));
    EXPECT_TRUE(decodeUtf8("").empty());
}

TEST(Utf8, MalformedBytesBecomeReplacementCharacters) {
    const char32_t bad = 0xFFFD;
    EXPECT_EQ(decodeUtf8("a\x80z"), (std::vector<char32_t>{U'a', bad, U'z'}));
    EXPECT_EQ(decodeUtf8("\xC0\xAF"), (std::vector<char32_t>{bad, bad})) << "overlong";
    EXPECT_EQ(decodeUtf8("\xED\xA0\x80"), (std::vector<char32_t>{bad, bad, bad})) << "surrogate";
    EXPECT_EQ(decodeUtf8("\xF4\x90\x80\x80"), (std::vector<char32_t>{bad, bad, bad, bad}))
        << "past U+10FFFF";
    EXPECT_EQ(decodeUtf8("\xE5\xBC"), (std::vector<char32_t>{bad, bad})) << "truncated";
    EXPECT_EQ(decodeUtf8("\xE5z"), (std::vector<char32_t>{bad, U'z'}));
}

TEST(Utf8, CodePointsTypeLatin1OrUnicodeKeysyms) {
    EXPECT_EQ(keysymForCodePoint(U'a'), XK_a);
    EXPECT_EQ(keysymForCodePoint(U'é'), XK_eacute);
    EXPECT_EQ(keysymForCodePoint(U'开'), 0x1005F00ul);
    EXPECT_EQ(keysymForCodePoint(U'\n'), XK_Return);
    EXPECT_EQ(keysymForCodePoint(U'\t'), XK_Tab);
    EXPECT_EQ(keysymForCodePoint(0x01), static_cast<unsigned long>(NoSymbol));
    EXPECT_EQ(keysymForCodePoint(0x85), static_cast<unsigned long>(NoSymbol));
}

}  // namespace
}  // namespace autoscene::targets::x11
