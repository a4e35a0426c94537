#pragma once

#include <opencv2/core/mat.hpp>

#include <string>
#include <vector>

namespace autoscene::ocr {

// Greedy CTC decoding of a steps x classes score matrix (CV_32F): the best class of
// each step, repeats merged, class 0 (blank) dropped; class i in 1..characters.size()
// is characters[i - 1] and the class after them a space. Spaces at both ends go.
std::string decodeCtc(const cv::Mat& scores, const std::vector<std::string>& characters);

}  // namespace autoscene::ocr
