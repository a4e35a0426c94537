#pragma once
// Checks and decodes the uploaded image before any of it reaches the recogniser.

#include <opencv2/core/mat.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace autoscene::ocr {

constexpr std::size_t kMaxUploadBytes = 32u * 1024u * 1024u;
constexpr int kMaxImageSidePixels = 16384;
constexpr long long kMaxImagePixels = 40'000'000;

struct DecodedUpload {
    cv::Mat bgr;        // 8-bit, three channels; empty when `error` is set
    std::string error;  // for the client, in English
};

// The PNG's size is read from its header and limited before decoding, so that a small
// file cannot ask for gigabytes of pixels.
DecodedUpload decodeUpload(std::string_view bytes);

}  // namespace autoscene::ocr
