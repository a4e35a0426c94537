#include "playback/ReplayTarget.h"

#include <opencv2/imgproc.hpp>

namespace autoscene::playback {

void ReplayTarget::setFrame(const cv::Mat& bgr) {
    if (bgr.empty()) {
        bgra_.release();
    } else {
        cv::cvtColor(bgr, bgra_, cv::COLOR_BGR2BGRA);
    }
}

bool ReplayTarget::capture(const engine::TaskInfo&, const platform::FrameConsumer& consume) {
    if (bgra_.empty()) {
        return false;
    }
    consume({bgra_.cols, bgra_.rows, int(bgra_.step[0]), bgra_.ptr()});
    return true;
}

}  // namespace autoscene::playback
