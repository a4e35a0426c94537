#pragma once

#include <opencv2/core/mat.hpp>
#include <opencv2/dnn/dnn.hpp>

#include <string>
#include <vector>

namespace autoscene::ocr {

// The CTC recogniser: the text of one upright line image (BGR). Not thread-safe.
class LineReader {
public:
    // Throws cv::Exception or std::runtime_error when `onnx` is not a working
    // recogniser for `characters`.
    LineReader(const std::vector<unsigned char>& onnx, const std::vector<std::string>& characters);

    std::string read(const cv::Mat& lineBgr);

private:
    // Per step, the scores of every class; empty when the network answered otherwise.
    cv::Mat scores(const cv::Mat& lineBgr);

    cv::dnn::Net net_;
    const std::vector<std::string>& characters_;
    cv::Mat resized_;
    cv::Mat scaled_;
    cv::Mat blob_;
};

}  // namespace autoscene::ocr
