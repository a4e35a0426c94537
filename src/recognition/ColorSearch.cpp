#include "recognition/ColorSearch.h"

#include "model/TaskDocument.h"

#include <algorithm>
#include <opencv2/core.hpp>

namespace autoscene::recognition {

std::optional<SearchColour> searchColour(const model::TaskDocument& task, int id) {
    if (const model::ColorRecord* found = task.color(id)) {
        return SearchColour{found->name, found->color, found->sim};
    }
    return std::nullopt;
}

void filterColor(const cv::Mat& bgr, std::int64_t rgb, float similarity, cv::Mat& mask) {
    const double tolerance = (1.0 - double(similarity)) * 255.0;
    const double blue = double(rgb & 0xff);
    const double green = double((rgb >> 8) & 0xff);
    const double red = double((rgb >> 16) & 0xff);
    const cv::Scalar lower(std::max(blue - tolerance, 0.0), std::max(green - tolerance, 0.0),
                           std::max(red - tolerance, 0.0), 0.0);
    const cv::Scalar upper(std::min(blue + tolerance, 255.0), std::min(green + tolerance, 255.0),
                           std::min(red + tolerance, 255.0), 0.0);
    cv::inRange(bgr, lower, upper, mask);
}

int countColor(const cv::Mat& frame, std::int64_t rgb, float similarity, const QRect& rect,
               cv::Mat& mask) {
    if (frame.empty()) {
        return -1;
    }
    const int left = std::max(rect.x(), 0);
    const int top = std::max(rect.y(), 0);
    const int right = std::min(rect.x() + rect.width(), frame.cols);
    const int bottom = std::min(rect.y() + rect.height(), frame.rows);
    const int width = right - left;
    const int height = bottom - top;
    if (width <= 1 || height <= 1) {
        return -1;
    }
    filterColor(frame(cv::Rect(left, top, width - 1, height - 1)), rgb, similarity, mask);
    return cv::countNonZero(mask);
}

std::optional<QPoint> findColor(const cv::Mat& frame, std::int64_t rgb, float similarity,
                                const QRect& rect) {
    const cv::Rect area = cv::Rect(rect.x(), rect.y(), rect.width(), rect.height()) &
                          cv::Rect(0, 0, frame.cols, frame.rows);
    if (area.empty()) {
        return std::nullopt;
    }
    cv::Mat mask;
    filterColor(frame(area), rgb, similarity, mask);
    for (int y = 0; y < mask.rows; ++y) {
        const std::uint8_t* row = mask.ptr<std::uint8_t>(y);
        for (int x = 0; x < mask.cols; ++x) {
            if (row[x] != 0) {
                return QPoint(area.x + x, area.y + y);
            }
        }
    }
    return std::nullopt;
}

}  // namespace autoscene::recognition
