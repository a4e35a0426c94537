#include "CtcDecode.h"

#include <algorithm>

namespace autoscene::ocr {

std::string decodeCtc(const cv::Mat& scores, const std::vector<std::string>& characters) {
    std::string text;
    if (scores.type() != CV_32F || scores.dims != 2) {
        return text;
    }
    const int space = static_cast<int>(characters.size()) + 1;
    int previous = 0;
    for (int step = 0; step < scores.rows; ++step) {
        const float* row = scores.ptr<float>(step);
        const int best = static_cast<int>(std::max_element(row, row + scores.cols) - row);
        if (best != previous && best != 0) {
            if (best < space) {
                text += characters[static_cast<std::size_t>(best - 1)];
            } else if (best == space) {
                text += ' ';
            }
        }
        previous = best;
    }
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace autoscene::ocr
