#pragma once

#include <opencv2/core/mat.hpp>
#include <opencv2/core/types.hpp>
#include <opencv2/dnn/dnn.hpp>

#include <vector>

namespace autoscene::ocr {

// One line found, in image pixels.
struct DetectedLine {
    cv::RotatedRect reading;  // grown to take in the strokes' edges, for the recogniser
    cv::RotatedRect extent;   // the text itself, for the answer
};

// The DB text detector: where the lines of text are in a BGR image. Not thread-safe.
class TextDetector {
public:
    // Throws cv::Exception or std::runtime_error when `onnx` is not a working detector.
    explicit TextDetector(const std::vector<unsigned char>& onnx);

    // The lines in no particular order.
    std::vector<DetectedLine> detect(const cv::Mat& bgr);

private:
    cv::Mat probability(const cv::Mat& bgr);

    cv::dnn::Net net_;
    cv::Mat resized_;
    cv::Mat scaled_;
    cv::Mat blob_;
};

// The lines of a probability map (CV_32F), scaled by `toImage` into image pixels:
// pixels over 0.3 form regions, a region's minimum-area rectangle is kept when its mean
// probability reaches 0.6, and grown by area * r / perimeter on every side, r = 2 for
// reading and 1.5 (what the map's regions were shrunk by) for the extent.
std::vector<DetectedLine> linesOfProbability(const cv::Mat& probability, cv::Point2f toImage);

}  // namespace autoscene::ocr
