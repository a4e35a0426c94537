// The device target through the real adb against the test device: frames of both header
// sizes and the PNG fallback, every input kind as the app received it, apps, a missing
// adb, and a device that goes away and comes back.

#include <gtest/gtest.h>

#include <QThread>
#include <functional>
#include <utility>
#include <vector>

#include "AppLayout.h"
#include "TestDevice.h"
#include "engine/TaskInfo.h"
#include "targets/DeviceTarget.h"

using autoscene::engine::TargetKind;
using autoscene::engine::TaskInfo;
using autoscene::platform::BgraView;
using autoscene::platform::KeyOp;
using autoscene::platform::MouseOp;
using autoscene::platform::android::AdbClient;
using autoscene::targets::DeviceTarget;
using autoscene::testing::PrivateAdb;
using autoscene::testing::TestDevice;
namespace layout = autoscene::testdevice::layout;

namespace {

struct Pixel {
    int width = 0;
    int height = 0;
    std::array<int, 3> bgr{};
};

// The frame's size and its colour at `at`; all zero when nothing was captured.
Pixel capturePixel(DeviceTarget& target, const TaskInfo& task, cv::Point at) {
    Pixel pixel;
    target.capture(task, [&](const BgraView& view) {
        const std::uint8_t* p =
            view.pixels + std::ptrdiff_t(at.y) * view.stride + std::ptrdiff_t(at.x) * 4;
        pixel = {view.width, view.height, {p[0], p[1], p[2]}};
    });
    return pixel;
}

std::array<int, 3> bgrOf(const cv::Scalar& rgba) {
    return {int(rgba[2]), int(rgba[1]), int(rgba[0])};
}

class DeviceTargetTest : public ::testing::Test {
protected:
    void open(const QStringList& options = {}) {
        device = std::make_unique<TestDevice>(options);
        ASSERT_TRUE(adb.connect(*device));
        task.kind = TargetKind::AndroidDevice;
        task.serial = device->serial();
    }

    PrivateAdb adb;
    std::unique_ptr<TestDevice> device;
    DeviceTarget target{AdbClient("adb"), {DeviceTarget::Route::Adb}};
    TaskInfo task;
};

TEST_F(DeviceTargetTest, FramesOfEveryHeaderSizeAndThePngFallbackShowTheApp) {
    for (const QStringList& options :
         {QStringList{"--screencap-header", "12"}, QStringList{"--screencap-header", "16"},
          QStringList{"--raw-format", "9"}}) {
        open(options);
        const cv::Point button = (layout::kTapButton.tl() + layout::kTapButton.br()) / 2;
        Pixel pixel = capturePixel(target, task, button);
        EXPECT_EQ(pixel.width, 720) << options.join(' ').toStdString();
        EXPECT_EQ(pixel.height, 1280);
        EXPECT_EQ(pixel.bgr, bgrOf(layout::kHomeBackground));

        EXPECT_EQ(target.startApp(task, "com.autoscene.testapp", {}), QString());
        pixel = capturePixel(target, task, button);
        EXPECT_EQ(pixel.bgr, bgrOf(layout::kButtonColour)) << options.join(' ').toStdString();
    }
}

TEST_F(DeviceTargetTest, InputArrivesAsTheAppReceivesItAndMissingAppsOrAdbAreReported) {
    open();
    EXPECT_FALSE(target.startApp(task, "com.example.missing", {}).isEmpty());
    EXPECT_FALSE(target.startApp(task, "com.example.missing", ".Main").isEmpty());
    EXPECT_FALSE(target.startApp(task, "x;reboot", {}).isEmpty());
    EXPECT_FALSE(device->log().contains("screen START"));
    DeviceTarget noAdb{AdbClient("/nonexistent/adb"), {DeviceTarget::Route::Adb}};
    EXPECT_EQ(capturePixel(noAdb, task, {0, 0}).width, 0);
    EXPECT_FALSE(noAdb.startApp(task, "com.autoscene.testapp", {}).isEmpty());

    ASSERT_EQ(target.startApp(task, "com.autoscene.testapp", ".MainActivity"), QString());
    ASSERT_TRUE(device->waitForLine("screen START"));

    target.mouse(task, {300, 600}, MouseOp::RightClick, 0);  // nothing on a device
    target.mouse(task, {10, 20}, MouseOp::LeftDown, 0);
    target.mouse(task, {200, 20}, MouseOp::Move, 0);
    QThread::msleep(120);
    target.mouse(task, {400, 30}, MouseOp::LeftUp, 0);
    target.key(task, 'A', KeyOp::Click);
    target.key(task, 27, KeyOp::Up);  // no up without a down on a device
    target.keyGroup(task, {0x35, 91});
    target.inputText(task, "a b'c");
    target.mouse(task, {300, 600}, MouseOp::LeftClick, 40);

    const QStringList log = device->log();
    const qsizetype first = log.indexOf("screen START") + 1;
    ASSERT_GE(log.size(), first + 7);
    EXPECT_TRUE(log[first].startsWith("swipe 10 20 400 30 ")) << log[first].toStdString();
    EXPECT_GE(log[first].section(' ', -1).toInt(), 120);
    EXPECT_EQ(log.mid(first + 1, 6), QStringList({"key 29", "key 12", "key 187", "text a b'c",
                                                  "tap 300 600", "screen DONE"}));
    EXPECT_EQ(target.untypableText(task, "Zoë 好"), "ë好");
}

// Input a device that went away did not take is reported once for each kind; the device
// is picked up again when it comes back.
TEST_F(DeviceTargetTest, InputOfAGoneDeviceIsReportedAndTheDeviceIsPickedUpAgain) {
    open();
    const int port = device->port();
    const std::vector<std::pair<const char*, std::function<void()>>> inputs = {
        {"touch",
         [&] {
             target.mouse(task, {300, 600}, MouseOp::LeftClick, 0);
         }},
        {"touch",
         [&] {
             target.mouse(task, {10, 20}, MouseOp::LeftDown, 0);
             target.mouse(task, {400, 30}, MouseOp::LeftUp, 0);
         }},
        {"key", [&] { target.key(task, 'A', KeyOp::Click); }},
        {"text", [&] { target.inputText(task, "abc"); }},
    };
    for (const auto& [kind, send] : inputs) {
        send();
        EXPECT_EQ(target.takeInputError(task), QString()) << kind;
    }
    device->kill();
    for (const auto& [kind, send] : inputs) {
        send();
        const QString error = target.takeInputError(task);
        EXPECT_TRUE(error.startsWith(QString(kind) + ": ")) << kind << ": " << error.toStdString();
        EXPECT_EQ(target.takeInputError(task), QString()) << kind;
    }
    EXPECT_EQ(capturePixel(target, task, {0, 0}).width, 0);

    device = std::make_unique<TestDevice>(QStringList{}, port);
    ASSERT_TRUE(device->running());
    int width = 0;
    for (int attempt = 0; attempt < 40 && width == 0; ++attempt) {
        QThread::msleep(100);
        width = capturePixel(target, task, {0, 0}).width;
    }
    EXPECT_EQ(width, 720);
}

}  // namespace
