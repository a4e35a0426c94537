#pragma once
// Real screens to search in: the demo target and Debian's X programs drawn on a private
// Xvfb and captured whole, and the OCR corpus's rendered frame.

#include <opencv2/core/mat.hpp>
#include <string>
#include <vector>

namespace autoscene::testing {

struct Screen {
    std::string name;
    cv::Mat bgr;
    // Places of alike pieces cut where they are: xcalc's keys.
    std::vector<cv::Rect> keys;
};

// The desktop of a `width` x `height` Xvfb with the demo target on `demoScreen` and
// xcalc, xeyes, two xlogos and xmessage around it (no clock: its hands would change the
// screen from run to run), once every program has drawn; empty when the server or a
// program did not start. The keys are those of xcalc's last four rows (digits and
// operators).
Screen xScreen(int width, int height, const std::string& demoScreen);

// The OCR corpus's 1280x720 frame of labels.
Screen ocrFrame();

}  // namespace autoscene::testing
