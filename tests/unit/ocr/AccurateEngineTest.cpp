// The accurate engine's pure parts: CTC decoding, boxes from the detector's map, crops,
// reading order and the model files' checks.

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <QTemporaryDir>
#include <fstream>

#include <opencv2/imgcodecs.hpp>

#include "AccurateModels.h"
#include "AccurateRecogniser.h"
#include "CtcDecode.h"
#include "LineReader.h"
#include "RenderedText.h"
#include "TextDetector.h"
#include "UiTextCorpus.h"

using namespace autoscene::ocr;

namespace {

// Scores with one best class per step.
cv::Mat stepsOf(const std::vector<int>& best, int classes) {
    cv::Mat scores(int(best.size()), classes, CV_32F, cv::Scalar(0.01f));
    for (int i = 0; i < int(best.size()); ++i) {
        scores.at<float>(i, best[std::size_t(i)]) = 0.9f;
    }
    return scores;
}

bool modelsFetched() {
    return std::filesystem::exists(std::filesystem::path(MORVANE_OCR_MODELS) / kCharacterFile);
}

}  // namespace

TEST(CtcDecode, MergesRepeatsDropsBlanksAndMapsTheSpaceClass) {
    const std::vector<std::string> characters = {"a", "b", "中"};  // space is class 4
    EXPECT_EQ(decodeCtc(stepsOf({0, 1, 1, 0, 1, 2, 4, 3, 3, 0}, 5), characters), "aab 中");
    EXPECT_EQ(decodeCtc(stepsOf({4, 4, 1, 0, 4}, 5), characters), "a");
    EXPECT_EQ(decodeCtc(stepsOf({0, 0, 4}, 5), characters), "");
    EXPECT_EQ(decodeCtc(cv::Mat(), characters), "");
    EXPECT_EQ(decodeCtc(cv::Mat(2, 5, CV_8U, cv::Scalar(1)), characters), "");
}

TEST(TextDetector, KeepsConfidentRegionsGrownByTheirShapeAndScaled) {
    cv::Mat map(100, 200, CV_32F, cv::Scalar(0.0f));
    map(cv::Rect(30, 20, 100, 20)).setTo(0.9f);  // a line of text
    map(cv::Rect(10, 60, 40, 10)).setTo(0.45f);  // over the pixel threshold, not confident
    map(cv::Rect(150, 80, 2, 2)).setTo(0.9f);    // a speck
    const std::vector<DetectedLine> lines = linesOfProbability(map, {2.0f, 3.0f});
    ASSERT_EQ(lines.size(), 1u);
    const cv::Rect extent = lines[0].extent.boundingRect();
    const cv::Rect reading = lines[0].reading.boundingRect();
    // The region's outline, 99 x 19 between pixel centres, grows by area * 1.5 / perimeter
    // = 11.95 map pixels on each side; then x doubles and y triples.
    const double grow = 99 * 19 * 1.5 / (2 * (99 + 19));
    EXPECT_NEAR(extent.x, (30 - grow) * 2, 3);
    EXPECT_NEAR(extent.width, (99 + 2 * grow) * 2, 3);
    EXPECT_NEAR(extent.y, (20 - grow) * 3, 3);
    EXPECT_NEAR(extent.height, (19 + 2 * grow) * 3, 3);
    EXPECT_TRUE((reading & extent) == extent) << "the reading box holds the extent";
    EXPECT_GT(reading.height, extent.height);
}

TEST(AccurateRecogniser, TurnsCropsUprightAndOrdersLinesAsTheyRead) {
    cv::Mat image(200, 200, CV_8UC3, cv::Scalar(255, 255, 255));
    image(cv::Rect(90, 20, 20, 160)).setTo(cv::Scalar(0, 0, 255));
    const cv::Mat vertical = uprightCrop(image, cv::RotatedRect({100, 100}, {20, 160}, 0));
    EXPECT_EQ(vertical.size(), cv::Size(160, 20));
    EXPECT_EQ(vertical.at<cv::Vec3b>(10, 80), cv::Vec3b(0, 0, 255));

    const cv::Mat tilted = uprightCrop(image, cv::RotatedRect({100, 100}, {120, 30}, 20));
    EXPECT_EQ(tilted.size(), cv::Size(120, 30));

    std::vector<TextLine> lines = {
        {"right", 200, 12, 50, 20}, {"left", 10, 15, 50, 20}, {"below", 5, 50, 50, 20}};
    sortInReadingOrder(lines);
    EXPECT_EQ(lines[0].text, "left");
    EXPECT_EQ(lines[1].text, "right");
    EXPECT_EQ(lines[2].text, "below");
}

TEST(AccurateModels, NamesTheFileThatIsMissingOrWrong) {
    QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    const auto failureOf = [&path] {
        try {
            readAccurateModels(path);
        } catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_NE(failureOf().find(kDetectorFile), std::string::npos);

    std::ofstream(path / kDetectorFile) << "graph";
    std::ofstream(path / kRecogniserFile) << "graph";
    {
        std::ofstream keys(path / kCharacterFile);
        for (int i = 1; i < kCharacterCount; ++i) {
            keys << "字\n";
        }
    }
    EXPECT_NE(failureOf().find("6622 lines, expected 6623"), std::string::npos) << failureOf();

    std::ofstream(path / kCharacterFile, std::ios::app) << "ab\n";
    EXPECT_NE(failureOf().find("line 6623 is not one UTF-8 character"), std::string::npos)
        << failureOf();

    std::ofstream(path / kDetectorFile, std::ios::trunc).flush();
    EXPECT_NE(failureOf().find("0 bytes"), std::string::npos) << failureOf();
}

TEST(LineReader, ReadsEachLineAndSkipsWhatIsNotALine) {
    if (!modelsFetched()) {
        GTEST_SKIP() << "no models in " << MORVANE_OCR_MODELS << "; run scripts/fetch-ocr-models";
    }
    const AccurateModels models = readAccurateModels(MORVANE_OCR_MODELS);
    LineReader reader(models.recogniser, models.characters);
    const char* shown[] = {"开始游戏", "Level 27", "确定", "金币 12850"};
    std::vector<cv::Mat> lines;
    lines.reserve(std::size(shown) + 3);
    for (const char* text : shown) {
        lines.push_back(autoscene::ocr::testkit::renderTextFrame(
            {220, 44}, {{QString::fromUtf8(text), {6, 4}, 32}}));
    }
    lines.insert(lines.begin() + 2, cv::Mat());                   // empty
    lines.emplace_back(44, 3000, CV_8UC3, cv::Scalar::all(255));  // blank, squeezed
    lines.emplace_back(44, 100, CV_8UC1, cv::Scalar::all(0));     // not BGR
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (const cv::Mat& line : lines) {
        texts.push_back(reader.read(line));
    }
    const std::vector<std::string> expected = {"开始游戏",   "Level 27", "", "确定",
                                               "金币 12850", "",         ""};
    EXPECT_EQ(texts, expected);
}

TEST(AccurateRecogniser, APartnerSharesTheLinesAndChangesNoAnswer) {
    if (!modelsFetched()) {
        GTEST_SKIP() << "no models in " << MORVANE_OCR_MODELS << "; run scripts/fetch-ocr-models";
    }
    const AccurateModels models = readAccurateModels(MORVANE_OCR_MODELS);
    AccurateRecogniser reader(models);
    AccurateRecogniser partner(models);
    const std::string png = autoscene::ocr::testkit::uiTextFrame().png;
    const FoundLines found =
        reader.find(cv::imdecode(std::vector<uchar>(png.begin(), png.end()), cv::IMREAD_COLOR));
    ASSERT_GT(found.crops.size(), 30u);
    const std::vector<TextLine> alone = reader.read(found);
    const std::vector<TextLine> shared = reader.read(found, &partner);
    ASSERT_EQ(shared.size(), alone.size());
    for (std::size_t i = 0; i < alone.size(); ++i) {
        SCOPED_TRACE(alone[i].text);
        EXPECT_EQ(shared[i].text, alone[i].text);
        EXPECT_EQ(cv::Rect(shared[i].x, shared[i].y, shared[i].width, shared[i].height),
                  cv::Rect(alone[i].x, alone[i].y, alone[i].width, alone[i].height));
    }
}
