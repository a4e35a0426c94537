// The coarse-to-fine template search against the exhaustive one, pair by pair, on real
// screens: the demo target's four screens among Debian's X programs, captured from Xvfb at
// several sizes (tests/fixtures/matching), and the OCR corpus's frame. Templates are cut
// from each screen (8x8 to a third of it), mirrored or inverted so that they are absent,
// altered into look-alikes of what is shown, flattened and faded. Every pair must give the
// same two-decimal score and the same position within a pixel; 64 pairs a screen, 320 in
// all, and on the X screens each of xcalc's digit and operator keys cut where it is: a
// keypad of alike buttons.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "UiTextCorpus.h"
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

// 64 templates for the screen, the same ones on every run.
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
    for (int i = 0; i < 4; ++i) {
        // A look-alike: the same piece with a small mark of the opposite shade, while the
        // piece itself is on the screen.
        const cv::Rect cut = cutAt({48, 28});
        cv::Mat alike = screen(cut).clone();
        const cv::Scalar mean = cv::mean(alike);
        cv::rectangle(alike, cv::Rect(20, 10, 4, 6),
                      cv::Scalar::all(mean[0] + mean[1] + mean[2] > 384 ? 0 : 255), cv::FILLED);
        pairs.push_back({describe("look-alike", cut), alike});
    }
    for (int i = 0; i < 4; ++i) {
        // Faded to a tenth of its contrast around mid-grey.
        const cv::Rect cut = cutAt(i < 2 ? cv::Size(40, 24) : cv::Size(120, 60));
        cv::Mat faded;
        screen(cut).convertTo(faded, CV_8U, 0.1, 115);
        pairs.push_back({describe("faded", cut), faded});
    }
    for (const cv::Size size : {cv::Size(32, 32), cv::Size(90, 40)}) {
        pairs.push_back(
            {describe("flat", cv::Rect({}, size)), cv::Mat(size, CV_8UC3, cv::Scalar(40, 40, 40))});
    }
    return pairs;
}

// The pairs whose template took the coarse-to-fine route; `keys` are cut where they are.
int compareOnScreen(const std::string& name, const cv::Mat& screen,
                    const std::vector<cv::Rect>& keys = {}) {
    std::vector<Pair> pairs = templatesFor(screen);
    for (const cv::Rect& key : keys) {
        pairs.push_back({describe("key", key), screen(key).clone()});
    }
    SearchScratch scratch;
    int coarse = 0;
    for (const Pair& pair : pairs) {
        const BestMatch reference = recognition::searchExhaustive(screen, pair.templ, scratch);
        const BestMatch fast = recognition::searchCoarseToFine(screen, pair.templ, scratch);
        EXPECT_EQ(std::round(fast.score * 100), std::round(reference.score * 100))
            << name << ", " << pair.name << ": " << fast.score << " against " << reference.score;
        EXPECT_LE(std::abs(fast.at.x - reference.at.x), 1) << name << ", " << pair.name;
        EXPECT_LE(std::abs(fast.at.y - reference.at.y), 1) << name << ", " << pair.name;
        coarse += fast.route == SearchRoute::CoarseToFine;
    }
    return coarse;
}

class XScreenCorpusTest : public ::testing::TestWithParam<const char*> {};

// Without the count of coarse-to-fine pairs the comparison would hold by never leaving the
// exhaustive search; the smallest, flat, faded and weakly matching templates rightly never
// leave it.
TEST_P(XScreenCorpusTest, CoarseToFineFindsWhatTheExhaustiveSearchFinds) {
    const std::string path = std::string(AUTOSCENE_FIXTURES "/matching/") + GetParam();
    const cv::Mat screen = cv::imread(path + ".png", cv::IMREAD_COLOR);
    ASSERT_FALSE(screen.empty()) << path;
    std::vector<cv::Rect> keys;
    std::ifstream keyFile(path + ".keys");
    for (cv::Rect key; keyFile >> key.x >> key.y >> key.width >> key.height;) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys.size(), 20u) << "xcalc's digit and operator keys";
    EXPECT_GE(compareOnScreen(GetParam(), screen, keys), 10);
}

INSTANTIATE_TEST_SUITE_P(Screens, XScreenCorpusTest,
                         ::testing::Values("start-640x480", "menu-800x600", "form-1024x768",
                                           "finish-720x540"),
                         [](const auto& info) { return std::string(info.param).substr(0, 4); });

TEST(OcrFrameCorpusTest, CoarseToFineFindsWhatTheExhaustiveSearchFinds) {
    const ocr::testkit::CorpusSample sample = ocr::testkit::uiTextFrame();
    const std::vector<std::uint8_t> png(sample.png.begin(), sample.png.end());
    const cv::Mat frame = cv::imdecode(png, cv::IMREAD_COLOR);
    ASSERT_FALSE(frame.empty());
    EXPECT_GE(compareOnScreen("ocr frame", frame), 10);
}

}  // namespace
}  // namespace autoscene::testing
