// The colour filter, the colour count with its one-row-one-column shortfall, the
// colour search and the colour condition's change and count tests.

#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include "ManualClock.h"
#include "conditions/ColorCondition.h"
#include "recognition/ColorSearch.h"

using namespace autoscene::engine;
using namespace autoscene::recognition;
using namespace autoscene::conditions;

namespace {

constexpr std::int64_t kOrange = 0xff8000;      // 0xRRGGBB
const cv::Scalar kOrangeBgr(0x00, 0x80, 0xff);  // the same in BGR

cv::Mat frameWith(int cols, int rows, const cv::Rect& patch) {
    cv::Mat frame(rows, cols, CV_8UC3, cv::Scalar(200, 200, 200));
    frame(patch).setTo(kOrangeBgr);
    return frame;
}

TEST(ColorFilter, KeepsPixelsWithinTheSimilarityOfEachChannel) {
    // Similarity 0.9 allows 25.5 either side (OpenCV rounds the bounds).
    // The last pixel has its channels swapped.
    const cv::Mat row = (cv::Mat_<cv::Vec3b>(1, 6) << cv::Vec3b(0x00, 0x80, 0xff),
                         cv::Vec3b(25, 0x80 + 25, 0xff - 25), cv::Vec3b(27, 0x80, 0xff),
                         cv::Vec3b(0x00, 0x80 - 27, 0xff), cv::Vec3b(0x00, 0x80, 0xff - 27),
                         cv::Vec3b(0xff, 0x80, 0x00));
    cv::Mat mask;
    filterColor(row, kOrange, 0.9f, mask);
    const std::vector<std::uint8_t> kept(mask.begin<std::uint8_t>(), mask.end<std::uint8_t>());
    EXPECT_EQ(kept, (std::vector<std::uint8_t>{255, 255, 0, 0, 0, 0}));

    filterColor(row, kOrange, 0.0f, mask);  // anything goes
    EXPECT_EQ(cv::countNonZero(mask), 6);
}

TEST(ColorCount, CountsOneRowAndOneColumnShortOfTheClippedRectangle) {
    const cv::Mat frame = frameWith(40, 30, cv::Rect(0, 0, 40, 30));
    // -1: nothing to count, the rectangle being too thin or outside once clipped.
    const std::pair<QRect, int> cases[] = {{{5, 5, 10, 10}, 81},     {{-5, -5, 10, 10}, 16},
                                           {{35, 25, 100, 100}, 16}, {{0, 0, 40, 30}, 39 * 29},
                                           {{5, 5, 1, 10}, -1},      {{5, 5, 10, 1}, -1},
                                           {{39, 5, 10, 10}, -1},    {{100, 100, 10, 10}, -1}};
    cv::Mat mask;
    for (const auto& [rect, count] : cases) {
        EXPECT_EQ(countColor(frame, kOrange, 0.9f, rect, mask), count)
            << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
    }
    EXPECT_EQ(countColor(cv::Mat(), kOrange, 0.9f, QRect(0, 0, 10, 10), mask), -1);
}

TEST(ColorSearch, FindsTheFirstPixelInRowOrderInsideTheRectangle) {
    cv::Mat frame = frameWith(50, 50, cv::Rect(30, 20, 5, 5));
    frame.at<cv::Vec3b>(22, 10) = {0x00, 0x80, 0xff};
    EXPECT_EQ(findColor(frame, kOrange, 0.9f, QRect(0, 0, 50, 50)), QPoint(30, 20));
    EXPECT_EQ(findColor(frame, kOrange, 0.9f, QRect(0, 22, 50, 5)), QPoint(10, 22));
    EXPECT_EQ(findColor(frame, kOrange, 0.9f, QRect(0, 0, 20, 20)), std::nullopt);
    EXPECT_EQ(findColor(frame, kOrange, 0.9f, QRect(-100, -100, 10, 10)), std::nullopt);
}

class ColorConditionTest : public ::testing::Test {
protected:
    ColorCondition condition(int test, int count, int tolerance) {
        return ColorCondition(1, ScreenItem::Settings{test, 0.0f, false}, clock,
                              ColorCondition::Colour{QStringLiteral("orange"), kOrange, 0.9f},
                              QRect(0, 0, 21, 11), ColorCondition::Tests{count, tolerance});
    }

    // One cycle on a frame with `pixels` orange pixels in the counted area.
    bool cycle(ColorCondition& c, int pixels) {
        task.frame = frameWith(40, 30, cv::Rect(0, 0, pixels, 1));
        ++task.cycleCount;
        c.prepare(task);
        return c.evaluate(task);
    }

    autoscene::test::ManualClock clock;
    TaskInfo task;
};

TEST_F(ColorConditionTest, ChangeTestsCompareWithThePreviousCycle) {
    ColorCondition changes = condition(kChanged, 0, 5);
    ColorCondition steady = condition(kUnchanged, 0, 5);
    for (const auto& [pixels, changed] :
         {std::pair{10, false}, {14, false}, {19, true}, {19, false}, {13, true}}) {
        EXPECT_EQ(cycle(changes, pixels), changed) << pixels;
        EXPECT_EQ(cycle(steady, pixels), !changed) << pixels;
    }
}

TEST_F(ColorConditionTest, CountTestsCompareWithTheCountAndNothingCountedNeverHolds) {
    ColorCondition more = condition(kMoreThan, 12, 0);
    ColorCondition notMore = condition(kNotMoreThan, 12, 0);
    for (const int pixels : {11, 12, 13}) {
        EXPECT_EQ(cycle(more, pixels), pixels > 12) << pixels;
        EXPECT_EQ(cycle(notMore, pixels), pixels <= 12) << pixels;
    }

    task.frame = cv::Mat(30, 40, CV_8UC3, cv::Scalar::all(0));
    EXPECT_FALSE(ColorCondition(1, ScreenItem::Settings{kNotMoreThan, 0.0f, false}, clock,
                                std::nullopt, std::nullopt, {})
                     .evaluate(task));
    ColorCondition thin(1, ScreenItem::Settings{kNotMoreThan, 0.0f, false}, clock,
                        ColorCondition::Colour{QString(), kOrange, 0.9f}, QRect(0, 0, 1, 30), {});
    EXPECT_FALSE(thin.evaluate(task));
    EXPECT_TRUE(condition(kNotMoreThan, 12, 0).evaluate(task));
}

}  // namespace
