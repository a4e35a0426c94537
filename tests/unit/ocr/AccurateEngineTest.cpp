// The accurate engine: its pure parts (CTC decoding, boxes from the detector's map, crops,
// reading order, the model files' checks), and with the fetched models the line reader,
// the rendered UI corpus read by both engines (rates printed) and start-ups with missing or
// broken model files.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>

#include "AccurateModels.h"
#include "AccurateRecogniser.h"
#include "CtcDecode.h"
#include "LineReader.h"
#include "RenderedText.h"
#include "SharedOcrService.h"
#include "TestFiles.h"
#include "UiTextCorpus.h"

namespace fs = std::filesystem;
using namespace autoscene::ocr;
using namespace autoscene::ocr::testkit;

namespace {

// Scores with one best class per step.
cv::Mat stepsOf(const std::vector<int>& best, int classes) {
    cv::Mat scores(int(best.size()), classes, CV_32F, cv::Scalar(0.01f));
    for (int i = 0; i < int(best.size()); ++i) {
        scores.at<float>(i, best[std::size_t(i)]) = 0.9f;
    }
    return scores;
}

// Whether `recognised` reads `expected` exactly, line by line, spaces aside and full-width
// forms taken as their ASCII letters (both are legitimate readings of UI text).
bool readsExactly(const std::string& recognised, const std::string& expected) {
    const auto normalised = [](const std::string& text) {
        return QString::fromStdString(text)
            .normalized(QString::NormalizationForm_KC)
            .remove(QRegularExpression(QStringLiteral("[^\\S\n]")));
    };
    return normalised(recognised) == normalised(expected);
}

class FetchedModels : public testing::Test {
protected:
    void SetUp() override {
        if (!fs::exists(fs::path(MORVANE_OCR_MODELS) / kCharacterFile)) {
            GTEST_SKIP() << "no models in " MORVANE_OCR_MODELS "; run scripts/fetch-ocr-models";
        }
    }
};

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
    // The region's outline, 99 x 19 between pixel centres, grows by area * 1.5 / perimeter
    // = 11.95 map pixels on each side; then x doubles and y triples: (36, 24) 246 x 129.
    const cv::Rect extent = lines[0].extent.boundingRect();
    const cv::Rect reading = lines[0].reading.boundingRect();
    const cv::Vec4i off(extent.x - 36, extent.y - 24, extent.width - 246, extent.height - 129);
    EXPECT_LE(cv::norm(off, cv::NORM_INF), 3) << extent;
    EXPECT_TRUE((reading & extent) == extent) << "the reading box holds the extent";
    EXPECT_GT(reading.height, extent.height);
}

TEST(AccurateRecogniser, TurnsCropsUprightAndOrdersLinesAsTheyRead) {
    cv::Mat image(200, 200, CV_8UC3, cv::Scalar(255, 255, 255));
    image(cv::Rect(90, 20, 20, 160)).setTo(cv::Scalar(0, 0, 255));
    const cv::Mat vertical = uprightCrop(image, cv::RotatedRect({100, 100}, {20, 160}, 0));
    EXPECT_EQ(vertical.size(), cv::Size(160, 20));
    EXPECT_EQ(vertical.at<cv::Vec3b>(10, 80), cv::Vec3b(0, 0, 255));
    EXPECT_EQ(uprightCrop(image, cv::RotatedRect({100, 100}, {120, 30}, 20)).size(),
              cv::Size(120, 30));

    std::vector<TextLine> lines = {
        {"right", 200, 12, 50, 20}, {"left", 10, 15, 50, 20}, {"below", 5, 50, 50, 20}};
    sortInReadingOrder(lines);
    EXPECT_EQ(lines[0].text + " " + lines[1].text + " " + lines[2].text, "left right below");
}

TEST(AccurateModels, NamesTheFileThatIsMissingOrWrong) {
    const QTemporaryDir folder;
    const fs::path path = folder.path().toStdString();
    const auto failureOf = [&path] {
        try {
            readAccurateModels(path);
        } catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_PRED_FORMAT2(testing::IsSubstring, kDetectorFile, failureOf());
    std::ofstream(path / kDetectorFile) << "graph";
    std::ofstream(path / kRecogniserFile) << "graph";
    std::ofstream(path / kCharacterFile)
        << QString("字\n").repeated(kCharacterCount - 1).toStdString();
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "6622 lines, expected 6623", failureOf());
    std::ofstream(path / kCharacterFile, std::ios::app) << "ab\n";
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "line 6623 is not one UTF-8 character", failureOf());
    std::ofstream(path / kDetectorFile, std::ios::trunc).flush();
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "0 bytes", failureOf());
}

TEST_F(FetchedModels, LineReaderSkipsWhatIsNotALineAndReadsOnAfterwards) {
    const AccurateModels models = readAccurateModels(MORVANE_OCR_MODELS);
    LineReader reader(models.recogniser, models.characters);
    EXPECT_EQ(reader.read(cv::Mat()), "");
    EXPECT_EQ(reader.read(cv::Mat(44, 3000, CV_8UC3, cv::Scalar::all(255))), "");  // squeezed
    EXPECT_EQ(reader.read(cv::Mat(44, 100, CV_8UC1, cv::Scalar::all(0))), "");     // not BGR
    EXPECT_EQ(reader.read(renderTextFrame({220, 44}, {{"金币 12850", {6, 4}, 32}})), "金币 12850");
}

TEST_F(FetchedModels, ServiceReadsTheRenderedUiCorpusAtLeastNinetyPercentExactly) {
    const std::vector<CorpusSample> corpus = uiTextCorpus();
    int accurateExact = 0;
    int fastExact = 0;
    for (const CorpusSample& sample : corpus) {
        const ServiceAnswer accurate = sharedOcrService().detect(sample.png, "accurate");
        const ServiceAnswer fast = sharedOcrService().detect(sample.png, "fast");
        ASSERT_EQ(accurate.engine + " " + fast.engine, "accurate fast");
        if (readsExactly(accurate.whole, sample.text)) {
            ++accurateExact;
        } else {
            std::printf("  accurate misread %s as \"%s\"\n", sample.name.c_str(),
                        accurate.whole.c_str());
        }
        fastExact += readsExactly(fast.whole, sample.text) ? 1 : 0;
    }
    const double total = double(corpus.size());
    std::printf("UI corpus, %zu images exact: accurate %d (%.1f %%), fast %d (%.1f %%)\n",
                corpus.size(), accurateExact, 100.0 * accurateExact / total, fastExact,
                100.0 * fastExact / total);
    EXPECT_GE(accurateExact, 0.9 * total);

    // Most of a whole frame's labels, each on its own box.
    const CorpusSample frame = uiTextFrame();
    const QStringList labels = QString::fromStdString(frame.text).split('\n');
    const QStringList read =
        QString::fromStdString(sharedOcrService().detect(frame.png).whole).split('\n');
    int found = 0;
    for (const QString& label : labels) {
        found += int(std::count_if(read.begin(), read.end(), [&label](const QString& line) {
            return readsExactly(line.toStdString(), label.toStdString());
        }));
    }
    std::printf("1280x720 frame: %d of %d labels read exactly\n", found, int(labels.size()));
    EXPECT_GE(found, int(labels.size()) * 9 / 10);
}

TEST_F(FetchedModels, ServiceFallsBackToTheFastEngineWhenTheModelsAreMissingOrBroken) {
    const std::string png = renderTextPng({400, 100}, {{"Start Game", {20, 30}, 36}});
    for (const std::string broken : {"missing", "cut detector", "recogniser as detector"}) {
        SCOPED_TRACE(broken);
        const QTemporaryDir folder;
        const fs::path models = folder.path().toStdString();
        if (broken != "missing") {
            fs::copy(MORVANE_OCR_MODELS, models);
        }
        if (broken == "cut detector") {
            fs::resize_file(models / kDetectorFile, fs::file_size(models / kDetectorFile) / 2);
        } else if (broken == "recogniser as detector") {
            fs::copy_file(models / kRecogniserFile, models / kDetectorFile,
                          fs::copy_options::overwrite_existing);
        }
        const QString log = folder.filePath(QStringLiteral("stderr.txt"));
        const OcrServiceProcess service(MORVANE_OCR_PROGRAM, 2, models.string(), log.toStdString());
        for (int request = 0; request < 2; ++request) {
            const ServiceAnswer answer = service.detect(png);
            EXPECT_EQ(answer.engine + ": " + answer.whole, "fast: Start Game");
        }
        const std::string errors = autoscene::test::readFile(log).toStdString();
        EXPECT_EQ(QString::fromStdString(errors).count("accurate engine unavailable"), 1) << errors;
        EXPECT_PRED_FORMAT2(testing::IsSubstring,
                            broken == "missing" ? kDetectorFile : "detector network", errors);
    }
}
