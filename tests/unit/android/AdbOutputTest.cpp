// What adb and the device's shell print, read into serials, sizes and densities.

#include <gtest/gtest.h>

#include "android/AdbOutput.h"

using namespace autoscene::platform::android;

namespace {

TEST(AdbOutput, DeviceListKeepsEveryStateAndSkipsDaemonChatter) {
    const auto devices = parseDeviceList(
        "* daemon not running; starting now at tcp:5037\n"
        "* daemon started successfully\n"
        "List of devices attached\n"
        "emulator-5554\tdevice\n"
        "127.0.0.1:4000\toffline\r\n"
        "R58M12345\tunauthorized usb:1-1 transport_id:3\n"
        "\n");
    std::string listed;
    for (const auto& device : devices) {
        listed += device.serial + ' ' + device.state + ';';
    }
    EXPECT_EQ(listed, "emulator-5554 device;127.0.0.1:4000 offline;R58M12345 unauthorized;");
    EXPECT_EQ(readySerials(devices), std::vector<std::string>{"emulator-5554"});
    EXPECT_TRUE(parseDeviceList("List of devices attached\n\n").empty());
}

TEST(AdbOutput, CheckedIntegersNameTheirFailure) {
    // {text, value, error}
    const std::tuple<const char*, std::optional<int>, const char*> cases[] = {
        {"1080", 1080, ""},
        {" 42 ", 42, ""},
        {"-7", -7, ""},
        {"", std::nullopt, kNotANumber},
        {"12a", std::nullopt, kNotANumber},
        {"abc", std::nullopt, kNotANumber},
        {"2147483648", std::nullopt, kOutOfIntRange},
        {"99999999999999999999999", std::nullopt, kOutOfIntRange}};
    for (const auto& [text, value, expectedError] : cases) {
        std::string error;
        EXPECT_EQ(toCheckedInt(text, error), value) << text;
        EXPECT_EQ(error, expectedError) << text;
    }
}

TEST(AdbOutput, WmSizeTakesTheOverrideWhenThereIsOne) {
    std::string error;
    const auto text = [&](const char* output) {
        const auto size = parseWmSize(output, error);
        return size ? std::to_string(size->width) + 'x' + std::to_string(size->height) : "none";
    };
    EXPECT_EQ(text("Physical size: 1080x2400\n"), "1080x2400");
    EXPECT_EQ(text("Physical size: 1080x2400\nOverride size: 720x1600\n"), "720x1600");

    EXPECT_FALSE(parseWmSize("error: device offline\n", error));
    EXPECT_EQ(error, kNotANumber);
    EXPECT_FALSE(parseWmSize("Physical size: 99999999999x10\n", error));
    EXPECT_EQ(error, kOutOfIntRange);
}

TEST(AdbOutput, WmDensityLooksForTheOverrideUnderTheSizeName) {
    std::string error;
    EXPECT_EQ(parseWmDensity("Physical density: 420\nOverride density: 320\n", error), 420);
    // The override is looked for as "Override size", so this one is read, and fails.
    EXPECT_FALSE(parseWmDensity("Physical density: 420\nOverride size: 720x1600\n", error));
    EXPECT_EQ(error, kNotANumber);
    EXPECT_FALSE(parseWmDensity("", error));
}

}  // namespace
