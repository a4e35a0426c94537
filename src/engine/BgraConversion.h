#pragma once
// A back end's BGRA pixels as the BGR image that matching works on and frames are saved as.

#include <opencv2/core/mat.hpp>

#include "desktop/DesktopBackend.h"

namespace autoscene::engine {

// Converts the view into `bgr`, reusing its buffer when the size is unchanged. False, and
// `bgr` left as it was, when the view holds no usable pixels (none, an empty size, rows
// shorter than the width). With `changed`, also tells whether the pixels differ from those
// `bgr` held.
bool convertBgraToBgr(const platform::BgraView& view, cv::Mat& bgr, bool* changed = nullptr);

}  // namespace autoscene::engine
