#pragma once
// Asks the local recognition service for the text in an image. Shared by every worker
// thread; each call makes its own transfer. The address is set by whoever starts the
// service; with none set, nothing is recognised.

#include <chrono>
#include <mutex>
#include <opencv2/core/mat.hpp>
#include <stop_token>
#include <string>

#include "text/RecognisedText.h"

namespace autoscene::text {

// The service's engines: PP-OCR networks (accurate) or Tesseract (fast).
enum class OcrEngine { Invalid = 0, Accurate, Fast };

// How long a request may take: a service that hangs must not hold a run.
struct OcrTimeouts {
    std::chrono::milliseconds connect{3000};
    std::chrono::milliseconds request{20000};  // the whole request, connecting included
};

class OcrClient {
public:
    OcrClient() = default;
    explicit OcrClient(std::string url) : url_(std::move(url)) {}

    void setUrl(std::string url);
    std::string url() const;
    void setTimeouts(OcrTimeouts timeouts);

    // The text of a BGR or grey image read by `engine`; empty when the service cannot be
    // reached in time or answers with anything but a recognition (each failure is logged
    // once), and when `stop` ends the request.
    RecognisedText recognise(const cv::Mat& image, OcrEngine engine = OcrEngine::Accurate,
                             const std::stop_token& stop = {}) const;

    // Whether the service takes requests: an empty recognition does not tell a screen with
    // no text from a service that is not there. Waits at most 300 ms.
    bool answers() const;

private:
    mutable std::mutex mutex_;
    std::string url_;
    OcrTimeouts timeouts_;
};

// "http://127.0.0.1:<port>/ocr_detect"
std::string ocrServiceUrl(int port);

}  // namespace autoscene::text
