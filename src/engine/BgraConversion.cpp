#include "engine/BgraConversion.h"

#include <opencv2/imgproc.hpp>

namespace autoscene::engine {

bool convertBgraToBgr(const platform::BgraView& view, cv::Mat& bgr) {
    if (!view.pixels || view.width <= 0 || view.height <= 0 || view.stride < view.width * 4) {
        return false;
    }
    const cv::Mat bgra(view.height, view.width, CV_8UC4, const_cast<std::uint8_t*>(view.pixels),
                       size_t(view.stride));
    cv::cvtColor(bgra, bgr, cv::COLOR_BGRA2BGR);
    return true;
}

}  // namespace autoscene::engine
