#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "CjkSpacing.h"
#include "OcrAnswer.h"

using namespace autoscene::ocr;

TEST(CjkSpacing, DropsBlanksOnlyBetweenTwoCjkCharacters) {
    EXPECT_EQ(removeSpacesBetweenCjk("开 始 游  戏"), "开始游戏");
    EXPECT_EQ(removeSpacesBetweenCjk("Start Game"), "Start Game");
    EXPECT_EQ(removeSpacesBetweenCjk("设 置 Settings 1 2"), "设置 Settings 1 2");
    EXPECT_EQ(removeSpacesBetweenCjk("金 币 : 1 0 0"), "金币 : 1 0 0");
    EXPECT_EQ(removeSpacesBetweenCjk("（ 开 ）"), "（开）");
    EXPECT_EQ(removeSpacesBetweenCjk(" 开 "), " 开 ");
    EXPECT_EQ(removeSpacesBetweenCjk("开\xE3\x80\x80始"), "开始");  // ideographic space
    EXPECT_EQ(removeSpacesBetweenCjk(""), "");
}

TEST(CjkSpacing, KeepsInvalidBytesAndCutSequences) {
    EXPECT_EQ(removeSpacesBetweenCjk("\xFF \xE5\xBC"), "\xFF \xE5\xBC");
    EXPECT_EQ(removeSpacesBetweenCjk("开 \xC0\xAF 始"), "开 \xC0\xAF 始");
}

TEST(OcrAnswer, ListsLinesInOrderAndJoinsThemIntoTheWholeText) {
    const std::string json =
        buildAnswerJson({{"开始游戏", 10, 20, 30, 5}, {"a \"q\"\n", -1, 0, 7, 8}}, "fast");
    rapidjson::Document answer;
    ASSERT_FALSE(answer.Parse(json.c_str()).HasParseError()) << json;
    EXPECT_STREQ(answer["strRes"].GetString(), "开始游戏\na \"q\"\n");
    const auto& boxes = answer["boxes"];
    ASSERT_EQ(boxes.Size(), 2u);
    EXPECT_STREQ(boxes[0]["text"].GetString(), "开始游戏");
    EXPECT_EQ(boxes[0]["x"].GetInt(), 10);
    EXPECT_EQ(boxes[0]["y"].GetInt(), 20);
    EXPECT_EQ(boxes[0]["width"].GetInt(), 30);
    EXPECT_EQ(boxes[0]["height"].GetInt(), 5);
    EXPECT_EQ(boxes[1]["x"].GetInt(), -1);
    EXPECT_STREQ(answer["engine"].GetString(), "fast");

    EXPECT_EQ(buildAnswerJson({}, "accurate"), R"({"strRes":"","boxes":[],"engine":"accurate"})");
}

TEST(OcrAnswer, StaysValidJsonWhateverTheTextHolds) {
    const std::string json =
        buildAnswerJson({{std::string("bad \xFF\xFE byte\0nul", 15), 0, 0, 1, 1}}, "fast");
    rapidjson::Document answer;
    ASSERT_FALSE(answer.Parse(json.c_str()).HasParseError()) << json;
    EXPECT_EQ(std::string(answer["boxes"][0]["text"].GetString(),
                          answer["boxes"][0]["text"].GetStringLength()),
              std::string("bad \xEF\xBF\xBD\xEF\xBF\xBD byte\0nul", 19));

    rapidjson::Document error;
    ASSERT_FALSE(error.Parse(buildErrorJson("no \"image\" field").c_str()).HasParseError());
    EXPECT_STREQ(error["error"].GetString(), "no \"image\" field");
}
