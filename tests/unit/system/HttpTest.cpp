#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "EchoServer.h"
#include "TestFiles.h"
#include "http/Http.h"

namespace http = autoscene::http;
namespace fs = std::filesystem;

class Http : public testing::Test {
protected:
    autoscene::test::EchoServer server;
};

TEST_F(Http, RequestsGoOutAsGiven) {
    // Each header as one line; a form body sorted by name and not escaped; JSON unchanged.
    EXPECT_EQ(http::httpGet(server.url("/headers"), {{"X-Task", "run 1"}, {"X-Empty", ""}}),
              "run 1||1");
    const std::string answer =
        http::httpPostForm(server.url("/echo"), {},
                           {{"zeta", "last"}, {"alpha", "a b&c=d"}, {"名", "值%20"}, {"Mid", ""}});
    EXPECT_EQ(answer, "application/x-www-form-urlencoded\nMid=&alpha=a b&c=d&zeta=last&名=值%20");
    const std::string json = R"({"name": "开始", "n": [1, 2]})";
    EXPECT_EQ(http::httpPostJson(server.url("/echo"), {{"X-Task", "1"}}, json),
              "application/json\n" + json);
}

// Uploads that arrive are the OCR client's, checked against the real service in unit/ocr.
TEST_F(Http, MultipartReportsFailureInsteadOfPrinting) {
    testing::internal::CaptureStderr();
    const http::HttpResponse refused = http::httpPostMultipart(
        autoscene::test::EchoServer::refusedUrl("/"), {}, {"image", "a.png", "", "x"});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(refused.error, "Couldn't connect to server");
    EXPECT_EQ(refused.status, 0);
    const http::HttpResponse missing =
        http::httpPostMultipart(server.url("/nowhere"), {}, {"image", "a.png", "", "x"});
    EXPECT_EQ(missing.error, "");
    EXPECT_EQ(missing.status, 404);
}

TEST_F(Http, DownloadWritesTheWholeBodyAndReplacesTheFile) {
    const fs::path target = fs::temp_directory_path() / "autoscene-download.bin";
    std::ofstream(target) << "older and longer content that must disappear";
    ASSERT_TRUE(http::httpDownloadToFile(server.url("/large"), {}, target.string()));
    EXPECT_EQ(autoscene::test::readFile(QString::fromStdString(target.string())).toStdString(),
              autoscene::test::EchoServer::largeBody());
    fs::remove(target);

    testing::internal::CaptureStderr();
    EXPECT_FALSE(http::httpDownloadToFile(server.url("/large"), {}, "/no/such/folder/file"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Failed to open file for writing.\n");
}

TEST_F(Http, FailedTransferReportsAndReturnsWhatArrived) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(http::httpGet(server.url("/cut"), {}), "partial");
    EXPECT_EQ(http::httpGet(autoscene::test::EchoServer::refusedUrl("/"), {}), "");
    EXPECT_EQ(http::httpPostJson(autoscene::test::EchoServer::refusedUrl(""), {}, "{}"), "");
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors.rfind("curl_easy_perform() failed: ", 0), 0u) << errors;
    EXPECT_NE(errors.find("curl_easy_perform() failed: Couldn't connect to server\n"),
              std::string::npos)
        << errors;
}

TEST_F(Http, TimeOutEndsASlowTransfer) {
    testing::internal::CaptureStderr();
    http::HttpLimits quick;
    quick.timeout = std::chrono::milliseconds(100);
    EXPECT_EQ(http::httpGet(server.url("/late"), {}, quick), "");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Timeout"), std::string::npos);
    EXPECT_EQ(http::httpGet(server.url("/late"), {}), "late");  // none by default
}
