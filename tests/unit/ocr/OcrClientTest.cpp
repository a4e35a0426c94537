// The client against loopback servers that answer garbage or never answer; against the
// real service it reads in TextItemsTest and OcrServiceWatcherTest.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include "EchoServer.h"
#include "LogCapture.h"
#include "LoopbackPort.h"
#include "text/OcrClient.h"
#include "text/TextRegionReader.h"

using namespace autoscene::recognition;
using namespace autoscene::text;
using autoscene::ocr::testkit::LogCapture;
using autoscene::test::SilentListener;

TEST(OcrClient, GarbageAnswersGiveEmptyResultsAndALogLine) {
    autoscene::test::EchoServer fake;
    const auto client = std::make_shared<OcrClient>(fake.url("/ocr_detect"));
    const cv::Mat image(20, 40, CV_8UC3, cv::Scalar(255, 255, 255));
    // Which bodies read as a recognition is RecognisedText's (TextRecognitionTest).
    const std::pair<int, std::string> answers[] = {
        {200, "<html>surprise</html>"},
        {400, R"({"error": "the upload is not a PNG image"})"},
        {500, R"({"strRes": "looks fine", "boxes": []})"},
    };
    for (const auto& [status, body] : answers) {
        fake.answerWith(status, body);
        const LogCapture log;
        EXPECT_EQ(client->recognise(image), RecognisedText{}) << body;
        EXPECT_EQ(log.count(QStringLiteral("ocr service")), 1) << body;
    }
    fake.answerWith(200, R"({"strRes": "x", "boxes": [{"text": "x", "x": 1, "y": 2,
                             "width": 3, "height": 4}]})");

    // Recognised once per cycle and rectangle; a new cycle asks again. Nothing to read is
    // not asked for. Boxes come back in frame pixels.
    TextRegionReader reader(client, {});
    const int before = fake.requests;
    EXPECT_EQ(reader.read(image, QRect(2000, 0, 50, 50), 1), RecognisedText{});
    EXPECT_EQ(reader.read(cv::Mat(), std::nullopt, 1), RecognisedText{});
    const RecognisedText first = reader.read(image, QRect(10, 0, 20, 20), 7);
    EXPECT_EQ(first.boxes.at(0).rect, QRect(11, 2, 3, 4));
    EXPECT_EQ(reader.read(image, QRect(10, 0, 20, 20), 7), first);
    EXPECT_EQ(fake.requests, before + 1);
    reader.read(image, QRect(0, 0, 20, 20), 7);
    reader.read(image, QRect(10, 0, 20, 20), 8);
    EXPECT_EQ(fake.requests, before + 3);

    // Each recognition mode asks for its engine.
    std::string engines;
    for (const MatchImageType type :
         {MatchImageType::Color, MatchImageType::Threshold, MatchImageType::FilterColor}) {
        TextRegionReader(client, {type, 128, 0xffffff, 0.9f}).read(image, std::nullopt, 1);
        engines += fake.lastEngine() + " ";
    }
    EXPECT_EQ(engines, "accurate fast accurate ");
}

// A stop ending a request to a hung service is autoscene-run's test ("hung text service"
// in RunnerProgram.CtrlCAndTheTimeLimitReach...): the default time-outs outlast its wait.
TEST(OcrClient, AHungServiceEndsAtTheTimeOutWithOneLogLine) {
    using namespace std::chrono_literals;
    const SilentListener hung;
    OcrClient client(ocrServiceUrl(hung.port()));
    client.setTimeouts({1000ms, 300ms});
    const LogCapture log;
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(client.recognise(cv::Mat(20, 40, CV_8UC3, cv::Scalar::all(255))), RecognisedText{});
    EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
    EXPECT_EQ(log.count(QStringLiteral("Timeout was reached")), 1) << log.all().toStdString();
}
