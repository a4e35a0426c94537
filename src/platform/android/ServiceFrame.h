#pragma once
// Frames of the device service's "/request_image": the geometry comes in response headers
// ("state", "pixelStride", "rowPadding", "image-width", "image-height", "density"), the
// pixels in the body.

#include <string>
#include <string_view>
#include <vector>

#include "android/ScreencapFrame.h"

namespace autoscene::platform::android {

struct ServiceFrameInfo {
    int state = 0;  // 1 when a frame is present
    int pixelStride = 0;
    int rowPadding = 0;  // recorded, not skipped: rows must come unpadded
    int width = 0;
    int height = 0;
    int density = 0;
};

// Each header line split at its first ':', the value read from two characters after it
// with a plain decimal conversion (non-numbers read as 0); unknown headers are ignored.
ServiceFrameInfo parseFrameHeaders(const std::vector<std::string>& headerLines);

// Stride 4 is RGBA, turned to BGRA; any other stride is copied as 3-byte BGR (as the
// service sends it) and widened to BGRA. No frame, with a reason, for a state other than
// 1, an impossible size or stride, or a body shorter than the headers say.
DecodedFrame decodeServiceFrame(const ServiceFrameInfo& info, std::string_view body);

}  // namespace autoscene::platform::android
