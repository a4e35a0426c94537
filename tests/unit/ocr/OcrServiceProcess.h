#pragma once
// The real morvane-ocr program run as a child process on a free loopback port, and its
// answers as the tests read them.

#include <memory>
#include <string>
#include <string_view>

class QProcess;

namespace autoscene::ocr::testkit {

// The whole text (lines joined by '\n'), and the engine that answered or the error it
// gave; what the body does not hold stays empty.
struct ServiceAnswer {
    std::string whole;
    std::string engine;
    std::string error;
};

ServiceAnswer readServiceAnswer(const std::string& body);

class OcrServiceProcess {
public:
    // Starts `program` with port 0 (and `modelFolder` when not empty) and waits until it
    // reports its port (throws std::runtime_error when it does not within a minute).
    // Its standard error goes to `errorFile` when one is named.
    OcrServiceProcess(const std::string& program, int engineCount,
                      const std::string& modelFolder = {}, const std::string& errorFile = {});
    ~OcrServiceProcess();

    int port() const { return port_; }
    std::string url() const;

    // The answer to a multipart POST of `png` as the file field `fieldName`, with the form
    // field "engine" when one is named.
    ServiceAnswer detect(std::string_view png, const std::string& engine = {},
                         const std::string& fieldName = "image") const;

private:
    void stop();

    std::unique_ptr<QProcess> process_;
    int port_ = 0;
};

}  // namespace autoscene::ocr::testkit
