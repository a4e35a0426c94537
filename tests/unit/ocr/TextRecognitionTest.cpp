// The client's pure parts: reading answers, matching texts, preparing regions.

#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include "conditions/TextSearch.h"
#include "engine/MVVariable.h"
#include "text/RecognisedText.h"
#include "text/TextMatcher.h"
#include "text/TextRegionReader.h"

using namespace autoscene::engine;
using namespace autoscene::recognition;
using namespace autoscene::text;
using namespace autoscene::conditions;
using autoscene::model::TextCompare;

TEST(RecognisedText, ReadsWholeTextAndBoxesWithTheirCorners) {
    const auto text = parseRecognisedText(
        R"({"strRes": "开始游戏\nOK", "boxes": [{"text": "开始游戏", "x": 10, "y": 20,
            "width": 30, "height": 5}, {"text": "OK", "x": 0, "y": 0, "width": 0, "height": 0}]})");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->whole, QStringLiteral("开始游戏\nOK"));
    ASSERT_EQ(text->boxes.size(), 2u);
    EXPECT_EQ(text->boxes[0].text, QStringLiteral("开始游戏"));
    const std::array<QPoint, 4> expected{QPoint(10, 20), QPoint(40, 20), QPoint(40, 25),
                                         QPoint(10, 25)};
    EXPECT_EQ(text->boxes[0].corners(), expected);
    EXPECT_EQ(text->boxes[1].corners()[2], QPoint(0, 0));

    const auto noBoxes = parseRecognisedText(R"({"strRes": "faint", "boxes": []})");
    ASSERT_TRUE(noBoxes);
    EXPECT_EQ(noBoxes->whole, QStringLiteral("faint"));
    EXPECT_TRUE(noBoxes->boxes.empty());
}

TEST(RecognisedText, RefusesAnswersOfAnotherShapeAndSkipsBadBoxes) {
    for (const char* body :
         {"", "garbage", "[]", "null", R"({"strRes": "a"})", R"({"boxes": []})",
          R"({"strRes": 1, "boxes": []})", R"({"strRes": "a", "boxes": {}})",
          R"({"strRes": "a", "boxes": [)", R"({"error": "the upload is not a PNG image"})"}) {
        EXPECT_FALSE(parseRecognisedText(body)) << body;
    }
    const auto text = parseRecognisedText(R"({"strRes": "x", "boxes": [
        7, {"text": 5, "x": 0, "y": 0, "width": 1, "height": 1},
        {"text": "no y", "x": 0, "width": 1, "height": 1},
        {"text": "float", "x": 0.5, "y": 0, "width": 1, "height": 1},
        {"text": "negative", "x": 0, "y": 0, "width": -4, "height": 1},
        {"text": "huge", "x": 2147483647, "y": 0, "width": 1, "height": 1},
        {"text": "kept", "x": -3, "y": 4, "width": 5, "height": 6}]})");
    ASSERT_TRUE(text);
    ASSERT_EQ(text->boxes.size(), 1u);
    EXPECT_EQ(text->boxes[0].text, QStringLiteral("kept"));
    EXPECT_EQ(text->boxes[0].rect, QRect(-3, 4, 5, 6));
}

TEST(TextMatcher, ComparesAsEachOperatorSays) {
    const struct {
        TextCompare compare;
        const char* wanted;
        const char* recognised;
        bool holds;
    } cases[] = {
        {TextCompare::Equal, "", "", true},
        {TextCompare::Equal, "Start", "Start", true},
        {TextCompare::Equal, "Start", "start", false},
        {TextCompare::NotEqual, "Start", "start", true},
        {TextCompare::NotEqual, "", "", false},
        {TextCompare::Greater, "4.5", " 5 ", true},
        {TextCompare::Greater, "5", "5", false},
        {TextCompare::Greater, "4", "abc", false},
        {TextCompare::Less, "100", "-2e1", true},
        {TextCompare::Less, "x", "1", false},
        {TextCompare::Contains, "开始", "开始游戏", true},
        {TextCompare::Contains, "GAME", "Start Game", false},
        {TextCompare::Contains, "", "any", true},
        {TextCompare::StartsWith, "开始", "开始游戏", true},
        {TextCompare::StartsWith, "游戏", "开始游戏", false},
        {TextCompare(0), "a", "a", false},
        {TextCompare(7), "a", "a", false},
    };
    for (const auto& c : cases) {
        const TextMatcher matcher(c.compare, QString::fromUtf8(c.wanted));
        EXPECT_EQ(matcher.matches(QString::fromUtf8(c.recognised)), c.holds)
            << int(c.compare) << " '" << c.wanted << "' '" << c.recognised << "'";
    }
}

TEST(TextMatcher, TakesTheVariablesCurrentValueWhenItHasOne) {
    MVVariable wanted(3, QStringLiteral("wanted"), QStringLiteral("Start"), {});
    const TextMatcher matcher(TextCompare::Equal, QStringLiteral("ignored"),
                              [&wanted] { return wanted.value(); });
    EXPECT_TRUE(matcher.matches(QStringLiteral("Start")));
    wanted.setValue(QStringLiteral("退出"));
    EXPECT_EQ(matcher.wanted(), QStringLiteral("退出"));
    EXPECT_TRUE(matcher.matches(QStringLiteral("退出")));
    EXPECT_FALSE(matcher.matches(QStringLiteral("ignored")));
}

TEST(TextPreparation, ReadsTheRecordsFieldsAndPreparesTheRegion) {
    EXPECT_EQ(textPreparationOf(4, 90, "16744448", 0.8f).filterColor, 0xff8000);
    EXPECT_EQ(textPreparationOf(4, 90, "\"255\"", 0.8f).filterColor, 255);
    for (const char* bad : {"", "\"\"", "-1", "16777216", "\"#ff8000\"", "1.5", "[1]"}) {
        EXPECT_EQ(textPreparationOf(4, 90, bad, 0.8f).filterColor, 0) << bad;
    }

    // Orange text-like strokes on a dark blue ground, one grey pixel in between.
    cv::Mat region(4, 6, CV_8UC3, cv::Scalar(80, 10, 10));
    region(cv::Rect(1, 1, 3, 2)).setTo(cv::Scalar(0, 128, 255));
    region.at<cv::Vec3b>(3, 5) = cv::Vec3b(200, 200, 200);

    const cv::Mat colour = prepareTextRegion(region, {MatchImageType::Color, 128, 0, 0.9f});
    EXPECT_EQ(colour.type(), CV_8UC3);
    EXPECT_EQ(cv::norm(colour, region, cv::NORM_INF), 0.0);

    const cv::Mat threshold = prepareTextRegion(region, {MatchImageType::Threshold, 128, 0, 0.9f});
    ASSERT_EQ(threshold.type(), CV_8UC1);
    EXPECT_EQ(threshold.at<uchar>(3, 5), 255);
    EXPECT_EQ(threshold.at<uchar>(1, 1), 255);  // orange is grey 151
    EXPECT_EQ(threshold.at<uchar>(0, 0), 0);
    EXPECT_EQ(cv::countNonZero(threshold), 7);

    const cv::Mat filtered =
        prepareTextRegion(region, {MatchImageType::FilterColor, 128, 0xff8000, 0.9f});
    ASSERT_EQ(filtered.type(), CV_8UC1);
    EXPECT_EQ(filtered.at<uchar>(1, 1), 0);  // the colour becomes dark text
    EXPECT_EQ(filtered.at<uchar>(0, 0), 255);
    EXPECT_EQ(cv::countNonZero(filtered), 24 - 6);
}
