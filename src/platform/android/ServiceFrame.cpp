#include "android/ServiceFrame.h"

#include <cstdlib>

namespace autoscene::platform::android {

namespace {

int plainDecimal(const std::string& line, std::size_t colon) {
    return colon + 2 <= line.size() ? std::atoi(line.c_str() + colon + 2) : 0;
}

}  // namespace

ServiceFrameInfo parseFrameHeaders(const std::vector<std::string>& headerLines) {
    ServiceFrameInfo info;
    const std::pair<const char*, int ServiceFrameInfo::*> fields[] = {
        {"state", &ServiceFrameInfo::state},
        {"pixelStride", &ServiceFrameInfo::pixelStride},
        {"rowPadding", &ServiceFrameInfo::rowPadding},
        {"image-width", &ServiceFrameInfo::width},
        {"image-height", &ServiceFrameInfo::height},
        {"density", &ServiceFrameInfo::density},
    };
    for (const std::string& line : headerLines) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) {
            continue;
        }
        for (const auto& [name, member] : fields) {
            if (line.compare(0, colon, name) == 0) {
                info.*member = plainDecimal(line, colon);
            }
        }
    }
    return info;
}

DecodedFrame decodeServiceFrame(const ServiceFrameInfo& info, std::string_view body) {
    DecodedFrame result;
    if (info.state != 1) {
        result.error = "request_image: state " + std::to_string(info.state);
        return result;
    }
    if (info.width <= 0 || info.height <= 0 || info.width > kMaxScreenSide ||
        info.height > kMaxScreenSide || info.pixelStride < 3 || info.pixelStride > 4) {
        result.error = "request_image: impossible frame " + std::to_string(info.width) + "x" +
                       std::to_string(info.height) + " stride " + std::to_string(info.pixelStride);
        return result;
    }
    const std::size_t pixels = std::size_t(info.width) * std::size_t(info.height);
    const std::size_t needed = pixels * std::size_t(info.pixelStride);
    if (body.size() < needed) {
        result.error = "request_image: " + std::to_string(body.size()) + " bytes for a frame of " +
                       std::to_string(needed);
        return result;
    }
    BgraFrame& frame = result.frame;
    frame.width = info.width;
    frame.height = info.height;
    frame.stride = info.width * 4;
    frame.pixels.resize(pixels * 4);
    const auto* in = reinterpret_cast<const unsigned char*>(body.data());
    std::uint8_t* out = frame.pixels.data();
    const bool rgba = info.pixelStride == 4;
    for (std::size_t i = 0; i < pixels; ++i, in += info.pixelStride, out += 4) {
        out[0] = rgba ? in[2] : in[0];
        out[1] = in[1];
        out[2] = rgba ? in[0] : in[2];
        out[3] = rgba ? in[3] : 255;
    }
    return result;
}

}  // namespace autoscene::platform::android
