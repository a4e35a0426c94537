// Converting captures while telling whether they changed, band by band.

#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "engine/BgraConversion.h"

using autoscene::engine::convertBgraToBgr;

namespace {

autoscene::platform::BgraView viewOf(const cv::Mat& bgra) {
    return {bgra.cols, bgra.rows, int(bgra.step[0]), bgra.ptr()};
}

TEST(BgraConversion, TellsAChangeAnywhereAndConvertsAsAWhole) {
    // {what, size of the next frame, the pixel changed in it or (-1, -1), told changed}
    const std::tuple<const char*, cv::Size, cv::Point, bool> cases[] = {
        {"same pixels", {200, 150}, {-1, -1}, false},
        {"first pixel", {200, 150}, {0, 0}, true},
        {"last pixel of the short last band", {200, 150}, {199, 149}, true},
        {"other size", {120, 90}, {-1, -1}, true},
    };
    for (const auto& [what, size, changedPixel, toldChanged] : cases) {
        cv::Mat first(150, 200, CV_8UC4);
        cv::randu(first, 0, 256);
        cv::Mat bgr;
        bool changed = false;
        ASSERT_TRUE(convertBgraToBgr(viewOf(first), bgr, &changed));
        EXPECT_TRUE(changed) << "a first frame counts as changed";

        cv::Mat next = first(cv::Rect({0, 0}, size)).clone();
        if (changedPixel.x >= 0) {
            next.at<cv::Vec4b>(changedPixel)[1] ^= 1;
        }
        ASSERT_TRUE(convertBgraToBgr(viewOf(next), bgr, &changed));
        EXPECT_EQ(changed, toldChanged) << what;
        cv::Mat expected;
        cv::cvtColor(next, expected, cv::COLOR_BGRA2BGR);
        EXPECT_EQ(cv::norm(bgr, expected, cv::NORM_INF), 0) << what;
    }
}

}  // namespace
