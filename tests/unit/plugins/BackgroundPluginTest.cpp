// The background plug-in against the probe library: what its capture reports is checked
// before a buffer is made, pixels arrive as BGRA, and each service is used only when ticked.

#include <gtest/gtest.h>

#include <QLibrary>
#include <opencv2/core.hpp>

#include "plugins/BackgroundPlugin.h"

using namespace autoscene;
using autoscene::plugins::BackgroundPlugin;
using autoscene::plugins::BackgroundServices;

namespace {

constexpr platform::WindowHandle kWindow = 7;

class BackgroundProbe : public ::testing::Test {
protected:
    void SetUp() override {
        // The same loaded library as the plug-in's: its state is shared.
        ASSERT_TRUE(probe.load()) << probe.errorString().toStdString();
        setCapture = reinterpret_cast<SetCapture>(probe.resolve("probe_set_capture"));
        events = reinterpret_cast<const char* (*)()>(probe.resolve("probe_events"));
        ASSERT_TRUE(setCapture && events);
    }

    std::unique_ptr<BackgroundPlugin> load(BackgroundServices services = {}) {
        QString error;
        auto plugin = BackgroundPlugin::load(PROBE_PLUGIN, services, &error);
        EXPECT_TRUE(plugin) << error.toStdString();
        setCapture(1, 4, 3, 3);
        return plugin;
    }

    // The captured frame, or an empty matrix.
    cv::Mat capture(BackgroundPlugin& plugin) {
        cv::Mat frame;
        plugin.capture(kWindow, [&](const platform::BgraView& view) {
            frame = cv::Mat(view.height, view.width, CV_8UC4, const_cast<uint8_t*>(view.pixels),
                            size_t(view.stride))
                        .clone();
        });
        return frame;
    }

    using SetCapture = void (*)(int, int, int, int);
    QLibrary probe{PROBE_PLUGIN};
    SetCapture setCapture = nullptr;
    const char* (*events)() = nullptr;
};

TEST_F(BackgroundProbe, CaptureInfoIsCheckedBeforeAnyBufferIsFilled) {
    // {result, width, height, channels, whether a frame comes}
    const std::tuple<int, int, int, int, bool> cases[] = {
        {1, 4, 3, 3, true},      {1, 4, 3, 4, true},
        {0, 4, 3, 3, false},     {0x100, 4, 3, 3, false} /* only the low byte counts */,
        {1, 0, 3, 3, false},     {1, 4, 0, 3, false},
        {1, -4, 3, 3, false},    {1, 4, -3, 3, false},
        {1, 4, 3, 2, false},     {1, 4, 3, 0, false},
        {1, 4, 3, 255, false},   {1, 100000, 3, 3, false},
        {1, 3, 100000, 4, false}};
    auto plugin = load();
    for (const auto& [result, width, height, channels, framed] : cases) {
        setCapture(result, width, height, channels);
        const cv::Mat frame = capture(*plugin);
        const std::string name =
            ::testing::PrintToString(std::vector<int>{result, width, height, channels});
        EXPECT_EQ(!frame.empty(), framed) << name;
        EXPECT_STREQ(events(), framed ? "capture 7\n" : "") << name;
        if (framed) {
            EXPECT_EQ(frame.size(), cv::Size(width, height));
            // Pixel (2, 1): R 12, G 112, B 212, and A 312 mod 256 when the plug-in has one.
            const cv::Vec4b pixel = frame.at<cv::Vec4b>(1, 2);
            EXPECT_EQ(pixel, cv::Vec4b(212, 112, 12, channels == 4 ? 56 : 255)) << name;
        }
    }
}

TEST_F(BackgroundProbe, TickedServicesReachThePlugin) {
    auto plugin = load();
    plugin->mouse(kWindow, {5, 6}, platform::MouseOp::LeftClick, 1);
    plugin->mouse(kWindow, {8, 9}, platform::MouseOp::RightDown, 0);
    plugin->mouse(kWindow, {8, 9}, platform::MouseOp::Move, 0);
    plugin->mouse(kWindow, {8, 9}, platform::MouseOp::RightUp, 0);
    plugin->key(kWindow, 65, platform::KeyOp::Click);
    plugin->key(kWindow, 16, platform::KeyOp::Down);
    plugin->key(kWindow, 16, platform::KeyOp::Up);
    plugin->wheel(kWindow, -2, {3, 4});
    plugin->inputText(kWindow, QString::fromUtf8("é😀"));
    EXPECT_STREQ(events(),
                 "move 7 5 6\ndown 7 1 5 6\nup 7 1\n"
                 "move 7 8 9\ndown 7 2 8 9\nmove 7 8 9\nmove 7 8 9\nup 7 2\n"
                 "key_down 7 65\nkey_up 7 65\nkey_down 7 16\nkey_up 7 16\n"
                 "wheel 7 -240 3 4\ntext 7 3 units, first 233\n");
}

TEST_F(BackgroundProbe, EachServiceIsUsedOnlyWhenTicked) {
    const QStringList names{"capture", "mouse", "key", "wheel", "input"};
    for (const QString& ticked : names) {
        auto plugin = load(plugins::servicesFromJson(
            QStringLiteral(R"(["%1", "bogus", 3])").arg(ticked).toStdString()));
        const std::vector<bool> offered{plugin->capturesWindows(), plugin->handlesMouse(),
                                        plugin->handlesKeys(), plugin->handlesWheel(),
                                        plugin->handlesText()};
        for (int i = 0; i < names.size(); ++i) {
            EXPECT_EQ(offered[size_t(i)], names[i] == ticked) << ticked.toStdString() << " ticked";
        }
    }

    auto plugin = load(plugins::servicesFromJson("[]"));
    EXPECT_TRUE(capture(*plugin).empty());
    plugin->mouse(kWindow, {1, 1}, platform::MouseOp::LeftClick, 0);
    plugin->key(kWindow, 65, platform::KeyOp::Click);
    plugin->wheel(kWindow, 1, {1, 1});
    plugin->inputText(kWindow, "x");
    EXPECT_STREQ(events(), "") << "not even a capture";
}

// The lifecycle calls' order is checked in a whole run (tests/integration/plugins).
TEST_F(BackgroundProbe, MissingExportsDoNothingAndBadLibrariesAreErrors) {
    // A library without the mv_ exports loads and serves nothing.
    auto bare = BackgroundPlugin::load(EXAMPLE_PLUGINS "/colour-probe.so", {});
    ASSERT_TRUE(bare);
    EXPECT_FALSE(bare->capturesWindows() || bare->handlesMouse() || bare->handlesKeys() ||
                 bare->handlesWheel() || bare->handlesText());
    bare->targetStarted(kWindow);
    bare->mouse(kWindow, {1, 1}, platform::MouseOp::LeftClick, 0);
    bare->targetEnded(kWindow);

    QString error;
    EXPECT_FALSE(BackgroundPlugin::load(__FILE__, {}, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_FALSE(BackgroundPlugin::load(PROBE_PLUGIN ".absent", {}, &error));
}

}  // namespace
