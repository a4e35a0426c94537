#pragma once
// An HTTP server on loopback whose routes answer with what they received, so that tests see
// requests as they were sent, and with bodies and failures of known shape; its text
// service route answers whatever the test sets.

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>

#include "LoopbackPort.h"

namespace autoscene::test {

class EchoServer {
public:
    EchoServer() {
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
        server_.Post("/ocr_detect",
                     [this](const httplib::Request& request, httplib::Response& response) {
                         ++requests;
                         const std::lock_guard lock(mutex_);
                         lastEngine_ = request.get_file_value("engine").content;
                         response.status = answer_.first;
                         response.set_content(answer_.second, "application/json");
                     });
        port_ = server_.bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { server_.listen_after_bind(); });
    }
    ~EchoServer() {
        server_.stop();
        thread_.join();
    }

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + path;
    }

    // An address on which nobody listens.
    static std::string refusedUrl(const std::string& path) {
        return "http://127.0.0.1:" + std::to_string(unusedLoopbackPort()) + path;
    }

    void answerWith(int status, std::string body) {
        const std::lock_guard lock(mutex_);
        answer_ = {status, std::move(body)};
    }
    // The "engine" field of the last upload to the text service route.
    std::string lastEngine() {
        const std::lock_guard lock(mutex_);
        return lastEngine_;
    }
    std::atomic<int> requests{0};

    // Binary bytes first, then far more than one read or pipe buffer of numbers.
    static std::string largeBody() {
        std::string body("\x00\x01\xff", 3);
        for (int i = 0; body.size() < 300000; ++i) {
            body += std::to_string(i) + ',';
        }
        return body;
    }

private:
    httplib::Server server_;
    std::mutex mutex_;
    std::pair<int, std::string> answer_;
    std::string lastEngine_;
    int port_ = 0;
    std::thread thread_;
};

}  // namespace autoscene::test
