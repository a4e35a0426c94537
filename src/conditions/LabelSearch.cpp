#include "conditions/LabelSearch.h"

#include <any>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace autoscene::conditions {

namespace {

constexpr float kDetectionThreshold = 0.3f;

struct CycleLabels {
    std::int64_t cycleId = -1;
    std::vector<recognition::LabelBox> boxes;
};

bool considered(const recognition::LabelBox& box, const QString& label, float minProbability) {
    return !label.isEmpty() && box.name == label && box.probability >= minProbability;
}

bool inside(const recognition::LabelBox& box, const std::vector<QRect>& rects) {
    if (rects.empty()) {
        return true;
    }
    for (const QRect& r : rects) {
        if (box.x1 >= float(r.x()) && box.y1 >= float(r.y()) &&
            box.x2 <= float(r.x() + r.width()) && box.y2 <= float(r.y() + r.height())) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::vector<recognition::LabelBox> labelsOf(engine::TaskInfo& task,
                                            recognition::ILabelDetector* detector) {
    if (!detector || task.frame.empty()) {
        return {};
    }
    std::lock_guard lock(detector->mutex());
    auto* cached = std::any_cast<CycleLabels>(&task.cycleCache);
    if (!cached) {
        cached = &task.cycleCache.emplace<CycleLabels>();
    }
    const std::int64_t cycle = task.cycleCount;
    if (cached->cycleId != cycle) {
        cached->cycleId = cycle;
        if (task.frame.channels() == 4) {
            cv::Mat bgr;
            cv::cvtColor(task.frame, bgr, cv::COLOR_BGRA2BGR);
            cached->boxes = detector->detect(bgr, kDetectionThreshold);
        } else {
            cached->boxes = detector->detect(task.frame, kDetectionThreshold);
        }
    }
    return cached->boxes;
}

LabelFind findLabel(const std::vector<recognition::LabelBox>& boxes, const QString& label,
                    float minProbability, const std::vector<QRect>& rects) {
    LabelFind find;
    for (const recognition::LabelBox& box : boxes) {
        if (!considered(box, label, minProbability)) {
            continue;
        }
        find.box = box;
        if (inside(box, rects)) {
            find.found = true;
            break;
        }
    }
    return find;
}

std::vector<recognition::LabelBox> findAllLabels(const std::vector<recognition::LabelBox>& boxes,
                                                 const QString& label, float minProbability,
                                                 const std::vector<QRect>& rects) {
    std::vector<recognition::LabelBox> found;
    for (const recognition::LabelBox& box : boxes) {
        if (considered(box, label, minProbability) && inside(box, rects)) {
            found.push_back(box);
        }
    }
    return found;
}

QRect boxRect(const recognition::LabelBox& box) {
    const int left = int(std::lround(box.x1));
    const int top = int(std::lround(box.y1));
    return QRect(left, top, int(std::lround(box.x2)) - left, int(std::lround(box.y2)) - top);
}

}  // namespace autoscene::conditions
