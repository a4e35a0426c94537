// The coarse-to-fine template search against the exhaustive one, pair by pair, on real
// screens: the demo target's four screens among Debian's X programs, captured from Xvfb at
// several sizes (tests/fixtures/matching). Templates are cut from each screen (8x8 to a
// third of it), or mirrored or inverted so that they are absent; flat and faded ones never
// leave the exhaustive search (TemplateSearchTest). Every pair must give the same
// two-decimal score and the same position within a pixel; 54 pairs a screen, and each of
// xcalc's digit and operator keys cut where it is: a keypad of alike buttons.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "recognition/TemplateSearch.h"

namespace autoscene::testing {
namespace {

using recognition::BestMatch;
using recognition::SearchRoute;
using recognition::SearchScratch;

struct Pair {
    std::string name;
    cv::Mat templ;
};

std::string describe(const std::string& kind, const cv::Rect& cut) {
    return kind + " " + std::to_string(cut.width) + "x" + std::to_string(cut.height) + "+" +
           std::to_string(cut.x) + "+" + std::to_string(cut.y);
}

// 54 templates for the screen, the same ones on every run.
std::vector<Pair> templatesFor(const cv::Mat& screen) {
    cv::RNG rng(std::uint64_t(screen.cols) * 7919 + std::uint64_t(screen.rows));
    const auto cutAt = [&](cv::Size size) {
        return cv::Rect(rng.uniform(0, screen.cols - size.width + 1),
                        rng.uniform(0, screen.rows - size.height + 1), size.width, size.height);
    };
    std::vector<Pair> pairs;
    const cv::Size third(screen.cols / 3, screen.rows / 3);
    for (const cv::Size size :
         {cv::Size(8, 8), cv::Size(16, 12), cv::Size(24, 24), cv::Size(40, 20), cv::Size(64, 32),
          cv::Size(100, 60), cv::Size(160, 90), third}) {
        for (int i = 0; i < 6; ++i) {
            const cv::Rect cut = cutAt(size);
            pairs.push_back({describe("cut", cut), screen(cut).clone()});
        }
    }
    for (const cv::Size size : {cv::Size(24, 24), cv::Size(64, 32), cv::Size(100, 60)}) {
        const cv::Rect cut = cutAt(size);
        cv::Mat mirrored;
        cv::flip(screen(cut), mirrored, 1);
        pairs.push_back({describe("mirrored", cut), mirrored});
        pairs.push_back({describe("inverted", cut), cv::Scalar::all(255) - screen(cut)});
    }
    return pairs;
}

class XScreenCorpusTest : public ::testing::TestWithParam<const char*> {};

// Without the count of coarse-to-fine pairs the comparison would hold by never leaving the
// exhaustive search; the smallest and weakly matching templates rightly never leave it.
TEST_P(XScreenCorpusTest, CoarseToFineFindsWhatTheExhaustiveSearchFinds) {
    const std::string path = std::string(AUTOSCENE_FIXTURES "/matching/") + GetParam();
    const cv::Mat screen = cv::imread(path + ".png", cv::IMREAD_COLOR);
    ASSERT_FALSE(screen.empty()) << path;
    std::vector<Pair> pairs = templatesFor(screen);
    const size_t generated = pairs.size();
    std::ifstream keyFile(path + ".keys");
    for (cv::Rect key; keyFile >> key.x >> key.y >> key.width >> key.height;) {
        pairs.push_back({describe("key", key), screen(key).clone()});
    }
    EXPECT_EQ(pairs.size() - generated, 20u) << "xcalc's digit and operator keys";
    SearchScratch scratch;
    int coarse = 0;
    for (const Pair& pair : pairs) {
        const BestMatch reference = recognition::searchExhaustive(screen, pair.templ, scratch);
        const BestMatch fast = recognition::searchCoarseToFine(screen, pair.templ, scratch);
        EXPECT_EQ(std::round(fast.score * 100), std::round(reference.score * 100))
            << GetParam() << ", " << pair.name << ": " << fast.score << " against "
            << reference.score;
        EXPECT_LE(std::abs(fast.at.x - reference.at.x), 1) << GetParam() << ", " << pair.name;
        EXPECT_LE(std::abs(fast.at.y - reference.at.y), 1) << GetParam() << ", " << pair.name;
        coarse += fast.route == SearchRoute::CoarseToFine;
    }
    EXPECT_GE(coarse, 10);
}

INSTANTIATE_TEST_SUITE_P(Screens, XScreenCorpusTest,
                         ::testing::Values("start-640x480", "menu-800x600", "form-1024x768",
                                           "finish-720x540"),
                         [](const auto& info) { return std::string(info.param).substr(0, 4); });

}  // namespace
}  // namespace autoscene::testing
