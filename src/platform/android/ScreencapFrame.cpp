#include "android/ScreencapFrame.h"

#include <cstdint>

namespace autoscene::platform::android {

namespace {

enum PixelFormat : std::uint32_t {
    kRgba8888 = 1,
    kRgbx8888 = 2,
    kRgb888 = 3,
    kRgb565 = 4,
    kBgra8888 = 5,
};

std::uint32_t readU32(std::string_view bytes, std::size_t at) {
    const auto* b = reinterpret_cast<const unsigned char*>(bytes.data() + at);
    return std::uint32_t(b[0]) | std::uint32_t(b[1]) << 8 | std::uint32_t(b[2]) << 16 |
           std::uint32_t(b[3]) << 24;
}

int bytesPerPixel(std::uint32_t format) {
    switch (format) {
        case kRgba8888:
        case kRgbx8888:
        case kBgra8888:
            return 4;
        case kRgb888:
            return 3;
        case kRgb565:
            return 2;
        default:
            return 0;
    }
}

void toBgra(const unsigned char* in, std::uint32_t format, std::uint8_t* out) {
    switch (format) {
        case kRgba8888:
        case kRgbx8888:
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
            out[3] = format == kRgba8888 ? in[3] : 255;
            break;
        case kBgra8888:
            out[0] = in[0];
            out[1] = in[1];
            out[2] = in[2];
            out[3] = in[3];
            break;
        case kRgb888:
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
            out[3] = 255;
            break;
        default: {  // RGB 565, little-endian
            const unsigned value = unsigned(in[0]) | unsigned(in[1]) << 8;
            out[0] = std::uint8_t((value & 0x1f) * 255 / 31);
            out[1] = std::uint8_t(((value >> 5) & 0x3f) * 255 / 63);
            out[2] = std::uint8_t(((value >> 11) & 0x1f) * 255 / 31);
            out[3] = 255;
        }
    }
}

}  // namespace

DecodedFrame decodeScreencap(std::string_view bytes) {
    DecodedFrame result;
    if (bytes.size() < 12) {
        result.error = "screencap: " + std::to_string(bytes.size()) + " bytes, no header";
        return result;
    }
    const std::uint32_t width = readU32(bytes, 0);
    const std::uint32_t height = readU32(bytes, 4);
    const std::uint32_t format = readU32(bytes, 8);
    const int pixelBytes = bytesPerPixel(format);
    if (width == 0 || height == 0 || width > kMaxScreenSide || height > kMaxScreenSide) {
        result.error =
            "screencap: impossible size " + std::to_string(width) + "x" + std::to_string(height);
        return result;
    }
    if (pixelBytes == 0) {
        result.error = "screencap: unknown pixel format " + std::to_string(format);
        result.unknownFormat = true;
        return result;
    }
    const std::size_t body = std::size_t(width) * height * std::size_t(pixelBytes);
    std::size_t header = 0;
    if (bytes.size() == 16 + body) {
        header = 16;
    } else if (bytes.size() == 12 + body) {
        header = 12;
    } else {
        result.error = "screencap: " + std::to_string(bytes.size()) + " bytes for a " +
                       std::to_string(width) + "x" + std::to_string(height) + " frame of " +
                       std::to_string(pixelBytes) + " bytes per pixel";
        return result;
    }
    BgraFrame& frame = result.frame;
    frame.width = int(width);
    frame.height = int(height);
    frame.stride = frame.width * 4;
    frame.pixels.resize(std::size_t(frame.stride) * height);
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data() + header);
    std::uint8_t* out = frame.pixels.data();
    const std::size_t pixels = std::size_t(width) * height;
    if (format == kRgba8888) {  // the common case, kept to one tight loop
        for (std::size_t i = 0; i < pixels; ++i, in += 4, out += 4) {
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
            out[3] = in[3];
        }
        return result;
    }
    for (std::size_t i = 0; i < pixels; ++i, in += pixelBytes, out += 4) {
        toBgra(in, format, out);
    }
    return result;
}

}  // namespace autoscene::platform::android
