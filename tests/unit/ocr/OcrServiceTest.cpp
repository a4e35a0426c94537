#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <future>
#include <memory>
#include <vector>

#include "OcrServiceProcess.h"
#include "RenderedText.h"
#include "http/Http.h"
#include "system/Process.h"

using autoscene::ocr::testkit::OcrServiceProcess;
using autoscene::ocr::testkit::renderTextPng;
using autoscene::ocr::testkit::TextLabel;

namespace {

struct Box {
    std::string text;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

struct Answer {
    bool valid = false;
    std::string whole;
    std::vector<Box> boxes;
    std::string error;
};

Answer parseAnswer(const std::string& body) {
    Answer answer;
    rapidjson::Document json;
    if (json.Parse(body.c_str()).HasParseError() || !json.IsObject()) {
        return answer;
    }
    if (json.HasMember("error") && json["error"].IsString()) {
        answer.error = json["error"].GetString();
        answer.valid = true;
        return answer;
    }
    if (!json.HasMember("strRes") || !json["strRes"].IsString() || !json.HasMember("boxes") ||
        !json["boxes"].IsArray()) {
        return answer;
    }
    answer.whole = json["strRes"].GetString();
    for (const auto& item : json["boxes"].GetArray()) {
        answer.boxes.push_back({item["text"].GetString(), item["x"].GetInt(), item["y"].GetInt(),
                                item["width"].GetInt(), item["height"].GetInt()});
    }
    answer.valid = true;
    return answer;
}

}  // namespace

class OcrService : public testing::Test {
protected:
    static void SetUpTestSuite() {
        service = std::make_unique<OcrServiceProcess>(MORVANE_OCR_PROGRAM, 4);
    }
    static void TearDownTestSuite() { service.reset(); }

    static Answer detect(const std::string& png, const std::string& field = "image") {
        return parseAnswer(service->detect(png, field));
    }

    static std::unique_ptr<OcrServiceProcess> service;
};

std::unique_ptr<OcrServiceProcess> OcrService::service;

TEST_F(OcrService, ReadsRenderedLatinAndChineseText) {
    const Answer latin = detect(renderTextPng({400, 100}, {{"Start Game", {20, 30}, 36}}));
    ASSERT_TRUE(latin.valid);
    ASSERT_EQ(latin.boxes.size(), 1u) << latin.whole;
    EXPECT_EQ(latin.boxes[0].text, "Start Game");

    const Answer chinese = detect(renderTextPng({400, 100}, {{"开始游戏", {20, 25}, 40}}));
    ASSERT_TRUE(chinese.valid);
    ASSERT_EQ(chinese.boxes.size(), 1u) << chinese.whole;
    EXPECT_EQ(chinese.boxes[0].text, "开始游戏");
    EXPECT_EQ(chinese.whole, "开始游戏");
}

TEST_F(OcrService, GivesOneBoxPerLineInReadingOrderAtTheTextsPlace) {
    const Answer answer = detect(
        renderTextPng({640, 260}, {{"开始游戏", {40, 40}, 40}, {"Settings 设置", {300, 150}, 36}}));
    ASSERT_TRUE(answer.valid);
    ASSERT_EQ(answer.boxes.size(), 2u) << answer.whole;
    EXPECT_EQ(answer.boxes[0].text, "开始游戏");
    EXPECT_EQ(answer.boxes[1].text, "Settings 设置");
    EXPECT_EQ(answer.whole, "开始游戏\nSettings 设置");
    const Box& first = answer.boxes[0];
    EXPECT_NEAR(first.x, 40, 6);
    EXPECT_NEAR(first.y, 44, 10);
    EXPECT_NEAR(first.width, 160, 12);
    EXPECT_NEAR(first.height, 36, 10);
    EXPECT_NEAR(answer.boxes[1].x, 300, 6);
    EXPECT_NEAR(answer.boxes[1].y, 154, 10);
}

TEST_F(OcrService, BlankImageGivesEmptyAnswer) {
    const Answer answer = detect(renderTextPng({400, 100}, {}));
    ASSERT_TRUE(answer.valid);
    EXPECT_EQ(answer.whole, "");
    EXPECT_TRUE(answer.boxes.empty());
}

TEST_F(OcrService, RejectsBadUploadsWithJsonErrorsAndKeepsServing) {
    const std::string png = renderTextPng({200, 60}, {{"OK", {10, 10}, 32}});
    std::string tooLarge = png;
    tooLarge.resize(32u * 1024u * 1024u + 1u, '\0');
    std::string hugeHeader = png;
    hugeHeader.replace(16, 8, std::string("\x00\x00\xff\xff\x00\x00\xff\xff", 8));
    const struct {
        const char* what;
        std::string bytes;
        std::string field;
    } cases[] = {
        {"text instead of an image", "hello, this is not a picture", "image"},
        {"a JPEG signature", "\xFF\xD8\xFF\xE0 not really", "image"},
        {"a cut PNG", png.substr(0, png.size() / 2), "image"},
        {"a PNG header claiming 65535 x 65535 pixels", hugeHeader, "image"},
        {"an empty file", "", "image"},
        {"more than 32 MiB", tooLarge, "image"},
        {"the wrong field name", png, "picture"},
    };
    for (const auto& bad : cases) {
        const Answer answer = detect(bad.bytes, bad.field);
        EXPECT_TRUE(answer.valid && !answer.error.empty()) << bad.what;
    }
    // Not multipart at all.
    const std::string plain =
        autoscene::http::httpPostJson(service->url(), {}, R"({"image": "x"})");
    EXPECT_FALSE(parseAnswer(plain).error.empty()) << plain;

    const Answer afterwards = detect(png);
    ASSERT_EQ(afterwards.boxes.size(), 1u);
    EXPECT_EQ(afterwards.boxes[0].text, "OK");
}

TEST_F(OcrService, ServesFourClientsAtOnceEachWithItsOwnText) {
    const std::vector<std::string> texts = {"开始游戏", "Start Game", "退出", "Options 123"};
    std::vector<std::future<Answer>> answers;
    for (int round = 0; round < 2; ++round) {
        for (const std::string& text : texts) {
            const std::string png =
                renderTextPng({400, 100}, {{QString::fromStdString(text), {20, 28}, 36}});
            answers.push_back(std::async(std::launch::async, [png] { return detect(png); }));
        }
    }
    for (std::size_t i = 0; i < answers.size(); ++i) {
        const Answer answer = answers[i].get();
        ASSERT_EQ(answer.boxes.size(), 1u) << answer.whole;
        EXPECT_EQ(answer.boxes[0].text, texts[i % texts.size()]);
    }
}

TEST(OcrServiceProgram, RefusesBadArgumentsAndABusyPort) {
    const std::string program = MORVANE_OCR_PROGRAM;
    for (const char* arguments :
         {"", " abc", " 65536", " -1", " 8080 0", " 8080 4 models extra", " 8080 4 \"\""}) {
        const std::string output = autoscene::sys::runCommandCapture(program + arguments);
        EXPECT_NE(output.find("usage: morvane-ocr PORT"), std::string::npos) << arguments;
    }
    const OcrServiceProcess running(program, 1);
    const std::string busy =
        autoscene::sys::runCommandCapture(program + " " + std::to_string(running.port()) + " 1");
    EXPECT_NE(busy.find("cannot listen on 127.0.0.1:" + std::to_string(running.port())),
              std::string::npos)
        << busy;
}
