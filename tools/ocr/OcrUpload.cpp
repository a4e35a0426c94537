#include "OcrUpload.h"

#include <opencv2/imgcodecs.hpp>

#include <cstdint>

namespace autoscene::ocr {

namespace {

constexpr std::string_view kPngSignature("\x89PNG\r\n\x1a\n", 8);
// Signature, then the first chunk: length 13, type "IHDR", width, height.
constexpr std::size_t kPngHeaderBytes = 8 + 8 + 8;

std::uint32_t readBigEndian32(std::string_view bytes, std::size_t pos) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = (value << 8) | static_cast<unsigned char>(bytes[pos + i]);
    }
    return value;
}

}  // namespace

DecodedUpload decodeUpload(std::string_view bytes) {
    if (bytes.empty()) {
        return {{}, "the image is empty"};
    }
    if (bytes.size() > kMaxUploadBytes) {
        return {{}, "the image is larger than 32 MiB"};
    }
    if (bytes.size() < kPngHeaderBytes || bytes.substr(0, kPngSignature.size()) != kPngSignature ||
        bytes.substr(12, 4) != "IHDR") {
        return {{}, "the upload is not a PNG image"};
    }
    const std::uint32_t width = readBigEndian32(bytes, 16);
    const std::uint32_t height = readBigEndian32(bytes, 20);
    if (width == 0 || height == 0) {
        return {{}, "the image has no pixels"};
    }
    if (width > kMaxImageSidePixels || height > kMaxImageSidePixels ||
        static_cast<long long>(width) * height > kMaxImagePixels) {
        return {{}, "the image is larger than " + std::to_string(kMaxImagePixels) + " pixels"};
    }
    DecodedUpload decoded;
    try {
        const cv::Mat encoded(1, static_cast<int>(bytes.size()), CV_8UC1,
                              const_cast<char*>(bytes.data()));
        decoded.bgr = cv::imdecode(encoded, cv::IMREAD_COLOR);
    } catch (const cv::Exception&) {
        decoded.bgr.release();
    }
    if (decoded.bgr.empty() || decoded.bgr.cols != static_cast<int>(width) ||
        decoded.bgr.rows != static_cast<int>(height)) {
        return {{}, "the PNG image could not be decoded"};
    }
    return decoded;
}

}  // namespace autoscene::ocr
