#pragma once
// Template image files as matching needs them: 8-bit, with the channel count of the
// matching type, whatever the file holds.

#include <QString>
#include <opencv2/core/mat.hpp>

#include "recognition/TemplateMatcher.h"

namespace autoscene::recognition {

// A decoded image in the form `type` matches: 16-bit samples scaled to 8 bits, alpha
// dropped, and grey made three-channel for the colour types. Images of other depths are
// returned as they are (the matcher refuses them).
cv::Mat templateForm(const cv::Mat& decoded, MatchImageType type);

// Reads and converts a template file; empty when it is missing or does not decode. What a
// file's bytes decode to is kept, so the same bytes are decoded once; each file that does
// not decode is reported once and not decoded again until it changes.
cv::Mat readTemplateImage(const QString& path, MatchImageType type);

}  // namespace autoscene::recognition
