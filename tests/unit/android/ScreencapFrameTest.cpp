// Raw screencap output of old (12-byte header) and new (16-byte header) devices decoded
// to BGRA, and broken output refused with a reason.

#include <gtest/gtest.h>

#include "android/ScreencapFrame.h"

using namespace autoscene::platform::android;

namespace {

// Width, height, format and, in the 16-byte header, the colour space, little-endian.
std::string header(std::uint32_t width, std::uint32_t height, std::uint32_t format,
                   bool colourSpace) {
    std::string out;
    for (const std::uint32_t value : {width, height, format, 1u}) {
        for (int shift = 0; shift < 32; shift += 8) {
            out.push_back(char((value >> shift) & 0xff));
        }
    }
    return colourSpace ? out : out.substr(0, 12);
}

TEST(ScreencapFrame, EveryPixelFormatOfBothHeaderSizesBecomesBgra) {
    // RGBA, 2x1: red, then half-transparent blue.
    const std::string rgba("\xff\x00\x00\xff\x00\x00\xff\x80", 8);
    const std::vector<std::uint8_t> rgbaAsBgra{0, 0, 255, 255, 255, 0, 0, 128};
    // {format, with colour space (the 16-byte header), pixels, as BGRA}
    const std::tuple<std::uint32_t, bool, std::string, std::vector<std::uint8_t>> cases[] = {
        {1, false, rgba, rgbaAsBgra},
        {1, true, rgba, rgbaAsBgra},
        {2, true, std::string("\x10\x20\x30\x00", 4), {0x30, 0x20, 0x10, 255}},   // RGBX: opaque
        {5, true, std::string("\x10\x20\x30\x40", 4), {0x10, 0x20, 0x30, 0x40}},  // BGRA as is
        {3, true, std::string("\x10\x20\x30", 3), {0x30, 0x20, 0x10, 255}},       // RGB
        {4, true, std::string("\x1f\xf8", 2), {255, 0, 255, 255}},                // 565 magenta
    };
    for (const auto& [format, colourSpace, pixels, bgra] : cases) {
        const std::uint32_t width = std::uint32_t(bgra.size() / 4);
        const DecodedFrame decoded =
            decodeScreencap(header(width, 1, format, colourSpace) + pixels);
        EXPECT_EQ(std::tuple(decoded.frame.width, decoded.frame.height, decoded.frame.stride),
                  std::tuple(int(width), 1, int(width) * 4))
            << decoded.error;
        EXPECT_EQ(decoded.frame.pixels, bgra) << "format " << format;
    }
}

TEST(ScreencapFrame, ImpossibleFramesYieldNoFrameAndAReason) {
    // {name, bytes, unknown format}
    const std::tuple<const char*, std::string, bool> cases[] = {
        {"empty", "", false},
        {"short header", std::string(11, '\0'), false},
        {"zero width", header(0, 10, 1, true), false},
        {"zero height", header(10, 0, 1, true) + std::string(40, '\0'), false},
        {"huge", header(0x7fffffff, 0x7fffffff, 1, true), false},
        {"body short", header(4, 4, 1, true) + std::string(63, '\0'), false},
        {"body long", header(4, 4, 1, true) + std::string(65, '\0'), false},
        {"adb error text", "error: device offline\n", false},
        {"unknown format", header(1, 1, 9, true) + std::string(4, '\0'), true},
    };
    for (const auto& [name, bytes, unknownFormat] : cases) {
        const DecodedFrame decoded = decodeScreencap(bytes);
        EXPECT_TRUE(decoded.frame.empty() && !decoded.error.empty()) << name;
        EXPECT_EQ(decoded.unknownFormat, unknownFormat) << name;
    }
}

}  // namespace
