#pragma once
// An HTTP server on loopback whose routes answer with what they received, so that tests see
// requests as they were sent, and with bodies and failures of known shape.

#include <httplib.h>

#include <chrono>
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
        server_.Get("/hello", [](const httplib::Request&, httplib::Response& response) {
            response.set_content("héllo", "text/plain; charset=utf-8");
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
    ~EchoServer() {
        server_.stop();
        thread_.join();
    }
    EchoServer(const EchoServer&) = delete;
    EchoServer& operator=(const EchoServer&) = delete;

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + path;
    }

    // An address on which nobody listens.
    static std::string refusedUrl(const std::string& path) {
        return "http://127.0.0.1:" + std::to_string(unusedLoopbackPort()) + path;
    }

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
    int port_ = 0;
    std::thread thread_;
};

}  // namespace autoscene::test
