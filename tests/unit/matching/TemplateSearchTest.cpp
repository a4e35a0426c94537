// When the coarse-to-fine search trusts its reduced scores and when it hands over to the
// exhaustive search. Its agreement with the exhaustive search on real screens is held in
// tests/integration/matching. Rescoring on the whole search's tiles must match it bit for bit.

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "MatchingTestKit.h"
#include "recognition/TemplateSearch.h"
#include "recognition/TemplateTiles.h"

using namespace autoscene::recognition;
using autoscene::test::blurredNoise;

namespace {

TEST(TemplateSearchTest, TakesTheCoarseRouteOnlyWhereItCanVouchForTheAnswer) {
    const cv::Mat frame = blurredNoise(480, 320, 1);
    // Two copies of one piece side by side: which is first is the exhaustive search's call.
    cv::Mat twins = frame.clone();
    frame(cv::Rect(40, 40, 48, 32)).copyTo(twins(cv::Rect(300, 200, 48, 32)));
    cv::Mat faded;
    frame(cv::Rect(100, 60, 64, 40)).convertTo(faded, CV_8U, 0.02, 120);
    const std::tuple<const char*, cv::Mat, cv::Mat, SearchRoute> cases[] = {
        {"a distinct piece", frame, frame(cv::Rect(211, 97, 64, 40)).clone(),
         SearchRoute::CoarseToFine},
        {"too small to reduce", frame, frame(cv::Rect(211, 97, 10, 10)).clone(),
         SearchRoute::Exhaustive},
        {"an area a few times the template", frame(cv::Rect(180, 80, 120, 80)),
         frame(cv::Rect(211, 97, 64, 40)).clone(), SearchRoute::Exhaustive},
        {"flat", frame, cv::Mat(40, 64, CV_8UC3, cv::Scalar::all(90)), SearchRoute::Exhaustive},
        {"faded to a grey level or two", frame, faded, SearchRoute::Exhaustive},
        {"absent", frame, blurredNoise(64, 40, 2), SearchRoute::Exhaustive},
        {"one of identical twins", twins, frame(cv::Rect(40, 40, 48, 32)).clone(),
         SearchRoute::Exhaustive},
    };
    SearchScratch scratch;
    for (const auto& [name, region, templ, route] : cases) {
        const BestMatch reference = searchExhaustive(region, templ, scratch);
        const BestMatch fast = searchCoarseToFine(region, templ, scratch);
        EXPECT_EQ(fast.route, route) << name;
        EXPECT_EQ(fast.at, reference.at) << name;
        EXPECT_EQ(std::round(fast.score * 100), std::round(reference.score * 100)) << name;
    }
}

}  // namespace

TEST(TemplateTilesTest, RescoresPositionsToTheLastBitOfTheWholeSearch) {
    // {frame, template, positions to rescore, whether one channel}
    const std::tuple<cv::Size, cv::Size, cv::Rect, bool> cases[] = {
        {{1920, 1080}, {24, 24}, {700, 500, 9, 9}, false},      // inside one tile
        {{1920, 1080}, {24, 24}, {229, 229, 9, 9}, false},      // across tile borders
        {{1920, 1080}, {160, 90}, {1700, 978, 12, 12}, false},  // the short last tiles
        {{1280, 720}, {102, 62}, {0, 0, 1179, 659}, false},     // every position
        {{300, 200}, {40, 30}, {100, 90, 5, 5}, false},         // one tile for the frame
        {{1024, 768}, {48, 28}, {960, 730, 17, 11}, true},      // one channel
    };
    cv::Mat whole;
    cv::Mat tiles;
    for (const auto& [size, templSize, wanted, grey] : cases) {
        cv::Mat frame = blurredNoise(size.width, size.height, 7);
        if (grey) {
            cv::cvtColor(frame, frame, cv::COLOR_BGR2GRAY);
        }
        const cv::Mat templ = frame(cv::Rect({size.width / 3, size.height / 3}, templSize)).clone();
        cv::matchTemplate(frame, templ, whole, cv::TM_CCOEFF_NORMED);
        const cv::Point origin = scoreTiles(frame, templ, wanted, tiles);
        const cv::Rect inTiles = wanted - origin;
        ASSERT_EQ(inTiles & cv::Rect(0, 0, tiles.cols, tiles.rows), inTiles) << wanted;
        EXPECT_EQ(cv::norm(whole(wanted), tiles(inTiles), cv::NORM_INF), 0.0) << wanted;
    }
}
