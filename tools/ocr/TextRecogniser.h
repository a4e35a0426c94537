#pragma once

#include <opencv2/core/mat.hpp>

#include <memory>
#include <string>
#include <vector>

#include "OcrAnswer.h"

namespace tesseract {
class TessBaseAPI;
}

namespace autoscene::ocr {

// One Tesseract engine with its models loaded. Not thread-safe: one thread at a time.
class TextRecogniser {
public:
    // Throws std::runtime_error when the models for `languages` ("chi_sim+eng") are missing.
    explicit TextRecogniser(const std::string& languages);
    ~TextRecogniser();
    TextRecogniser(const TextRecogniser&) = delete;
    TextRecogniser& operator=(const TextRecogniser&) = delete;

    // The text lines of an 8-bit one-channel image in reading order, blank lines left out.
    std::vector<TextLine> recognise(const cv::Mat& gray);

private:
    std::unique_ptr<tesseract::TessBaseAPI> api_;
};

}  // namespace autoscene::ocr
