// When the cycle's searches share a reduced region and when they must make their own.

#include <gtest/gtest.h>

#include <functional>
#include <opencv2/core.hpp>

#include "MatchingTestKit.h"
#include "recognition/ReducedFrames.h"

using namespace autoscene::recognition;
using autoscene::test::noiseFrame;

namespace {

// Counts the reductions it makes; a reduction is the region's top-left 8x8 corner.
class ReducedFramesTest : public ::testing::Test {
protected:
    ReducedFrames frames;
    int made = 0;
    const std::function<void(const cv::Mat&, cv::Mat&)> reduce = [this](const cv::Mat& region,
                                                                        cv::Mat& reduced) {
        ++made;
        reduced = region(cv::Rect(0, 0, 8, 8)).clone();
    };
};

TEST_F(ReducedFramesTest, SharesACopyOnlyForTheSameWorkerCycleRegionAndFactor) {
    const std::thread::id worker = std::this_thread::get_id();
    const cv::Mat frame = noiseFrame(64, 48, 1);
    const SearchCycle cycle{worker, 5};
    const cv::Mat first = frames.get(cycle, frame, {4, 4}, reduce);

    // {what, cycle, region, factor, whether the first copy is shared}
    const std::tuple<const char*, SearchCycle, cv::Mat, cv::Size, bool> cases[] = {
        {"the same search again", cycle, frame, {4, 4}, true},
        {"the next cycle, in the same frame buffer", {worker, 6}, frame, {4, 4}, false},
        {"another worker", {std::thread::id(), 5}, frame, {4, 4}, false},
        {"another factor", cycle, frame, {2, 2}, false},
        {"part of the frame", cycle, frame(cv::Rect(0, 0, 32, 48)), {4, 4}, false},
        {"a copy of the frame", cycle, frame.clone(), {4, 4}, false},
    };
    for (const auto& [name, searchCycle, region, factor, shared] : cases) {
        const int before = made;
        const cv::Mat copy = frames.get(searchCycle, region, factor, reduce);
        EXPECT_EQ(made == before, shared) << name;
        EXPECT_EQ(copy.data == first.data, shared) << name;
    }
}

TEST_F(ReducedFramesTest, AFrameFreedWithinTheCycleCannotLendItsPlaceToAnother) {
    const SearchCycle cycle{std::this_thread::get_id(), 1};
    {
        const cv::Mat gone = noiseFrame(64, 48, 1);
        frames.get(cycle, gone, {4, 4}, reduce);
    }
    // Without the kept reference the allocator would likely hand out the same pixels.
    const cv::Mat frame = noiseFrame(64, 48, 2);
    const cv::Mat copy = frames.get(cycle, frame, {4, 4}, reduce);
    EXPECT_EQ(made, 2);
    EXPECT_EQ(cv::norm(copy, frame(cv::Rect(0, 0, 8, 8)), cv::NORM_INF), 0.0);
}

}  // namespace
