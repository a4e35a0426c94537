// Every input operation, in both modes, as the demo target received it.

#include <chrono>
#include <limits>
#include <sstream>
#include <thread>

#include "DemoLayout.h"
#include "X11TestFixture.h"

namespace autoscene::testing {
namespace {

using Lines = std::vector<std::string>;
using platform::InputTarget;
using platform::KeyOp;
using platform::MouseOp;
using platform::Point;
namespace demo = autoscene::demo;

constexpr int kVkShift = 0x10;
constexpr int kVkA = 0x41;

Point at(const demo::Box& box) {
    return Point{box.x + 10, box.y + 10};
}

class InputTest : public X11TestFixture, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        X11TestFixture::SetUp();
        demo_ = startDemo({"--geometry", "640x480+100+50"});
        target_.window = demo_->window();
        mark_ = demo_->mark();
    }

    bool background() const { return GetParam(); }

    // The lines starting with `prefix` among those logged since the last call, once no more
    // come, with the mode's fields (send flag, modifier state) checked and dropped so that
    // both modes compare alike. Motion depends on the mode and the pointer's path.
    Lines received(const std::string& prefix = "", bool motion = false) {
        const Lines lines = demo_->settledLines("", mark_);
        mark_ += lines.size();
        Lines result;
        for (const auto& line : lines) {
            if (line.rfind(prefix, 0) != 0) {
                continue;
            }
            std::istringstream words(line);
            std::string kept;
            for (std::string word; words >> word;) {
                if (word.rfind("send=", 0) == 0) {
                    EXPECT_EQ(word, background() ? "send=1" : "send=0") << line;
                } else if (word.rfind("state=", 0) != 0) {
                    kept += (kept.empty() ? "" : " ") + word;
                }
            }
            if (motion || line.find("MotionNotify") == std::string::npos) {
                result.push_back(kept);
            }
        }
        return result;
    }

    // Waits until the target logs no more and moves past what it logged.
    void settle() { mark_ += demo_->settledLines("", mark_).size(); }

    void mouse(Point point, MouseOp op, int pressMs = 0) {
        backend_->mouse(target_, point, op, pressMs, background());
    }

    void openForm() {
        mouse(at(demo::kStartButton), MouseOp::LeftClick);
        ASSERT_TRUE(demo_->waitForLine("screen MENU", mark_));
        mouse(at(demo::kChoices[1]), MouseOp::LeftClick);
        ASSERT_TRUE(demo_->waitForLine("screen FORM", mark_));
        settle();  // the click's release comes after the screen changed
    }

    std::unique_ptr<DemoTargetProcess> demo_;
    InputTarget target_;
    std::size_t mark_ = 0;
};

TEST_P(InputTest, KeysAndClicksArriveAsAimedAndOutOfRangeArgumentsAreHarmless) {
    backend_->key(target_, kVkA, KeyOp::Click, background());
    backend_->key(target_, kVkShift, KeyOp::Down, background());
    backend_->key(target_, kVkShift, KeyOp::Up, background());
    backend_->key(target_, 0x07, KeyOp::Click, background());  // no key
    backend_->key(target_, 9999, KeyOp::Click, background());  // not a virtual key
    Lines keys;
    for (const auto& line : received("main Key")) {
        keys.push_back(line.substr(0, line.find(" keycode=")) + line.substr(line.find(" keysym=")));
    }
    EXPECT_EQ(
        keys,
        (Lines{"main KeyPress keysym=a text=a", "main KeyRelease keysym=a text=a",
               "main KeyPress keysym=Shift_L text=", "main KeyRelease keysym=Shift_L text="}));

    const int big = std::numeric_limits<int>::max();
    const int small = std::numeric_limits<int>::min();
    backend_->mouse(target_, Point{big, small}, MouseOp::LeftClick, -7, background());
    backend_->mouse(target_, Point{10, 10}, static_cast<MouseOp>(99), 0, background());
    backend_->wheel(target_, small, Point{small, big}, background());
    backend_->key(target_, -5, static_cast<KeyOp>(42), background());
    backend_->mouse(InputTarget{~0ULL, 0}, Point{10, 10}, MouseOp::LeftClick, 0, background());
    settle();  // the clicks below show the back end still works

    mouse(Point{230, 210}, MouseOp::LeftClick, 40);
    EXPECT_TRUE(demo_->waitForLine("screen MENU", mark_));
    EXPECT_EQ(received("main Button"), (Lines{"main ButtonPress button=1 x=230 y=210",
                                              "main ButtonRelease button=1 x=230 y=210"}));

    // That a background right click is two presses is MouseSteps' table.
    mouse(Point{30, 310}, MouseOp::RightDown);
    mouse(Point{30, 310}, MouseOp::RightUp);
    mouse(Point{40, 320}, MouseOp::LeftDown);
    mouse(Point{40, 320}, MouseOp::LeftUp);
    EXPECT_EQ(
        received("main Button"),
        (Lines{"main ButtonPress button=3 x=30 y=310", "main ButtonRelease button=3 x=30 y=310",
               "main ButtonPress button=1 x=40 y=320", "main ButtonRelease button=1 x=40 y=320"}));
}

// A drag of the slider to its end, in both modes, is the demo task's (tests/integration/runner).
TEST_P(InputTest, WheelClicksOncePerStep) {
    openForm();
    backend_->wheel(target_, 3, Point{200, 300}, background());
    backend_->wheel(target_, -1, Point{200, 300}, background());
    Lines steps(3, "main ButtonPress button=4 x=200 y=300");
    steps.emplace_back("main ButtonPress button=5 x=200 y=300");
    EXPECT_EQ(demo_->settledLines("slider", mark_),
              (Lines{"slider 10", "slider 20", "slider 30", "slider 20"}));
    EXPECT_EQ(received("main ButtonPress"), steps);
}

INSTANTIATE_TEST_SUITE_P(Modes, InputTest, ::testing::Values(true, false),
                         [](const auto& info) { return info.param ? "Background" : "Foreground"; });

using BackgroundInputTest = InputTest;

TEST_P(BackgroundInputTest, EveryWindowWithThePointGetsItUpsGoWherePressedAndSystemKeysHoldAlt) {
    const Point corner{demo::kPanel.x + demo::kPanel.width, demo::kPanel.y + demo::kPanel.height};
    mouse(corner, MouseOp::LeftDown);
    EXPECT_EQ(
        received("", true),
        (Lines{"main MotionNotify button=0 x=620 y=80", "panel MotionNotify button=0 x=180 y=60",
               "main ButtonPress button=1 x=620 y=80", "panel ButtonPress button=1 x=180 y=60"}));

    mouse(Point{corner.x + 1, corner.y}, MouseOp::LeftDown);
    EXPECT_EQ(received(), (Lines{"main ButtonPress button=1 x=621 y=80"}));

    // A named child alone receives input, in its own coordinates; outside it, nothing.
    InputTarget child = target_;
    child.child = demo_->panel();
    backend_->mouse(child, Point{demo::kPanel.x, demo::kPanel.y}, MouseOp::LeftDown, 0, true);
    backend_->mouse(child, Point{demo::kPanel.x - 1, demo::kPanel.y}, MouseOp::LeftDown, 0, true);
    EXPECT_EQ(received(), (Lines{"panel ButtonPress button=1 x=0 y=0"}));

    SCOPED_TRACE("an up goes where this thread last pressed, or to the origin");
    mouse(Point{99, 99}, MouseOp::LeftUp);  // uses up the record
    settle();
    mouse(Point{50, 300}, MouseOp::LeftUp);
    EXPECT_EQ(received("main ButtonRelease"), (Lines{"main ButtonRelease button=1 x=0 y=0"}));

    mouse(Point{50, 300}, MouseOp::LeftDown);
    std::thread other([&] {
        mouse(Point{60, 310}, MouseOp::RightDown);
        mouse(Point{99, 99}, MouseOp::RightUp);
    });
    other.join();
    mouse(Point{99, 99}, MouseOp::LeftUp);
    EXPECT_EQ(received("main ButtonRelease"), (Lines{"main ButtonRelease button=3 x=60 y=310",
                                                     "main ButtonRelease button=1 x=50 y=300"}));

    // A record is used once, a move records its point, foreground input records none.
    mouse(Point{70, 320}, MouseOp::Move);
    backend_->mouse(target_, Point{80, 330}, MouseOp::RightDown, 0, false);
    backend_->mouse(target_, Point{80, 330}, MouseOp::RightUp, 0, false);
    settle();
    mouse(Point{99, 99}, MouseOp::RightUp);
    mouse(Point{99, 99}, MouseOp::RightUp);
    EXPECT_EQ(received("main ButtonRelease"), (Lines{"main ButtonRelease button=3 x=70 y=320",
                                                     "main ButtonRelease button=3 x=0 y=0"}));

    SCOPED_TRACE("a system key is typed with Alt held; input for a gone window is logged");
    backend_->key(target_, kVkA, KeyOp::System, true);
    const auto keys = demo_->settledLines("main Key", mark_);
    ASSERT_EQ(keys.size(), 2u);
    for (const auto& key : keys) {
        EXPECT_TRUE(std::stoi(key.substr(key.find(" state=") + 7)) & Mod1Mask) << key;
    }

    demo_->stop();
    mouse(Point{10, 10}, MouseOp::LeftClick);
    backend_->wheel(target_, 1, Point{10, 10}, true);
    backend_->key(target_, kVkA, KeyOp::Click, true);
    EXPECT_EQ(loggedLines(), Lines(2, "窗口不存在"));
}

INSTANTIATE_TEST_SUITE_P(Mode, BackgroundInputTest, ::testing::Values(true),
                         [](const auto&) { return "Background"; });

using ForegroundInputTest = InputTest;

TEST_P(ForegroundInputTest, TextOfAnyCharacterIsTypedAndInputForAVanishedWindowIsDropped) {
    openForm();
    const std::string text = "Hé 开始!\tz";
    const auto start = std::chrono::steady_clock::now();
    backend_->inputText(target_, text);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(5 + 10 * 8))
        << "5 ms to settle, then 10 ms per character";
    EXPECT_TRUE(demo_->waitForLine("field Hé 开始!", mark_));
    std::string typed;
    for (const auto& line : demo_->settledLines("main KeyPress", mark_)) {
        typed += line.substr(line.find(" text=") + 6);
    }
    EXPECT_EQ(typed, "Hé 开始!z") << "Shift and Tab type no text of their own";

    SCOPED_TRACE("input for a vanished window is dropped and nothing stays pressed");
    Display* d = reference_->display();
    XWarpPointer(d, None, DefaultRootWindow(d), 0, 0, 0, 0, 7, 9);
    XSync(d, False);
    demo_->stop();
    backend_->mouse(target_, Point{10, 10}, MouseOp::LeftDown, 0, false);
    backend_->wheel(target_, 2, Point{10, 10}, false);
    backend_->key(target_, kVkShift, KeyOp::Down, false);
    backend_->inputText(target_, "x");

    Window unusedWindow = None;
    int rootX = 0;
    int rootY = 0;
    int unusedXY = 0;
    unsigned int mask = 0;
    XQueryPointer(d, DefaultRootWindow(d), &unusedWindow, &unusedWindow, &rootX, &rootY, &unusedXY,
                  &unusedXY, &mask);
    EXPECT_EQ(std::pair(rootX, rootY), std::pair(7, 9));
    EXPECT_EQ(mask & (Button1Mask | ShiftMask), 0u);
    EXPECT_FALSE(backend_->isWindow(target_.window));

    const auto next = startDemo({"--geometry", "640x480+100+50", "--title", "Next"});
    backend_->mouse(InputTarget{next->window(), 0}, at(demo::kStartButton), MouseOp::LeftClick, 0,
                    false);
    EXPECT_TRUE(next->waitForLine("screen MENU", 0)) << "the back end still drives a new window";
}

INSTANTIATE_TEST_SUITE_P(Mode, ForegroundInputTest, ::testing::Values(false),
                         [](const auto&) { return "Foreground"; });

}  // namespace
}  // namespace autoscene::testing
