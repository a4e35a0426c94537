#pragma once
// Label boxes of the current cycle and the rules by which label items pick theirs.

#include <QRect>
#include <optional>
#include <vector>

#include "engine/TaskInfo.h"
#include "recognition/LabelDetector.h"

namespace autoscene::conditions {

// The detections of the task's frame, made once per cycle with threshold 0.3 and
// kept in the task's cycle cache; nothing without a detector or a frame.
std::vector<recognition::LabelBox> labelsOf(engine::TaskInfo& task,
                                            recognition::ILabelDetector* detector);

struct LabelFind {
    bool found = false;
    // The found box, else the last box of the label that was probable enough.
    std::optional<recognition::LabelBox> box;
};

// Boxes are considered in order when named `label` (never empty) and at least
// `minProbability` likely; without rectangles the first considered box is found,
// with rectangles the first that one of them holds wholly (edges may touch).
LabelFind findLabel(const std::vector<recognition::LabelBox>& boxes, const QString& label,
                    float minProbability, const std::vector<QRect>& rects);

// Every box that findLabel would find, in order.
std::vector<recognition::LabelBox> findAllLabels(const std::vector<recognition::LabelBox>& boxes,
                                                 const QString& label, float minProbability,
                                                 const std::vector<QRect>& rects);

QRect boxRect(const recognition::LabelBox& box);

}  // namespace autoscene::conditions
