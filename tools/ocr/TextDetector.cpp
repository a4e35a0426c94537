#include "TextDetector.h"

#include "OnnxNetwork.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace autoscene::ocr {

namespace {

constexpr int kMaxSidePixels = 960;
constexpr int kSizeStep = 32;
constexpr float kPixelThreshold = 0.3f;
constexpr double kMinBoxScore = 0.6;
// 1.5 restores the text's extent but loses a "_" below a line and a ":" at its end.
constexpr double kReadingUnclipRatio = 2.0;
constexpr double kExtentUnclipRatio = 1.5;
constexpr float kMinSidePixels = 3.0f;
// ImageNet statistics, applied to the channels in B, G, R order as the models were trained.
constexpr float kMean[3] = {0.485f, 0.456f, 0.406f};
constexpr float kDeviation[3] = {0.229f, 0.224f, 0.225f};

int roundedToStep(double pixels) {
    return std::max(kSizeStep, static_cast<int>(std::lround(pixels / kSizeStep)) * kSizeStep);
}

// Mean of `probability` inside the rectangle's polygon.
double meanInside(const cv::Mat& probability, const cv::RotatedRect& box) {
    const cv::Rect bounds = box.boundingRect() & cv::Rect(0, 0, probability.cols, probability.rows);
    if (bounds.empty()) {
        return 0.0;
    }
    cv::Point2f corners[4];
    box.points(corners);
    std::vector<cv::Point> polygon;
    for (const cv::Point2f& corner : corners) {
        polygon.emplace_back(cvRound(corner.x) - bounds.x, cvRound(corner.y) - bounds.y);
    }
    cv::Mat mask = cv::Mat::zeros(bounds.size(), CV_8UC1);
    cv::fillPoly(mask, std::vector<std::vector<cv::Point>>{polygon}, cv::Scalar(1));
    return cv::mean(probability(bounds), mask)[0];
}

// `box` (map pixels) grown by `ratio` and scaled into image pixels.
cv::RotatedRect unclipped(cv::RotatedRect box, double ratio, cv::Point2f toImage) {
    const double perimeter = 2.0 * (box.size.width + box.size.height);
    const auto grow = static_cast<float>(box.size.area() * ratio / perimeter);
    box.size += cv::Size2f(2 * grow, 2 * grow);
    box.center = {box.center.x * toImage.x, box.center.y * toImage.y};
    // Width and height lie along the rotated axes; scale each along its own.
    const double radians = box.angle * CV_PI / 180.0;
    const double c = std::abs(std::cos(radians));
    const double s = std::abs(std::sin(radians));
    box.size.width *= static_cast<float>(c * toImage.x + s * toImage.y);
    box.size.height *= static_cast<float>(s * toImage.x + c * toImage.y);
    return box;
}

}  // namespace

TextDetector::TextDetector(const std::vector<unsigned char>& onnx) {
    net_ = readCheckedNetwork(onnx, "detector", [this](cv::dnn::Net& net) {
        // The rewrite has folded what fusion would fold; fusing again on every new input
        // size only costs time.
        net.enableFusion(false);
        // One forward both checks the answer's shape and sets the layers up.
        net_ = net;
        if (probability(cv::Mat(kSizeStep, kSizeStep * 2, CV_8UC3, cv::Scalar::all(255))).empty()) {
            throw std::runtime_error("does not answer with a probability map");
        }
    });
}

cv::Mat TextDetector::probability(const cv::Mat& bgr) {
    const double scale = std::min(1.0, double(kMaxSidePixels) / std::max(bgr.cols, bgr.rows));
    const cv::Size size(roundedToStep(bgr.cols * scale), roundedToStep(bgr.rows * scale));
    cv::resize(bgr, resized_, size, 0, 0, cv::INTER_LINEAR);
    const int dims[4] = {1, 3, size.height, size.width};
    blob_.create(4, dims, CV_32F);
    resized_.convertTo(scaled_, CV_32FC3, 1.0 / 255.0);
    cv::subtract(scaled_, cv::Scalar(kMean[0], kMean[1], kMean[2]), scaled_);
    cv::divide(scaled_, cv::Scalar(kDeviation[0], kDeviation[1], kDeviation[2]), scaled_);
    // The planes are views into the blob, so split writes the network's input directly.
    std::vector<cv::Mat> planes;
    for (int c = 0; c < 3; ++c) {
        planes.emplace_back(size, CV_32F, blob_.ptr<float>(0, c));
    }
    cv::split(scaled_, planes);
    net_.setInput(blob_);
    const cv::Mat out = net_.forward();
    if (out.dims != 4 || out.size[0] != 1 || out.size[1] != 1 || out.size[2] != size.height ||
        out.size[3] != size.width) {
        return {};
    }
    return cv::Mat(size, CV_32F, const_cast<float*>(out.ptr<float>())).clone();
}

std::vector<DetectedLine> TextDetector::detect(const cv::Mat& bgr) {
    const cv::Mat map = probability(bgr);
    if (map.empty()) {
        return {};
    }
    return linesOfProbability(map, {float(bgr.cols) / map.cols, float(bgr.rows) / map.rows});
}

std::vector<DetectedLine> linesOfProbability(const cv::Mat& probability, cv::Point2f toImage) {
    cv::Mat text;
    cv::compare(probability, kPixelThreshold, text, cv::CMP_GT);
    std::vector<std::vector<cv::Point>> regions;
    cv::findContours(text, regions, cv::RETR_LIST, cv::CHAIN_APPROX_SIMPLE);
    std::vector<DetectedLine> lines;
    for (const std::vector<cv::Point>& region : regions) {
        const cv::RotatedRect box = cv::minAreaRect(region);
        if (std::min(box.size.width, box.size.height) < kMinSidePixels ||
            meanInside(probability, box) < kMinBoxScore) {
            continue;
        }
        lines.push_back({unclipped(box, kReadingUnclipRatio, toImage),
                         unclipped(box, kExtentUnclipRatio, toImage)});
    }
    return lines;
}

}  // namespace autoscene::ocr
