// The back end on X programs that ship with Debian and that nobody here wrote: xev reports
// every event it receives, xcalc is an ordinary toolkit application.

#include <chrono>
#include <regex>
#include <thread>

#include "ClientProcess.h"
#include "X11TestFixture.h"

namespace autoscene::testing {
namespace {

using platform::BgraFrame;
using platform::InputTarget;
using platform::KeyOp;
using platform::MouseOp;
using platform::Point;
using platform::Rect;
using platform::WindowHandle;

constexpr int kVkA = 0x41;

// xev's button and key presses as "ButtonPress synthetic=NO", "KeyPress synthetic=YES a"; a
// key's keysym name is two lines on, in "keycode 38 (keysym 0x61, a)".
std::vector<std::string> presses(const std::string& output) {
    static const std::regex event(R"((ButtonPress|KeyPress) event, serial \d+, synthetic (YES|NO))"
                                  R"([\s\S]*?(?:\(keysym 0x[0-9a-f]+, (\w+)\)|\n\n))");
    std::vector<std::string> found;
    for (std::sregex_iterator it(output.begin(), output.end(), event), end; it != end; ++it) {
        const std::smatch& m = *it;
        found.push_back(m[1].str() + " synthetic=" + m[2].str() +
                        (m[3].matched ? " " + m[3].str() : ""));
    }
    return found;
}

class RealClientsTest : public X11TestFixture {
protected:
    WindowHandle waitForWindow(const std::string& title) {
        const platform::WindowQuery query{.title = title, .fullMatchTitle = true};
        WindowHandle found = 0;
        eventually([&] {
            for (const WindowHandle window : backend_->topLevelWindows()) {
                found = backend_->matches(window, query) ? window : found;
            }
            return found != 0;
        });
        return found;
    }
};

TEST_F(RealClientsTest, XevReceivesClicksAndKeysInBothModesAndTypedText) {
    ClientProcess xev(server_.display(), {"xev", "-geometry", "300x300+50+50"});
    const WindowHandle window = waitForWindow("Event Tester");
    ASSERT_NE(window, 0u) << "xev (Debian package x11-utils) did not show its window";
    const InputTarget target{window, 0};
    for (const bool background : {true, false}) {
        backend_->mouse(target, Point{150, 150}, MouseOp::LeftClick, 0, background);
        backend_->key(target, kVkA, KeyOp::Click, background);
    }
    backend_->inputText(target, "é");
    const std::vector<std::string> expected = {
        "ButtonPress synthetic=YES", "KeyPress synthetic=YES a", "ButtonPress synthetic=NO",
        "KeyPress synthetic=NO a", "KeyPress synthetic=NO eacute"};
    eventually([&] { return presses(xev.output()).size() >= expected.size(); });
    EXPECT_EQ(presses(xev.output()), expected);
}

TEST_F(RealClientsTest, XcalcComputesWithClicksInBothModesAndWithTypedText) {
    ClientProcess xcalc(server_.display(), {"xcalc", "-geometry", "+0+0"});
    const WindowHandle window = waitForWindow("Calculator");
    ASSERT_NE(window, 0u) << "xcalc (Debian package x11-apps) did not show its window";
    const InputTarget target{window, 0};
    // Button centres in xcalc's fixed layout; its number display is at the screen's top left.
    const Point clear{200, 74}, two{112, 345}, seven{67, 286}, nine{157, 286};
    const Point plus{200, 345}, equals{200, 376};
    const auto shown = [&] { return reference_->read(Rect{0, 0, 226, 50}); };
    const auto press = [&](std::initializer_list<Point> buttons, bool background) {
        for (const Point button : buttons) {
            backend_->mouse(target, button, MouseOp::LeftClick, 0, background);
        }
    };
    // The display once it stopped changing.
    const auto settled = [&] {
        BgraFrame last = shown();
        for (int i = 0; i < 50; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            BgraFrame next = shown();
            if (firstDifference(next, last).empty()) {
                break;
            }
            last = std::move(next);
        }
        return last;
    };

    press({clear}, false);
    const BgraFrame zero = settled();
    press({nine}, false);
    ASSERT_TRUE(eventually([&] { return !firstDifference(shown(), zero).empty(); }));
    const BgraFrame showsNine = settled();

    press({clear, seven, plus, two, equals}, true);
    EXPECT_TRUE(eventually([&] { return firstDifference(shown(), showsNine).empty(); }))
        << "7+2= clicked in the background";
    press({clear}, false);
    ASSERT_TRUE(eventually([&] { return firstDifference(shown(), zero).empty(); }));
    backend_->inputText(target, "4+5=");
    EXPECT_TRUE(eventually([&] { return firstDifference(shown(), showsNine).empty(); }))
        << "4+5= typed";
}

}  // namespace
}  // namespace autoscene::testing
