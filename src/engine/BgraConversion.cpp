#include "engine/BgraConversion.h"

#include <cstring>
#include <opencv2/imgproc.hpp>

namespace autoscene::engine {

namespace {

// Converts band by band through a small buffer and compares it with what `bgr` holds,
// writing only bands that differ: the comparison reads the destination that a plain
// conversion would read for writing anyway, so telling an unchanged frame costs little.
bool convertComparing(const cv::Mat& bgra, cv::Mat& bgr) {
    constexpr int kBandRows = 64;
    thread_local cv::Mat band;
    bool changed = false;
    const size_t rowBytes = size_t(bgr.cols) * 3;
    for (int top = 0; top < bgra.rows; top += kBandRows) {
        const cv::Range rows(top, std::min(top + kBandRows, bgra.rows));
        cv::Mat target = bgr.rowRange(rows);
        if (changed) {
            cv::cvtColor(bgra.rowRange(rows), target, cv::COLOR_BGRA2BGR);
            continue;
        }
        cv::cvtColor(bgra.rowRange(rows), band, cv::COLOR_BGRA2BGR);
        for (int y = 0; y < band.rows && !changed; ++y) {
            changed = std::memcmp(band.ptr(y), target.ptr(y), rowBytes) != 0;
        }
        if (changed) {
            band.copyTo(target);
        }
    }
    return changed;
}

}  // namespace

bool convertBgraToBgr(const platform::BgraView& view, cv::Mat& bgr, bool* changed) {
    if (!view.pixels || view.width <= 0 || view.height <= 0 || view.stride < view.width * 4) {
        return false;
    }
    const cv::Mat bgra(view.height, view.width, CV_8UC4, const_cast<std::uint8_t*>(view.pixels),
                       size_t(view.stride));
    if (changed && bgr.rows == view.height && bgr.cols == view.width && bgr.type() == CV_8UC3) {
        *changed = convertComparing(bgra, bgr);
        return true;
    }
    cv::cvtColor(bgra, bgr, cv::COLOR_BGRA2BGR);
    if (changed) {
        *changed = true;
    }
    return true;
}

}  // namespace autoscene::engine
