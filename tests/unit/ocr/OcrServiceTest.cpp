// The real service on a loopback port: what it reads and where, what it refuses, and
// its command line.

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>
#include <vector>

#include "LoopbackPort.h"
#include "RenderedText.h"
#include "SharedOcrService.h"
#include "http/Http.h"
#include "system/Process.h"

using namespace autoscene::ocr::testkit;

// Where the boxes lie is read through the client (OcrClientTest, TextItemsTest).
TEST(OcrService, GivesOneBoxPerLineInReadingOrder) {
    const std::string png =
        renderTextPng({640, 260}, {{"开始游戏", {40, 40}, 40}, {"Settings 设置", {300, 150}, 36}});
    EXPECT_EQ(sharedOcrService().detect(png).whole, "开始游戏\nSettings 设置");
    const ServiceAnswer blank = sharedOcrService().detect(renderTextPng({400, 100}, {}));
    EXPECT_EQ(std::pair(blank.engine.empty(), blank.whole), std::pair(false, std::string()));
}

// Which images decode is OcrUploadTest's; here the server's own refusals and one decoder's.
TEST(OcrService, RejectsBadUploadsWithJsonErrorsAndKeepsServing) {
    const std::string png = renderTextPng({200, 60}, {{"OK", {10, 10}, 32}});
    std::string tooLarge = png;
    tooLarge.resize(32u * 1024u * 1024u + 1u, '\0');
    const std::pair<std::string, std::string> cases[] = {
        {"hello, this is not a picture", "image"}, {tooLarge, "image"}, {png, "picture"}};
    for (const auto& [bytes, field] : cases) {
        EXPECT_NE(sharedOcrService().detect(bytes, {}, field).error, "") << bytes.size() << field;
    }

    EXPECT_EQ(sharedOcrService().detect(png).whole, "OK");
}

TEST(OcrService, ServesFourClientsAtOnceEachWithItsOwnText) {
    const std::vector<std::string> texts = {"开始游戏", "Start Game", "退出", "Options 123"};
    std::vector<std::future<ServiceAnswer>> answers;
    for (int round = 0; round < 2; ++round) {
        for (const std::string& text : texts) {
            const std::string png =
                renderTextPng({400, 100}, {{QString::fromStdString(text), {20, 28}, 36}});
            answers.push_back(
                std::async(std::launch::async, [png] { return sharedOcrService().detect(png); }));
        }
    }
    for (std::size_t i = 0; i < answers.size(); ++i) {
        EXPECT_EQ(answers[i].get().whole, texts[i % texts.size()]);
    }
}

TEST(OcrService, ProgramRefusesBadArgumentsAndABusyPort) {
    const std::string program = MORVANE_OCR_PROGRAM;
    for (const char* arguments :
         {"", " abc", " 65536", " -1", " 8080 0", " 8080 4 models extra", " 8080 4 \"\""}) {
        const std::string output = autoscene::sys::runCommandCapture(program + arguments);
        EXPECT_NE(output.find("usage: morvane-ocr PORT"), std::string::npos) << arguments;
    }
    // The port is tried before the models load: a folder that holds none is never reached.
    const std::string port = std::to_string(sharedOcrService().port());
    const std::string busy =
        autoscene::sys::runCommandCapture(program + " " + port + " 1 /nonexistent-models");
    EXPECT_NE(busy.find("cannot listen on 127.0.0.1:" + port + ": the port is already in use"),
              std::string::npos)
        << busy;
    EXPECT_EQ(busy.find("accurate engine unavailable"), std::string::npos) << busy;
}

TEST(OcrService, ClientsThatSendHalfARequestHoldNobodyElseBack) {
    std::vector<int> slow;
    for (int i = 0; i < 8; ++i) {
        slow.push_back(::socket(AF_INET, SOCK_STREAM, 0));
        sockaddr_in address = autoscene::test::loopbackAddress(sharedOcrService().port());
        ASSERT_EQ(::connect(slow.back(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        const std::string start = "POST /ocr_detect HTTP/1.1\r\nHost: 127.0.0.1\r\n";
        ::send(slow.back(), start.data(), start.size(), 0);
    }
    const std::string png = renderTextPng({200, 60}, {{"OK", {10, 10}, 32}});
    autoscene::http::HttpLimits limits;
    limits.timeout = std::chrono::seconds(4);  // well below the half-sent requests' patience
    const autoscene::http::HttpResponse answer = autoscene::http::httpPostMultipart(
        sharedOcrService().url(), {}, {"image", "ok.png", "image/png", png}, {{"engine", "fast"}},
        limits);
    EXPECT_EQ(answer.error, "");
    EXPECT_EQ(readServiceAnswer(answer.body).whole, "OK");
    std::for_each(slow.begin(), slow.end(), ::close);
}
