// Capture in both modes on a real Xvfb, checked pixel by pixel against the server's own
// XGetImage and against the demo target's known layout.

#include <cstdlib>
#include <thread>

#include "DemoLayout.h"
#include "X11TestFixture.h"

namespace autoscene::testing {
namespace {

using platform::BgraFrame;
using platform::Rect;
namespace demo = autoscene::demo;

using CaptureTest = X11TestFixture;

// That each demo screen draws the same pixels every run, as its README promises, is the
// demo task's to show: its templates and colours, cut from one run, find every screen of
// the next (tests/integration/runner). So is the capture of a covered window in both modes:
// the demo task plays its target under a cover.

TEST_F(CaptureTest, BothModesLeaveOutTheBorderClampToTheScreenAndGiveNothingForGoneWindows) {
    // Blue inside, a red border seven pixels wide.
    Display* display = reference_->display();
    const Window bordered = XCreateSimpleWindow(display, DefaultRootWindow(display), 40, 30, 120,
                                                90, 7, 0xff0000, 0x0000ff);
    XMapRaised(display, bordered);
    XSync(display, False);
    const BgraFrame foreground = backend_->capture(bordered, false);
    ASSERT_EQ(foreground.width, 120);
    EXPECT_EQ(pixelAt(foreground, 0, 0), 0x0000ffu);
    BgraFrame background;
    EXPECT_TRUE(eventually([&] {  // the window may first have to paint its new off-screen copy
        background = backend_->capture(bordered, true);
        return firstDifference(background, foreground).empty();
    })) << firstDifference(background, foreground);
    XDestroyWindow(display, bordered);
    XSync(display, False);

    // Past the right and bottom edges: shortened. Where the crop starts for windows left of
    // or above the screen is CropToScreen's.
    const auto target = startDemo({"--geometry", "300x200+1100+600", "--title", "Edge"});
    const platform::WindowHandle window = target->window();
    const BgraFrame frame = backend_->capture(window, false);
    EXPECT_EQ(firstDifference(frame, reference_->read(Rect{1100, 600, 180, 120})), "");
    EXPECT_EQ(pixelAt(frame, 10, 100), demo::kStartBackground);

    XUnmapWindow(reference_->display(), window);
    XSync(reference_->display(), False);
    EXPECT_TRUE(backend_->capture(window, false).empty() &&
                backend_->capture(window, true).empty());

    target->stop();
    for (const bool background : {false, true}) {
        EXPECT_TRUE(backend_->capture(window, background).empty());
        EXPECT_FALSE(backend_->captureView(window, background, [](const auto&) {
            ADD_FAILURE() << "no view of a window that is gone";
        }));
    }
    EXPECT_TRUE(backend_->capture(0x1FFFFFFF, true).empty());
    EXPECT_TRUE(backend_->capture(~0ULL, false).empty()) << "not an X window id";
    EXPECT_FALSE(backend_->capture(0, false).empty()) << "the back end still works";
}

TEST_F(CaptureTest, ForegroundWindowCaptureIsTheClientAreaOfTheScreen) {
    const auto target = startDemo({"--geometry", "640x480+100+50"});
    const platform::WindowHandle window = target->window();
    const BgraFrame expected = reference_->read(Rect{100, 50, 640, 480});
    const BgraFrame frame = backend_->capture(window, false);
    ASSERT_EQ(firstDifference(frame, expected), "");
    EXPECT_EQ(frame.stride, 640 * 4);
    // The demo's start screen, not a blank one that any area would match.
    EXPECT_EQ(pixelAt(frame, demo::kStartButton.x, demo::kStartButton.y), demo::kStartButtonColor);
    EXPECT_EQ(loggedLines(), std::vector<std::string>{"lpRect:640x480 toScreen:100x50"});

    // Whether a view's buffer is reused cannot be seen from here: a new segment of the same
    // size is usually attached at the same address.
    SCOPED_TRACE("views follow size changes");
    for (int round = 0; round < 2; ++round) {
        BgraFrame got;
        BgraFrame screen;
        ASSERT_TRUE(backend_->captureView(window, false,
                                          [&](const auto& view) { got = opaqueCopy(view); }));
        EXPECT_EQ(firstDifference(got, expected), "");
        // A different size in between must not leave the next read with the old geometry.
        ASSERT_TRUE(
            backend_->captureView(0, false, [&](const auto& view) { screen = opaqueCopy(view); }));
        EXPECT_EQ(
            firstDifference(screen, reference_->read(Rect{0, 0, kScreenWidth, kScreenHeight})), "");
    }

    SCOPED_TRACE("threads capture at the same time in both modes");
    std::string differences[2];
    const auto captures = [&](bool background) {
        for (int i = 0; i < 20 && differences[background].empty(); ++i) {
            BgraFrame captured;
            backend_->captureView(window, background,
                                  [&](const auto& view) { captured = opaqueCopy(view); });
            differences[background] = firstDifference(captured, expected);
        }
    };
    std::thread background(captures, true);
    captures(false);
    background.join();
    EXPECT_EQ(differences[0] + differences[1], "");
}

// Within the rounding of a 5- or 6-bit channel.
bool nearColour(std::uint32_t got, std::uint32_t want) {
    for (const int shift : {0, 8, 16}) {
        if (std::abs(int((got >> shift) & 0xFF) - int((want >> shift) & 0xFF)) > 8) {
            return false;
        }
    }
    return true;
}

// Servers that take the other transfer paths, by depth: a 24-bit one without MIT-SHM, where
// every read is an XGetImage, and a 16-bit one, whose pixels have to be converted to BGRA.
class CaptureOtherServersTest : public ::testing::TestWithParam<int> {};

TEST_P(CaptureOtherServersTest, BothModesKeepTheColours) {
    const int depth = GetParam();
    XvfbServer server(kScreenWidth, kScreenHeight, depth,
                      depth == 24 ? std::vector<std::string>{"-extension", "MIT-SHM"}
                                  : std::vector<std::string>{});
    ASSERT_FALSE(server.display().empty()) << "Xvfb did not start";
    const auto backend = platform::makeX11Backend(server.display().c_str());
    ASSERT_NE(backend, nullptr);
    DemoTargetProcess target(server.display(), {"--geometry", "640x480+100+50"});
    ASSERT_TRUE(target.started());
    const int buttonX = demo::kStartButton.centerX();
    const int buttonY = demo::kStartButton.y + 5;
    for (const bool background : {false, true}) {
        BgraFrame frame;
        eventually([&] {
            frame = backend->capture(target.window(), background);
            return nearColour(pixelAt(frame, buttonX, buttonY), demo::kStartButtonColor);
        });
        ASSERT_EQ(std::pair(frame.width, frame.height), std::pair(640, 480)) << background;
        for (const auto& [x, y, colour] :
             {std::tuple{buttonX, buttonY, demo::kStartButtonColor},
              {5, 300, demo::kStartBackground},
              {demo::kPanel.x + 2, demo::kPanel.y + 50, demo::kPanelColor}}) {
            EXPECT_TRUE(nearColour(pixelAt(frame, x, y), colour))
                << x << "," << y << std::hex << ": " << pixelAt(frame, x, y);
        }
        EXPECT_EQ(frame.pixels[3], 0xFF);
    }
}

INSTANTIATE_TEST_SUITE_P(Servers, CaptureOtherServersTest, ::testing::Values(24, 16),
                         [](const auto& info) {
                             return info.param == 24 ? "WithoutSharedMemory" : "Depth16";
                         });

}  // namespace
}  // namespace autoscene::testing
