// The test on the screen: one fixed original, each item probed on it with the verdict,
// score and reason the editor draws.

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <cmath>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>
#include <vector>

#include "MatchingTestKit.h"
#include "TestFiles.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "model/TaskDocument.h"
#include "probe/ConditionProbe.h"
#include "probe/ProbeReasons.h"

using namespace autoscene::model;
using namespace autoscene::probe;
using autoscene::test::blurredNoise;
using autoscene::test::readFile;

namespace {

// A 400x300 original of noise with the template (cut at 250,180) pasted again at 40,30,
// an orange block of 10x10, a template found nowhere and three crops: one around the cut, one away
// from both copies and one smaller than the template (tests/fixtures/tasks/probe-original).
class ConditionProbeTest : public ::testing::Test {
protected:
    void SetUp() override {
        original = autoscene::test::noiseFrame(400, 300, 7);
        const cv::Mat piece = original(cv::Rect(250, 180, 40, 24)).clone();
        piece.copyTo(original(cv::Rect(40, 30, 40, 24)));
        original(cv::Rect(300, 20, 10, 10)).setTo(cv::Scalar(0, 128, 255));
        ASSERT_TRUE(QDir().mkpath(dir.filePath(QStringLiteral("image"))));
        ASSERT_TRUE(cv::imwrite(dir.filePath(QStringLiteral("image/t.png")).toStdString(), piece));
        ASSERT_TRUE(cv::imwrite(dir.filePath(QStringLiteral("image/u.png")).toStdString(),
                                autoscene::test::noiseFrame(40, 24, 8)));
        ASSERT_TRUE(
            document.openText(readFile(AUTOSCENE_FIXTURES "/tasks/probe-original/script.json")).ok);
        document.folderPath = dir.path() + "/";
    }

    static EditorImageCondition image(int imageId, int searchId, int state = 1) {
        EditorImageCondition c;
        c.imageId = imageId;
        c.searchId = searchId;
        c.state = state;
        return c;
    }

    QTemporaryDir dir;
    cv::Mat original;
    TaskDocument document;
};

TEST_F(ConditionProbeTest, ImageConditionsGiveTheRunnersVerdictWithItsReason) {
    ConditionProbe probe(document);
    const std::tuple<EditorImageCondition, bool, QString> cases[] = {
        {image(1, 0), true, {}},
        {image(1, 10), true, {}},
        {image(1, 11), false, reasons::outsideSearchArea()},
        {image(1, 12), false, reasons::templateLargerThanArea()},
        {image(1, 0, 0), false, reasons::imageShown(1.0f, 0.9f)},
        {image(3, 0), false, reasons::imageUnreadable()},
    };
    for (const auto& [condition, holds, reason] : cases) {
        SCOPED_TRACE(condition.searchId * 10 + condition.imageId);
        const ProbeResult result = probe.run(condition, original);
        EXPECT_EQ(std::tuple(result.probed, result.holds, result.reason),
                  std::tuple(true, holds, reason));
    }
    // Found in its crop, the list keeps to the crop.
    const ProbeResult around = probe.run(image(1, 10), original);
    ASSERT_EQ(around.candidates.size(), 1u);
    EXPECT_EQ(around.candidates.front().rect, QRect(250, 180, 40, 24));
    EXPECT_EQ(around.searchArea, QRect(230, 160, 80, 64));
}

// Beyond its area the image is searched on reduced copies (a smooth picture keeps enough of
// itself there): a copy at the threshold or above gives "outside" with its true place and
// score; one just below it does not, and the reason quotes the score the runner found.
TEST_F(ConditionProbeTest, CopiesBeyondTheAreaKeepTheirTruePlaceAndScore) {
    const cv::Mat piece = blurredNoise(400, 300, 7)(cv::Rect(250, 180, 40, 24)).clone();
    ASSERT_TRUE(cv::imwrite(dir.filePath(QStringLiteral("image/t.png")).toStdString(), piece));
    ConditionProbe probe(document);
    for (const double noise : {8.0, 12.0}) {  // scores 0.93 and 0.87
        cv::Mat frame = blurredNoise(400, 300, 8);
        const cv::Rect at(137, 223, 40, 24);  // on no cell of a reduced copy
        cv::Mat copy(piece.size(), CV_32FC3);
        cv::randn(copy, cv::Scalar::all(0), cv::Scalar::all(noise));
        cv::add(copy, piece, copy, cv::noArray(), CV_32F);
        copy.convertTo(frame(at), CV_8UC3);
        cv::Mat scores;
        cv::matchTemplate(frame, piece, scores, cv::TM_CCOEFF_NORMED);
        double best = 0;
        cv::minMaxLoc(scores, nullptr, &best);
        const float score = std::round(float(best) * 100.0f) / 100.0f;
        const ProbeResult result = probe.run(image(1, 10), frame);
        ASSERT_FALSE(result.holds);
        const bool above = noise < 10.0;
        ASSERT_EQ(score >= 0.9f, above) << score;
        EXPECT_EQ(result.reason == reasons::outsideSearchArea(), above);
        if (above) {
            ASSERT_FALSE(result.candidates.front().inArea);
            EXPECT_EQ(result.candidates.front().rect, QRect(at.x, at.y, at.width, at.height));
            EXPECT_FLOAT_EQ(result.candidates.front().score, score);
        } else {
            EXPECT_EQ(probe.run(image(1, 0), frame).reason, reasons::scoreBelow(score, 0.9f));
        }
    }
}

// Probed side by side on the detection pool, each condition gives what it gives alone.
TEST_F(ConditionProbeTest, ABatchGivesTheResultsOfProbingOneByOne) {
    const EditorImageCondition images[] = {image(1, 0),  image(1, 10),   image(1, 11),
                                           image(1, 12), image(4, 10),   image(4, 0),
                                           image(3, 0),  image(1, 0, 0), image(1, 11)};
    std::vector<const IEditorCondition*> records;
    for (const EditorImageCondition& condition : images) {
        records.push_back(&condition);
    }
    const std::vector<ProbeResult> batch = ConditionProbe(document).run(records, original);
    ConditionProbe alone(document);
    ASSERT_EQ(batch.size(), records.size());
    for (size_t i = 0; i < records.size(); ++i) {
        EXPECT_TRUE(batch[i] == alone.run(*records[i], original)) << i;
    }
    // In two steps: the verdicts first, with the images missed in their areas still to be
    // looked for beyond them, then the same results.
    ConditionProbe twoSteps(document);
    std::vector<ProbeResult> verdicts = twoSteps.verdicts(records, original);
    for (size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(verdicts[i].lookingBeyond, i == 2 || i == 3 || i == 4 || i == 8) << i;
    }
    EXPECT_NE(verdicts[2].reason, reasons::outsideSearchArea());
    EXPECT_FALSE(verdicts[2].reason.isEmpty());
    std::vector<ProbeResult> fewer(verdicts.begin(), verdicts.end() - 1);
    EXPECT_THROW(twoSteps.lookBeyond(fewer), std::invalid_argument);
    twoSteps.lookBeyond(verdicts);
    EXPECT_TRUE(verdicts == batch);
}

TEST_F(ConditionProbeTest, ActionsAimWithoutClickingAndColoursCount) {
    ConditionProbe probe(document);
    EditorImageAction click;
    click.imageId = 1;
    click.searchId = 10;
    const ProbeResult aimed = probe.run(click, original);
    ASSERT_TRUE(aimed.click.has_value());
    // A click lands anywhere in the match, its far edges included.
    EXPECT_TRUE(QRect(250, 180, 41, 25).contains(*aimed.click));
    EXPECT_TRUE(aimed.holds);

    EditorColorCondition colour;
    colour.colorId = 2;
    colour.count = 120;
    colour.state = int(ColorTest::MoreThan);
    const ProbeResult counted = probe.run(colour, original);
    EXPECT_EQ(std::tuple(counted.count, counted.holds, counted.reason),
              std::tuple(100, false, reasons::colourCount(100, 120, true)));

    EXPECT_FALSE(probe.run(EditorDelayAction(), original).probed);
}

}  // namespace
