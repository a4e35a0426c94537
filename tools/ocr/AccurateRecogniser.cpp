#include "AccurateRecogniser.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <future>
#include <numeric>

namespace autoscene::ocr {

namespace {

constexpr int kSameLinePixels = 10;
constexpr double kVerticalAspect = 1.5;

double distance(cv::Point2f a, cv::Point2f b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

}  // namespace

AccurateRecogniser::AccurateRecogniser(const AccurateModels& models)
    : detector_(models.detector), reader_(models.recogniser, models.characters) {}

FoundLines AccurateRecogniser::find(const cv::Mat& bgr) {
    FoundLines found;
    if (bgr.empty() || bgr.type() != CV_8UC3) {
        return found;
    }
    const cv::Rect image(0, 0, bgr.cols, bgr.rows);
    for (const DetectedLine& line : detector_.detect(bgr)) {
        const cv::Rect extent = line.extent.boundingRect() & image;
        if (!extent.empty()) {
            found.bounds.push_back(extent);
            found.crops.push_back(uprightCrop(bgr, line.reading));
        }
    }
    return found;
}

std::vector<TextLine> AccurateRecogniser::read(const FoundLines& found,
                                               AccurateRecogniser* partner) {
    // Widest first, so that the two readers finish close together.
    std::vector<std::size_t> order(found.crops.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&found](std::size_t a, std::size_t b) {
        return found.crops[a].cols > found.crops[b].cols;
    });
    std::vector<std::string> texts(order.size());
    std::atomic<std::size_t> next{0};
    const auto readLines = [&](LineReader& reader) {
        for (std::size_t k = next++; k < order.size(); k = next++) {
            texts[order[k]] = reader.read(found.crops[order[k]]);
        }
    };
    if (partner != nullptr && partner != this && order.size() > 1) {
        // The future's destructor waits for the partner even when this thread throws.
        std::future<void> helping =
            std::async(std::launch::async, readLines, std::ref(partner->reader_));
        readLines(reader_);
        helping.get();
    } else {
        readLines(reader_);
    }
    std::vector<TextLine> lines;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (!texts[i].empty()) {
            const cv::Rect& box = found.bounds[i];
            lines.push_back({std::move(texts[i]), box.x, box.y, box.width, box.height});
        }
    }
    sortInReadingOrder(lines);
    return lines;
}

cv::Mat uprightCrop(const cv::Mat& bgr, const cv::RotatedRect& box) {
    std::array<cv::Point2f, 4> corners;
    box.points(corners.data());
    std::sort(corners.begin(), corners.end(),
              [](cv::Point2f a, cv::Point2f b) { return a.x < b.x; });
    // Left pair and right pair, each top first.
    if (corners[0].y > corners[1].y) {
        std::swap(corners[0], corners[1]);
    }
    if (corners[2].y > corners[3].y) {
        std::swap(corners[2], corners[3]);
    }
    const cv::Point2f topLeft = corners[0];
    const cv::Point2f bottomLeft = corners[1];
    const cv::Point2f topRight = corners[2];
    const cv::Point2f bottomRight = corners[3];
    const int width =
        std::max(1, static_cast<int>(std::lround(
                        std::max(distance(topLeft, topRight), distance(bottomLeft, bottomRight)))));
    const int height =
        std::max(1, static_cast<int>(std::lround(
                        std::max(distance(topLeft, bottomLeft), distance(topRight, bottomRight)))));
    const cv::Point2f from[4] = {topLeft, topRight, bottomRight, bottomLeft};
    const cv::Point2f to[4] = {
        {0, 0}, {float(width), 0}, {float(width), float(height)}, {0, float(height)}};
    cv::Mat crop;
    cv::warpPerspective(bgr, crop, cv::getPerspectiveTransform(from, to), {width, height},
                        cv::INTER_CUBIC, cv::BORDER_REPLICATE);
    if (height >= kVerticalAspect * width) {
        cv::rotate(crop, crop, cv::ROTATE_90_COUNTERCLOCKWISE);
    }
    return crop;
}

void sortInReadingOrder(std::vector<TextLine>& lines) {
    std::stable_sort(lines.begin(), lines.end(),
                     [](const TextLine& a, const TextLine& b) { return a.y < b.y; });
    // Tops a few pixels apart still share a line: those read left to right.
    for (std::size_t i = 1; i < lines.size(); ++i) {
        for (std::size_t j = i; j > 0; --j) {
            TextLine& before = lines[j - 1];
            TextLine& after = lines[j];
            if (std::abs(after.y - before.y) >= kSameLinePixels || after.x >= before.x) {
                break;
            }
            std::swap(before, after);
        }
    }
}

}  // namespace autoscene::ocr
