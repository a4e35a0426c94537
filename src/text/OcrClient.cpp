#include "text/OcrClient.h"

#include <QLoggingCategory>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <vector>

#include "http/Http.h"

namespace autoscene::text {

Q_LOGGING_CATEGORY(lcOcrClient, "autoscene.engine.ocr")

void OcrClient::setUrl(std::string url) {
    const std::lock_guard lock(mutex_);
    url_ = std::move(url);
}

std::string OcrClient::url() const {
    const std::lock_guard lock(mutex_);
    return url_;
}

void OcrClient::setTimeouts(OcrTimeouts timeouts) {
    const std::lock_guard lock(mutex_);
    timeouts_ = timeouts;
}

RecognisedText OcrClient::recognise(const cv::Mat& image, OcrEngine engine,
                                    const std::stop_token& stop) const {
    std::string address;
    http::HttpLimits limits;
    {
        const std::lock_guard lock(mutex_);
        address = url_;
        limits = {timeouts_.connect, timeouts_.request, stop};
    }
    if (address.empty() || image.empty()) {
        return {};
    }
    std::vector<uchar> png;
    try {
        cv::imencode(".png", image, png);
    } catch (const cv::Exception& error) {
        qCWarning(lcOcrClient) << "cannot encode the region as PNG:" << error.what();
        return {};
    }
    const std::string_view content(reinterpret_cast<const char*>(png.data()), png.size());
    const http::HttpResponse response = http::httpPostMultipart(
        address, {}, {"image", "image.png", "image/png", content},
        {{"engine", engine == OcrEngine::Fast ? "fast" : "accurate"}}, limits);
    if (stop.stop_requested()) {
        return {};
    }
    if (!response.error.empty()) {
        qCWarning(lcOcrClient).noquote().nospace()
            << "curl_easy_perform() failed: " << QString::fromStdString(response.error);
        return {};
    }
    if (response.status != 200) {
        qCWarning(lcOcrClient).noquote()
            << "ocr service answered" << response.status << QString::fromStdString(response.body);
        return {};
    }
    std::optional<RecognisedText> text = parseRecognisedText(response.body);
    if (!text) {
        qCWarning(lcOcrClient).noquote() << "ocr service answer is not a recognition:"
                                         << QString::fromStdString(response.body.substr(0, 200));
        return {};
    }
    return std::move(*text);
}

bool OcrClient::answers() const {
    std::string address;
    http::HttpLimits limits;
    {
        const std::lock_guard lock(mutex_);
        address = url_;
        // A service on the loopback that takes longer than this to answer is as good as
        // gone; the check must not hold up a watcher's stop.
        const auto limit = std::min(timeouts_.connect, std::chrono::milliseconds(300));
        limits = {limit, limit, {}};
    }
    // Any status will do: the service only takes posts.
    return !address.empty() && http::httpGetWithHeaders(address, {}, limits).status != 0;
}

std::string ocrServiceUrl(int port) {
    return "http://127.0.0.1:" + std::to_string(port) + "/ocr_detect";
}

}  // namespace autoscene::text
