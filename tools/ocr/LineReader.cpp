#include "LineReader.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "CtcDecode.h"
#include "OnnxNetwork.h"

namespace autoscene::ocr {

namespace {

constexpr int kHeight = 48;
constexpr int kWidthStep = 8;
// 50 characters' worth of a line; wider crops are squeezed to it.
constexpr int kMaxWidth = kHeight * 50;

}  // namespace

LineReader::LineReader(const std::vector<unsigned char>& onnx,
                       const std::vector<std::string>& characters)
    : characters_(characters) {
    net_ = readCheckedNetwork(onnx, "recogniser", [this](cv::dnn::Net& net) {
        net_ = net;
        if (scores(cv::Mat(kHeight, kHeight * 2, CV_8UC3, cv::Scalar::all(255))).empty()) {
            throw std::runtime_error("does not answer with " +
                                     std::to_string(characters_.size() + 2) + " classes per step");
        }
    });
}

cv::Mat LineReader::scores(const cv::Mat& lineBgr) {
    const double aspect = double(lineBgr.cols) / lineBgr.rows;
    const int width = std::clamp(static_cast<int>(std::ceil(kHeight * aspect)), 1, kMaxWidth);
    const int padded = (width + kWidthStep - 1) / kWidthStep * kWidthStep;
    cv::resize(lineBgr, resized_, {width, kHeight}, 0, 0, cv::INTER_LINEAR);
    resized_.convertTo(scaled_, CV_32FC3, 1.0 / 127.5, -1.0);
    const int dims[4] = {1, 3, kHeight, padded};
    blob_.create(4, dims, CV_32F);
    blob_.setTo(0);
    std::vector<cv::Mat> planes;
    for (int c = 0; c < 3; ++c) {
        planes.push_back(
            cv::Mat(kHeight, padded, CV_32F, blob_.ptr<float>(0, c)).colRange(0, width));
    }
    // split writes into the views only when they are whole matrices; copy per plane.
    std::vector<cv::Mat> channels;
    cv::split(scaled_, channels);
    for (int c = 0; c < 3; ++c) {
        channels[static_cast<std::size_t>(c)].copyTo(planes[static_cast<std::size_t>(c)]);
    }
    net_.setInput(blob_);
    const cv::Mat out = net_.forward();
    const int classes = static_cast<int>(characters_.size()) + 2;
    if (out.dims != 3 || out.size[0] != 1 || out.size[1] != padded / kWidthStep ||
        out.size[2] != classes) {
        return {};
    }
    return out.reshape(1, std::vector<int>{out.size[1], classes});
}

std::string LineReader::read(const cv::Mat& lineBgr) {
    if (lineBgr.empty() || lineBgr.type() != CV_8UC3) {
        return {};
    }
    return decodeCtc(scores(lineBgr), characters_);
}

}  // namespace autoscene::ocr
