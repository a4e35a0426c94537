#include <gtest/gtest.h>

#include "CjkSpacing.h"
#include "OcrAnswer.h"

using namespace autoscene::ocr;

TEST(CjkSpacing, DropsBlanksOnlyBetweenTwoCjkCharactersAndKeepsBadBytes) {
    EXPECT_EQ(removeSpacesBetweenCjk("开 始 游  戏"), "开始游戏");
    EXPECT_EQ(removeSpacesBetweenCjk("设 置 Settings 1 2"), "设置 Settings 1 2");
    EXPECT_EQ(removeSpacesBetweenCjk("金 币 : 1 0 0"), "金币 : 1 0 0");
    EXPECT_EQ(removeSpacesBetweenCjk("（ 开 ）"), "（开）");
    EXPECT_EQ(removeSpacesBetweenCjk(" 开 "), " 开 ");
    EXPECT_EQ(removeSpacesBetweenCjk("开\xE3\x80\x80始"), "开始");  // ideographic space
    EXPECT_EQ(removeSpacesBetweenCjk(""), "");
    EXPECT_EQ(removeSpacesBetweenCjk("\xFF \xE5\xBC"), "\xFF \xE5\xBC");  // invalid and cut
    EXPECT_EQ(removeSpacesBetweenCjk("开 \xC0\xAF 始"), "开 \xC0\xAF 始");
}

TEST(OcrAnswer, ListsTheLinesInOrderJoinedIntoTheWholeTextAsValidJson) {
    EXPECT_EQ(buildAnswerJson({{"开始游戏", 10, 20, 30, 5}, {"a \"q\"\n", -1, 0, 7, 8}}, "fast"),
              R"({"strRes":"开始游戏\na \"q\"\n","boxes":[{"text":"开始游戏","x":10,"y":20,)"
              R"("width":30,"height":5},{"text":"a \"q\"\n","x":-1,"y":0,"width":7,"height":8}],)"
              R"("engine":"fast"})");
    EXPECT_EQ(buildAnswerJson({}, "accurate"), R"({"strRes":"","boxes":[],"engine":"accurate"})");
    // Bytes that are not UTF-8 become U+FFFD: one stray byte must not spoil the answer.
    EXPECT_EQ(buildAnswerJson({{std::string("\xFF\xFE \0", 4), 0, 0, 1, 1}}, ""),
              "{\"strRes\":\"\xEF\xBF\xBD\xEF\xBF\xBD \\u0000\",\"boxes\":[{\"text\":\"\xEF\xBF\xBD"
              "\xEF\xBF\xBD \\u0000\",\"x\":0,\"y\":0,\"width\":1,\"height\":1}],\"engine\":\"\"}");
}
