#pragma once
// cv::matchTemplate correlates tile by tile, through DFTs whose size follows from the
// template's and the score map's sizes, so the same position scores differently in the
// last digits when the searched region changes. Searching exactly the pixels of the tiles
// that the whole region's search would use repeats its arithmetic: the scores come out
// identical to the last bit, for a fraction of the cost.

#include <opencv2/core/mat.hpp>

namespace autoscene::recognition {

// Scores the positions `wanted` (top-left corners in the region, within its score map)
// as a whole-region cv::matchTemplate with TM_CCOEFF_NORMED would, writing the scores of
// the tiles that cover them to `scores`; returns where `scores` starts in the region.
cv::Point scoreTiles(const cv::Mat& region, const cv::Mat& templ, const cv::Rect& wanted,
                     cv::Mat& scores);

}  // namespace autoscene::recognition
