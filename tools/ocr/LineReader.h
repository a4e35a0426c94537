#pragma once

#include <opencv2/core/mat.hpp>
#include <opencv2/dnn/dnn.hpp>

#include <string>
#include <vector>

namespace autoscene::ocr {

// The CTC recogniser: the text of upright line images (BGR). Not thread-safe.
class LineReader {
public:
    // Throws std::runtime_error when `onnx` is not a working recogniser for `characters`.
    LineReader(const std::vector<unsigned char>& onnx, const std::vector<std::string>& characters);

    // The text of one line; empty for an empty or non-BGR image. One forward per line:
    // lines read side by side in one input see each other through the network's
    // attention and may read differently (spaces come and go).
    std::string read(const cv::Mat& lineBgr);

private:
    // Fills the input blob `width` wide with padding.
    void clearInput(int width);
    // Draws the line into the input blob from its left edge, `width` wide (48 high).
    void place(const cv::Mat& lineBgr, int width);
    // Per step of 8 input pixels, the scores of every class; empty when the network
    // answered otherwise.
    cv::Mat forward(int width);

    cv::dnn::Net net_;
    const std::vector<std::string>& characters_;
    cv::Mat resized_;
    cv::Mat scaled_;
    std::vector<cv::Mat> channels_;
    cv::Mat blob_;
};

}  // namespace autoscene::ocr
