// The device target through the real adb against the test device, on the adb route and on
// the device-service route.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <functional>
#include <utility>
#include <vector>

#include "AppLayout.h"
#include "TestDevice.h"
#include "TestFiles.h"
#include "engine/TaskInfo.h"
#include "targets/DeviceTarget.h"

using namespace autoscene::engine;
using namespace autoscene::platform;
using android::AdbClient;
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

// Raw frames of both header sizes are decoded as ScreencapFrameTest checks; a format it
// does not know falls back to PNG.
TEST_F(DeviceTargetTest, AFrameOfAnUnknownRawFormatIsTakenAsPngAndShowsTheApp) {
    open({"--raw-format", "9"});
    const cv::Point button = (layout::kTapButton.tl() + layout::kTapButton.br()) / 2;
    Pixel pixel = capturePixel(target, task, button);
    EXPECT_EQ(std::pair(pixel.width, pixel.height), std::pair(720, 1280));
    EXPECT_EQ(pixel.bgr, bgrOf(layout::kHomeBackground));

    EXPECT_EQ(target.startApp(task, "com.autoscene.testapp", {}), QString());
    EXPECT_EQ(capturePixel(target, task, button).bgr, bgrOf(layout::kButtonColour));
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

class DeviceServiceTest : public DeviceTargetTest {
protected:
    void SetUp() override {
        autoscene::test::writeFile(folder.filePath("localservice.jar"), "service code");
    }

    std::unique_ptr<DeviceTarget> makeTarget(DeviceTarget::Route route,
                                             android::IServiceKeyProvider* keys = nullptr) {
        return std::make_unique<DeviceTarget>(
            AdbClient("adb"),
            DeviceTarget::Options{route, folder.filePath("localservice.jar").toStdString(), keys,
                                  std::chrono::milliseconds(3000)});
    }

    int captureWidth(DeviceTarget& target) { return capturePixel(target, task, {0, 0}).width; }

    QStringList serviceForwards() {
        return adb.adb({"forward", "--list"})
            .split('\n')
            .filter(QRegularExpression(QStringLiteral("^%1 .* tcp:10240$")
                                           .arg(QRegularExpression::escape(device->serial()))));
    }

    QTemporaryDir folder;
};

// A new key for every start, as the service asks.
class CountingKeys : public android::IServiceKeyProvider {
public:
    std::string serviceKey() override { return "key-" + std::to_string(++issued); }
    int issued = 0;
};

// The first capture pushes and starts the service through the forward that was there; a
// killed service is started again, with a new key, by the next request.
TEST_F(DeviceServiceTest, FirstCaptureStartsTheServiceWhichIsStartedAgainOnceKilled) {
    open();
    const QString reused = adb.adb({"-s", device->serial(), "forward", "tcp:0", "tcp:10240"});
    const int port = reused.trimmed().toInt();
    ASSERT_GT(port, 0) << reused.toStdString();
    CountingKeys keys;
    auto target = makeTarget(DeviceTarget::Route::Service, &keys);
    ASSERT_EQ(captureWidth(*target), 720);
    EXPECT_EQ(device->log().mid(0, 3), QStringList({"push /data/local/tmp/localservice.jar 12",
                                                    "service key key-1", "service started"}));
    EXPECT_EQ(serviceForwards(),
              QStringList{QStringLiteral("%1 tcp:%2 tcp:10240").arg(device->serial()).arg(port)});

    adb.adb({"-s", device->serial(), "shell", "pkill app_process"});
    ASSERT_TRUE(device->waitForLine("service ended"));
    int width = 0;
    for (int attempt = 0; attempt < 20 && width == 0; ++attempt) {
        width = captureWidth(*target);
    }
    EXPECT_EQ(width, 720);
    EXPECT_EQ(device->log().filter("service key "),
              QStringList({"service key key-1", "service key key-2"}));
    EXPECT_EQ(serviceForwards().size(), 1);
}

TEST_F(DeviceServiceTest, InputGoesThroughTheServiceAndTheInputMethodIsSwitchedForTheRun) {
    open();
    auto target = makeTarget(DeviceTarget::Route::Service);
    ASSERT_EQ(target->startApp(task, "com.autoscene.testapp", {}), QString());
    target->mouse(task, {10, 20}, MouseOp::LeftDown, 0);
    target->mouse(task, {100, 20}, MouseOp::Move, 0);
    target->mouse(task, {400, 30}, MouseOp::LeftUp, 0);
    target->mouse(task, {300, 600}, MouseOp::RightClick, 0);
    target->key(task, 27, KeyOp::Down);
    target->key(task, 27, KeyOp::Up);
    EXPECT_EQ(target->untypableText(task, "Zoë 你好"), QString());
    target->inputText(task, "Zoë 你好");
    target->mouse(task, {300, 600}, MouseOp::LeftClick, 40);
    EXPECT_FALSE(target->startApp(task, "com.example.missing", {}).isEmpty());

    QStringList log = device->log();
    log.erase(log.begin(), log.begin() + log.indexOf("service started") + 1);
    ASSERT_GE(log.size(), 7);
    EXPECT_EQ(log.mid(0, 2), QStringList({"start com.autoscene.testapp", "screen START"}));
    EXPECT_TRUE(log[2].startsWith("swipe 10 20 400 30 ")) << log[2].toStdString();
    EXPECT_EQ(log.mid(3, 4), QStringList({"key 4", "screen HOME", "text Zoë 你好", "tap 300 600"}));

    // The first frame after input is asked for fresh, the next one not; the device keeps
    // the last frame's geometry.
    ASSERT_EQ(captureWidth(*target), 720);
    ASSERT_EQ(captureWidth(*target), 720);
    EXPECT_EQ(device->log().count("fresh frame"), 1);
    const auto info = target->frameInfo(task.serial);
    ASSERT_TRUE(info);
    EXPECT_EQ(std::vector({info->pixelStride, info->rowPadding, info->width, info->height}),
              std::vector({4, 0, 720, 1280}));
    EXPECT_GT(info->density, 0);

    // The input method is switched for a run and restored after it, even when it was none.
    const qsizetype mark = device->log().size();
    target->targetStarted(task);
    target->targetEnded(task);
    adb.adb({"-s", device->serial(), "shell", "settings put secure default_input_method null"});
    target->targetStarted(task);
    target->targetEnded(task);
    EXPECT_EQ(device->log().mid(mark).filter(QRegularExpression("^ime ")),
              QStringList({"ime cn.morvane.remoteinput/.EditorIME",
                           "ime com.android.inputmethod.latin/.LatinIME", "ime null",
                           "ime cn.morvane.remoteinput/.EditorIME", "ime reset"}));
}

// Without a service file Auto goes to adb at once: DeviceRun.TheDemoTaskPlaysOnEveryDevice...
TEST_F(DeviceServiceTest, AutoFallsBackToAdbWhenTheServiceIsSilent) {
    open({"--service-broken"});
    auto target = makeTarget(DeviceTarget::Route::Auto);
    EXPECT_EQ(target->routeOf(task.serial), "adb");
    EXPECT_EQ(captureWidth(*target), 720);
    EXPECT_TRUE(device->log().contains("service key "));  // no key provider: an empty key
}

}  // namespace
