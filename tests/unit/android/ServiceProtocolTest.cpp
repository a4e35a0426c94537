// The device service's side of the wire: frame headers and bodies, the forward list and
// query values.

#include <gtest/gtest.h>

#include "android/AdbOutput.h"
#include "android/ServiceFrame.h"
#include "android/ServiceRoute.h"

using namespace autoscene::platform::android;

namespace {

ServiceFrameInfo info(int state, int stride, int padding, int width, int height) {
    return {state, stride, padding, width, height, 320};
}

TEST(ServiceProtocol, FrameHeadersReadFromTwoCharactersAfterTheColon) {
    const ServiceFrameInfo parsed = parseFrameHeaders(
        {"HTTP/1.1 200 OK", "state: 1", "pixelStride: 4", "rowPadding: 16", "image-width: 720",
         "image-height: 1280", "density: 320", "Content-Length: 3686400", "image-width-extra: 5"});
    EXPECT_EQ(std::tuple(parsed.state, parsed.pixelStride, parsed.rowPadding, parsed.width,
                         parsed.height, parsed.density),
              std::tuple(1, 4, 16, 720, 1280, 320));
    // Plain decimal conversion: non-numbers and a value right after the colon read as 0.
    EXPECT_EQ(parseFrameHeaders({"state: x", "density:7"}).state, 0);
    EXPECT_EQ(parseFrameHeaders({"density:7"}).density, 0);
}

TEST(ServiceProtocol, FrameBodiesOfBothStrides) {
    // Stride 4 is RGBA; the padding is recorded but the rows are read unpadded.
    const std::string rgba("\x01\x02\x03\x04\x05\x06\x07\x08", 8);
    EXPECT_EQ(decodeServiceFrame(info(1, 4, 8, 2, 1), rgba).frame.pixels,
              (std::vector<std::uint8_t>{3, 2, 1, 4, 7, 6, 5, 8}));
    // Any other stride is BGR, widened to opaque BGRA.
    EXPECT_EQ(decodeServiceFrame(info(1, 3, 0, 1, 2), std::string("\x01\x02\x03\x04\x05\x06", 6))
                  .frame.pixels,
              (std::vector<std::uint8_t>{1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(ServiceProtocol, ImpossibleFramesYieldNoFrame) {
    const std::string body(64, '\0');
    const std::pair<const char*, ServiceFrameInfo> cases[] = {
        {"no frame", info(0, 4, 0, 2, 2)},       {"state 2", info(2, 4, 0, 2, 2)},
        {"zero width", info(1, 4, 0, 0, 2)},     {"negative height", info(1, 4, 0, 2, -2)},
        {"huge", info(1, 4, 0, 100000, 100000)}, {"stride 0", info(1, 0, 0, 2, 2)},
        {"stride 8", info(1, 8, 0, 2, 2)},       {"body short", info(1, 4, 0, 5, 4)},
    };
    for (const auto& [name, frameInfo] : cases) {
        const DecodedFrame decoded = decodeServiceFrame(frameInfo, body);
        EXPECT_TRUE(decoded.frame.empty() && !decoded.error.empty()) << name;
    }
}

TEST(ServiceProtocol, ForwardListGivesTheDevicesLocalPort) {
    const char* list =
        "emulator-5554 tcp:7000 tcp:10240\n"
        "127.0.0.1:5555 tcp:7001 tcp:8080\n"
        "127.0.0.1:5555 tcp:7002 tcp:10240\r\n";
    EXPECT_EQ(forwardedLocalPort(list, "127.0.0.1:5555", 10240), 7002);
    EXPECT_EQ(forwardedLocalPort(list, "emulator-5554", 10240), 7000);
    EXPECT_EQ(forwardedLocalPort(list, "emulator-5554", 8080), std::nullopt);
    EXPECT_EQ(forwardedLocalPort(list, "127.0.0.1", 10240), std::nullopt);
    EXPECT_EQ(forwardedLocalPort("x localabstract:foo tcp:10240\n", "x", 10240), std::nullopt);
}

TEST(ServiceProtocol, QueryValuesArePercentEncoded) {
    EXPECT_EQ(percentEncode("a b&c=d/é"), "a%20b%26c%3Dd%2F%C3%A9");
    EXPECT_EQ(percentEncode("Az09-_.~"), "Az09-_.~");
}

}  // namespace
