#pragma once
// Where the test app draws what, in pixels of a 720x1280 screen (smaller screens clip).

#include <opencv2/core/types.hpp>

namespace autoscene::testdevice::layout {

// Colours are RGBA.
inline const cv::Scalar kHomeBackground{32, 32, 32, 255};
inline const cv::Scalar kStartBackground{240, 240, 240, 255};
inline const cv::Scalar kDoneBackground{32, 96, 192, 255};
inline const cv::Scalar kButtonColour{0, 160, 0, 255};
inline const cv::Scalar kBadgeColour{255, 215, 0, 255};
inline const cv::Scalar kFieldColour{255, 255, 255, 255};
inline const cv::Scalar kInk{0, 0, 0, 255};

inline const cv::Rect kTapButton{260, 540, 200, 200};  // START: shows DONE
inline const cv::Rect kTextField{60, 200, 600, 80};    // START: typed text
inline const cv::Rect kBadge{160, 500, 400, 280};      // DONE: back to START

}  // namespace autoscene::testdevice::layout
