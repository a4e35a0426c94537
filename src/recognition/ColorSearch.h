#pragma once
// Colour masks over frame regions: the filter behind the filter-colour image type,
// the colour condition's pixel count and the colour click's search.

#include <QPoint>
#include <QRect>
#include <QString>
#include <cstdint>
#include <opencv2/core/mat.hpp>
#include <optional>

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::recognition {

// A colour of the task as the searches use it.
struct SearchColour {
    QString name;
    std::int64_t rgb = 0;  // 0xRRGGBB
    float similarity = 0.9f;
};

// The task's colour `id`; nothing when it was deleted.
std::optional<SearchColour> searchColour(const model::TaskDocument& task, int id);

// 255 where every channel of the BGR image lies within (1 - similarity) x 255 of
// the colour (0xRRGGBB), else 0.
void filterColor(const cv::Mat& bgr, std::int64_t rgb, float similarity, cv::Mat& mask);

// Pixels of the colour in the rectangle, clipped to the frame, one column and one
// row short of it (kept on purpose); -1 for an empty frame or a clipped width or
// height of 1 or less. `mask` is scratch kept by the caller between cycles.
int countColor(const cv::Mat& frame, std::int64_t rgb, float similarity, const QRect& rect,
               cv::Mat& mask);

// The first pixel of the colour in the rectangle (rows top-down), in frame
// coordinates; nothing when the rectangle misses the frame or holds no such pixel.
std::optional<QPoint> findColor(const cv::Mat& frame, std::int64_t rgb, float similarity,
                                const QRect& rect);

}  // namespace autoscene::recognition
