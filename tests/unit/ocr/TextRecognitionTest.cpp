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

TEST(RecognisedText, ReadsTheWholeTextAndGoodBoxesAndRefusesAnswersOfAnotherShape) {
    const std::pair<const char*, std::optional<RecognisedText>> cases[] = {
        {R"({"strRes": "开始游戏\nOK", "boxes": [{"text": "开始游戏", "x": 10, "y": 20,
            "width": 30, "height": 5}, {"text": "OK", "x": 0, "y": 0, "width": 0, "height": 0}]})",
         RecognisedText{"开始游戏\nOK", {{"开始游戏", QRect(10, 20, 30, 5)}, {"OK", QRect()}}}},
        {R"({"strRes": "faint", "boxes": []})", RecognisedText{"faint", {}}},
        {R"({"strRes": "x", "boxes": [7, {"text": 5, "x": 0, "y": 0, "width": 1, "height": 1},
            {"text": "no y", "x": 0, "width": 1, "height": 1},
            {"text": "float", "x": 0.5, "y": 0, "width": 1, "height": 1},
            {"text": "negative", "x": 0, "y": 0, "width": -4, "height": 1},
            {"text": "huge", "x": 2147483647, "y": 0, "width": 1, "height": 1},
            {"text": "kept", "x": -3, "y": 4, "width": 5, "height": 6}]})",
         RecognisedText{"x", {{"kept", QRect(-3, 4, 5, 6)}}}},
    };
    for (const auto& [body, expected] : cases) {
        EXPECT_EQ(parseRecognisedText(body), expected) << body;
    }
    for (const char* body :
         {"", "garbage", "[]", "null", R"({"strRes": "a"})", R"({"boxes": []})",
          R"({"strRes": 1, "boxes": []})", R"({"strRes": "a", "boxes": {}})",
          R"({"strRes": "a", "boxes": [)", R"({"error": "the upload is not a PNG image"})"}) {
        EXPECT_FALSE(parseRecognisedText(body)) << body;
    }
    EXPECT_EQ((TextBox{"", QRect(10, 20, 30, 5)}.corners()),
              (std::array{QPoint(10, 20), QPoint(40, 20), QPoint(40, 25), QPoint(10, 25)}));
}

TEST(TextMatcher, ComparesAsEachOperatorSays) {
    // Operator, wanted text, recognised text, whether the comparison holds.
    const std::tuple<TextCompare, const char*, const char*, bool> cases[] = {
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
    for (const auto& [compare, wanted, recognised, holds] : cases) {
        EXPECT_EQ(TextMatcher(compare, QString::fromUtf8(wanted)).matches(recognised), holds)
            << int(compare) << " '" << wanted << "' '" << recognised << "'";
    }
}

TEST(TextMatcher, TakesTheVariablesCurrentValueWhenItHasOne) {
    MVVariable wanted(3, QStringLiteral("wanted"), QStringLiteral("Start"), {});
    const TextMatcher matcher(TextCompare::Equal, QStringLiteral("ignored"),
                              [&wanted] { return wanted.value(); });
    wanted.setValue(QStringLiteral("退出"));
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
    cv::Mat strokes(4, 6, CV_8UC1, cv::Scalar(0));
    strokes(cv::Rect(1, 1, 3, 2)).setTo(255);
    cv::Mat bright = strokes.clone();  // orange is grey 151, over the threshold with the grey
    bright.at<uchar>(3, 5) = 255;
    const std::pair<TextPreparation, cv::Mat> cases[] = {
        {{MatchImageType::Color, 128, 0, 0.9f}, region},
        {{MatchImageType::Threshold, 128, 0, 0.9f}, bright},
        {{MatchImageType::FilterColor, 128, 0xff8000, 0.9f}, 255 - strokes},  // dark text
    };
    for (const auto& [preparation, expected] : cases) {
        const cv::Mat prepared = prepareTextRegion(region, preparation);
        ASSERT_EQ(prepared.type(), expected.type()) << int(preparation.imageType);
        EXPECT_EQ(cv::norm(prepared, expected, cv::NORM_INF), 0.0) << int(preparation.imageType);
    }
}
