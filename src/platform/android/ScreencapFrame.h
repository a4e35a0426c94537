#pragma once
// Decoding what "screencap" prints without -p: a little-endian header of width, height
// and pixel format (12 bytes; newer devices add a colour space, 16 bytes), then the rows
// without padding.

#include <string>
#include <string_view>

#include "desktop/DesktopBackend.h"

namespace autoscene::platform::android {

// A side of more than this is not a phone screen but a broken header.
constexpr int kMaxScreenSide = 16384;

struct DecodedFrame {
    BgraFrame frame;             // empty when the bytes are not a frame
    std::string error;           // why, for the log
    bool unknownFormat = false;  // a well-formed header of a pixel format not read here
};

// Converts RGBA_8888, RGBX_8888, BGRA_8888, RGB_888 and RGB_565 to BGRA. Which header size
// the device used is told by the total length.
DecodedFrame decodeScreencap(std::string_view bytes);

}  // namespace autoscene::platform::android
