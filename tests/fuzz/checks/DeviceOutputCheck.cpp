#include "Checks.h"

#include <QList>
#include <string>
#include <vector>

#include "android/AdbOutput.h"
#include "android/ScreencapFrame.h"
#include "android/ServiceFrame.h"

namespace autoscene::fuzz {

using namespace autoscene::platform::android;

namespace {

// A decoded frame is whole and says nothing went wrong; no frame comes with a reason.
QString frameFailure(const char* what, const DecodedFrame& decoded) {
    const auto& frame = decoded.frame;
    if (frame.empty()) {
        return decoded.error.empty() ? QStringLiteral("%1: no frame and no reason").arg(what)
                                     : QString();
    }
    const bool whole = frame.stride == frame.width * 4 &&
                       frame.pixels.size() == std::size_t(frame.stride) * std::size_t(frame.height);
    if (!whole || !decoded.error.empty()) {
        return QString::asprintf("%s: a %dx%d frame of stride %d with %zu bytes, error \"%s\"",
                                 what, frame.width, frame.height, frame.stride, frame.pixels.size(),
                                 decoded.error.c_str());
    }
    return {};
}

}  // namespace

QString checkDeviceOutput(const QByteArray& input) {
    const std::string_view bytes(input.constData(), std::size_t(input.size()));
    if (QString failure = frameFailure("screencap", decodeScreencap(bytes)); !failure.isEmpty()) {
        return failure;
    }
    // As a device service's answer: header lines, a blank line, the body.
    const qsizetype blank = input.indexOf("\n\n");
    std::vector<std::string> headerLines;
    for (const QByteArray& line : input.mid(0, blank).split('\n')) {
        headerLines.push_back(line.toStdString());
    }
    const std::string_view body = blank < 0 ? std::string_view() : bytes.substr(size_t(blank) + 2);
    if (QString failure =
            frameFailure("request_image", decodeServiceFrame(parseFrameHeaders(headerLines), body));
        !failure.isEmpty()) {
        return failure;
    }
    // And as text from adb: only that reading it is safe.
    std::string error;
    parseDeviceList(bytes);
    parseWmSize(bytes, error);
    parseWmDensity(bytes, error);
    forwardedLocalPort(bytes, "emulator-5554", 10240);
    return {};
}

}  // namespace autoscene::fuzz
