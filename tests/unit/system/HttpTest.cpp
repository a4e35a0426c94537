#include <gtest/gtest.h>
#include <httplib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "LoopbackPort.h"
#include "http/Http.h"

namespace http = autoscene::http;
namespace fs = std::filesystem;

namespace {

// Every route answers with what it received, so the tests see the request as sent.
class LoopbackServer {
public:
    LoopbackServer() {
        server_.Get("/headers", [](const httplib::Request& request, httplib::Response& response) {
            response.set_content(request.get_header_value("X-Task") + "|" +
                                     request.get_header_value("X-Empty") + "|" +
                                     std::to_string(request.get_header_value_count("X-Task")),
                                 "text/plain");
        });
        server_.Post("/echo", [](const httplib::Request& request, httplib::Response& response) {
            response.set_content(request.get_header_value("Content-Type") + "\n" + request.body,
                                 "text/plain");
        });
        server_.Get("/large", [](const httplib::Request&, httplib::Response& response) {
            response.set_content(largeBody(), "application/octet-stream");
        });
        // Answers after a second: a transfer with a shorter time-out gives up first.
        server_.Get("/late", [](const httplib::Request&, httplib::Response& response) {
            std::this_thread::sleep_for(std::chrono::seconds(1));
            response.set_content("late", "text/plain");
        });
        server_.Get("/cut", [](const httplib::Request&, httplib::Response& response) {
            response.set_chunked_content_provider(
                "text/plain", [](size_t offset, httplib::DataSink& sink) {
                    if (offset == 0) {
                        sink.write("partial", 7);
                        return true;
                    }
                    return false;  // drops the connection in the middle of the body
                });
        });
        port_ = server_.bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { server_.listen_after_bind(); });
    }
    ~LoopbackServer() {
        server_.stop();
        thread_.join();
    }

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + path;
    }

    // An address on which nobody listens.
    static std::string refusedUrl(const std::string& path) {
        return "http://127.0.0.1:" + std::to_string(autoscene::test::unusedLoopbackPort()) + path;
    }

    static std::string largeBody() {
        std::string body;
        for (int i = 0; body.size() < 300000; ++i) {
            body += std::to_string(i) + ',';
        }
        return body;
    }

private:
    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
};

}  // namespace

class Http : public testing::Test {
protected:
    LoopbackServer server;
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
    const http::HttpResponse refused =
        http::httpPostMultipart(LoopbackServer::refusedUrl("/"), {}, {"image", "a.png", "", "x"});
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
    std::ifstream file(target, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    EXPECT_EQ(content.str(), LoopbackServer::largeBody());
    fs::remove(target);

    testing::internal::CaptureStderr();
    EXPECT_FALSE(http::httpDownloadToFile(server.url("/large"), {}, "/no/such/folder/file"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Failed to open file for writing.\n");
}

TEST_F(Http, FailedTransferReportsAndReturnsWhatArrived) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(http::httpGet(server.url("/cut"), {}), "partial");
    EXPECT_EQ(http::httpGet(LoopbackServer::refusedUrl("/"), {}), "");
    EXPECT_EQ(http::httpPostJson(LoopbackServer::refusedUrl(""), {}, "{}"), "");
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
