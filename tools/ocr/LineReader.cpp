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
// One output step per 8 input columns.
constexpr int kWidthStep = 8;
// 50 characters' worth of a line; wider crops are squeezed to it.
constexpr int kMaxWidth = kHeight * 50;

int roundedUpToStep(int width) {
    return (width + kWidthStep - 1) / kWidthStep * kWidthStep;
}

// The line's width once 48 high.
int scaledWidth(const cv::Mat& lineBgr) {
    const double aspect = double(lineBgr.cols) / lineBgr.rows;
    return std::clamp(static_cast<int>(std::ceil(kHeight * aspect)), 1, kMaxWidth);
}

}  // namespace

LineReader::LineReader(const std::vector<unsigned char>& onnx,
                       const std::vector<std::string>& characters)
    : characters_(characters) {
    net_ = readCheckedNetwork(onnx, "recogniser", [this](cv::dnn::Net& net) {
        net_ = net;
        clearInput(kHeight * 2);
        if (forward(kHeight * 2).empty()) {
            throw std::runtime_error("does not answer with " +
                                     std::to_string(characters_.size() + 2) + " classes per step");
        }
    });
}

void LineReader::clearInput(int width) {
    const int dims[4] = {1, 3, kHeight, width};
    blob_.create(4, dims, CV_32F);
    blob_.setTo(0);
}

void LineReader::place(const cv::Mat& lineBgr, int width) {
    cv::resize(lineBgr, resized_, {width, kHeight}, 0, 0, cv::INTER_LINEAR);
    resized_.convertTo(scaled_, CV_32FC3, 1.0 / 127.5, -1.0);
    cv::split(scaled_, channels_);
    const int blobWidth = blob_.size[3];
    for (int c = 0; c < 3; ++c) {
        const cv::Mat plane(kHeight, blobWidth, CV_32F, blob_.ptr<float>(0, c));
        channels_[static_cast<std::size_t>(c)].copyTo(plane.colRange(0, width));
    }
}

cv::Mat LineReader::forward(int width) {
    net_.setInput(blob_);
    const cv::Mat out = net_.forward();
    const int classes = static_cast<int>(characters_.size()) + 2;
    if (out.dims != 3 || out.size[0] != 1 || out.size[1] != width / kWidthStep ||
        out.size[2] != classes) {
        return {};
    }
    return out.reshape(1, std::vector<int>{out.size[1], classes});
}

std::string LineReader::read(const cv::Mat& lineBgr) {
    if (lineBgr.empty() || lineBgr.type() != CV_8UC3) {
        return {};
    }
    const int width = scaledWidth(lineBgr);
    const int padded = roundedUpToStep(width);
    clearInput(padded);
    place(lineBgr, width);
    return decodeCtc(forward(padded), characters_);
}

}  // namespace autoscene::ocr
