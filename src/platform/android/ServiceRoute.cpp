#include "android/ServiceRoute.h"

#include "http/Http.h"

namespace autoscene::platform::android {

namespace {

std::string number(int value) {
    return std::to_string(value);
}

}  // namespace

std::string percentEncode(const std::string& text) {
    static const char* const kHex = "0123456789ABCDEF";
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
            (byte >= '0' && byte <= '9') || byte == '-' || byte == '_' || byte == '.' ||
            byte == '~') {
            out.push_back(c);
        } else {
            out += '%';
            out += kHex[byte >> 4];
            out += kHex[byte & 0x0f];
        }
    }
    return out;
}

ServiceRoute::ServiceRoute(DeviceServices& services, std::string serial, LogSink log,
                           std::chrono::milliseconds portWait)
    : services_(services), serial_(std::move(serial)), log_(std::move(log)), portWait_(portWait) {}

std::string ServiceRoute::base(const std::stop_token& stop) {
    const auto port = services_.port(serial_, portWait_, stop);
    return port ? "http://127.0.0.1:" + number(*port) : std::string();
}

int keyActionOf(KeyOp op) {
    switch (op) {
        case KeyOp::Down:
            return 0;
        case KeyOp::Up:
            return 1;
        default:
            return -1;
    }
}

DeviceCapture ServiceRoute::capture(std::stop_token stop) {
    DeviceCapture result;
    const std::string url = base(stop);
    if (url.empty()) {
        result.error = "the device service did not start";
        return result;
    }
    const bool fresh = inputSinceFrame_.exchange(false);
    const http::HttpResponse response = http::httpGetWithHeaders(
        url + (fresh ? "/request_image?immediately=1" : "/request_image"), {});
    if (!response.error.empty()) {
        result.error = response.error;
        return result;
    }
    const ServiceFrameInfo info = parseFrameHeaders(response.headerLines);
    if (info.state == 1) {
        remember(info);
    }
    DecodedFrame decoded = decodeServiceFrame(info, response.body);
    result.frame = std::move(decoded.frame);
    result.error = std::move(decoded.error);
    return result;
}

void ServiceRoute::remember(const ServiceFrameInfo& info) {
    const std::lock_guard lock(infoMutex_);
    const auto same = [&](const ServiceFrameInfo& last) {
        return last.pixelStride == info.pixelStride && last.rowPadding == info.rowPadding &&
               last.width == info.width && last.height == info.height &&
               last.density == info.density;
    };
    if (!lastFrameInfo_ || !same(*lastFrameInfo_)) {
        log_("device " + serial_ + " frames " + number(info.width) + "x" + number(info.height) +
             " stride " + number(info.pixelStride) + " row padding " + number(info.rowPadding) +
             " density " + number(info.density));
    }
    lastFrameInfo_ = info;
}

std::optional<ServiceFrameInfo> ServiceRoute::lastFrameInfo() const {
    const std::lock_guard lock(infoMutex_);
    return lastFrameInfo_;
}

AdbError ServiceRoute::get(const std::string& pathAndQuery, const char* logPrefix,
                           const std::stop_token& stop) {
    inputSinceFrame_ = true;
    const std::string url = base(stop);
    if (url.empty()) {
        return "the device service did not start";
    }
    const http::HttpResponse response = http::httpGetWithHeaders(url + pathAndQuery, {});
    log_(logPrefix + response.body);
    if (!response.error.empty()) {
        return response.error;
    }
    return response.status == 200 ? AdbError() : "HTTP " + number(int(response.status));
}

AdbError ServiceRoute::tap(Point point, int pressMs, std::stop_token stop) {
    return get("/touch?id=0&x=" + number(point.x) + "&y=" + number(point.y) +
                   "&duration=" + number(pressMs) + "&action=" + number(kTouchTap),
               "mouseEvent reslt:", stop);
}

AdbError ServiceRoute::key(int androidKeyCode, KeyOp op, std::stop_token stop) {
    return get("/key?key=" + number(androidKeyCode) +
                   "&downTime=0&pressTime=0&action=" + number(keyActionOf(op)),
               "keyEvent reslt:", stop);
}

AdbError ServiceRoute::text(const std::string& utf8, std::stop_token stop) {
    return get("/input?text=" + percentEncode(utf8), "input reslt:", stop);
}

AdbError ServiceRoute::swipe(const std::vector<Point>& path, int durationMs, std::stop_token stop) {
    const std::string url = base(stop);
    if (url.empty()) {
        return "the device service did not start";
    }
    std::string json = R"({"points":[)";
    for (size_t i = 0; i < path.size(); ++i) {
        json += (i > 0 ? "," : "") + std::string(R"({"x":)") + number(path[i].x) + R"(,"y":)" +
                number(path[i].y) + "}";
    }
    json += R"(],"slideTime":)" + number(durationMs) + R"(,"times":1,"pressTime":0})";
    inputSinceFrame_ = true;
    const std::string response = http::httpPostJson(url + "/slide", {}, json);
    log_("slide json:" + json + " result:" + response);
    return response.empty() ? "no answer to /slide" : AdbError();
}

AdbError ServiceRoute::startApp(const std::string& package, const std::string& activity,
                                std::stop_token stop) {
    std::string query = "/app?package_name=" + percentEncode(package);
    if (!activity.empty()) {
        query += "&activity=" + percentEncode(activity);
    }
    const std::string url = base(stop);
    if (url.empty()) {
        return "the device service did not start";
    }
    inputSinceFrame_ = true;
    const http::HttpResponse response = http::httpGetWithHeaders(url + query, {});
    log_("startApp reslt:" + response.body);
    if (!response.error.empty()) {
        return response.error;
    }
    return response.body == "ok" ? AdbError() : response.body;
}

}  // namespace autoscene::platform::android
