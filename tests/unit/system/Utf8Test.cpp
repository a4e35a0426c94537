// The one UTF-8 decoder and encoder of the Qt-free code: typed text, window titles, OCR
// answers.

#include "system/Utf8.h"

#include <gtest/gtest.h>

namespace autoscene::sys {
namespace {

constexpr char32_t kBad = 0xFFFD;

TEST(Utf8, DecodesEveryLengthAndReplacesEachMalformedByte) {
    EXPECT_EQ(decodeUtf8("aé开😀"), (std::vector<char32_t>{U'a', U'é', U'开', U'😀'}));
    EXPECT_TRUE(decodeUtf8("").empty());
    EXPECT_EQ(decodeUtf8("a\x80z"), (std::vector<char32_t>{U'a', kBad, U'z'}));
    EXPECT_EQ(decodeUtf8("\xC0\xAF"), (std::vector<char32_t>{kBad, kBad})) << "overlong";
    EXPECT_EQ(decodeUtf8("\xED\xA0\x80"), (std::vector<char32_t>(3, kBad))) << "surrogate";
    EXPECT_EQ(decodeUtf8("\xF4\x90\x80\x80"), (std::vector<char32_t>(4, kBad))) << "past U+10FFFF";
    EXPECT_EQ(decodeUtf8("\xE5\xBC"), (std::vector<char32_t>{kBad, kBad})) << "truncated";
    EXPECT_EQ(decodeUtf8("\xE5z"), (std::vector<char32_t>{kBad, U'z'}));

    // A sequence cut by the end of a view is not read past it.
    const std::string_view cut = std::string_view("\xE5\xBC\x80", 3).substr(0, 2);
    const CodePoint first = decodeUtf8At(cut, 0);
    EXPECT_FALSE(first.valid);
    EXPECT_EQ(first.bytes, "\xE5");
}

// Which sequences are malformed is decodeUtf8At's rule, checked by the decoding case.
TEST(Utf8, RepairsEveryInvalidByteAndKeepsValidText) {
    EXPECT_EQ(repairUtf8("ok 开始 😀"), "ok 开始 😀");
    EXPECT_EQ(repairUtf8("a\xFF"
                         "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(repairUtf8(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf8, EncodesWhatItDecodesAndNeverWritesInvalidBytes) {
    std::string text;
    for (const char32_t codePoint :
         {U'a', U'\xFF', U'开', U'😀', char32_t(0x7F), char32_t(0x80), char32_t(0x7FF),
          char32_t(0x800), char32_t(0xFFFF), char32_t(0x10000), char32_t(0x10FFFF)}) {
        appendUtf8(text, codePoint);
    }
    EXPECT_EQ(decodeUtf8(text), (std::vector<char32_t>{U'a', U'\xFF', U'开', U'😀', 0x7F, 0x80,
                                                       0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}));

    std::string bad;
    appendUtf8(bad, 0xD800);
    appendUtf8(bad, 0x110000);
    EXPECT_EQ(bad, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace autoscene::sys
