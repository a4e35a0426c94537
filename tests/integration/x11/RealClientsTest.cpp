// The back end on X programs that ship with Debian and that nobody here wrote: xev reports
// every event it receives, xcalc is an ordinary toolkit application.

#include <chrono>
#include <functional>
#include <sstream>
#include <thread>

#include "ClientProcess.h"
#include "X11TestFixture.h"

namespace autoscene::testing {
namespace {

using targets::BgraFrame;
using targets::InputTarget;
using targets::KeyOp;
using targets::MouseOp;
using targets::Point;
using targets::Rect;
using targets::WindowHandle;

constexpr int kVkA = 0x41;

bool eventually(const std::function<bool()>& condition) {
    for (int i = 0; i < 200; ++i) {
        if (condition()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(15));
    }
    return false;
}

// xev's button and key presses as "ButtonPress synthetic=NO", "KeyPress synthetic=YES a".
std::vector<std::string> presses(const std::string& output) {
    std::vector<std::string> found;
    std::istringstream lines(output);
    std::string line;
    while (std::getline(lines, line)) {
        const bool button = line.rfind("ButtonPress event", 0) == 0;
        const bool key = line.rfind("KeyPress event", 0) == 0;
        if (!button && !key) {
            continue;
        }
        const auto synthetic = line.find("synthetic ");
        std::string entry = (button ? "ButtonPress synthetic=" : "KeyPress synthetic=") +
                            line.substr(synthetic + 10, line.find(',', synthetic) - synthetic - 10);
        // Two lines on: "    state 0x0, keycode 38 (keysym 0x61, a), same_screen YES,"
        while (key && std::getline(lines, line)) {
            if (const auto keysym = line.find("(keysym "); keysym != std::string::npos) {
                const auto name = line.find(", ", keysym) + 2;
                entry += " " + line.substr(name, line.find(')', name) - name);
                break;
            }
        }
        found.push_back(entry);
    }
    return found;
}

BgraFrame crop(const BgraFrame& frame, Rect rect) {
    BgraFrame part;
    if (frame.width < rect.x + rect.width || frame.height < rect.y + rect.height) {
        return part;
    }
    part.width = rect.width;
    part.height = rect.height;
    part.stride = rect.width * 4;
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        const auto* row = &frame.pixels[static_cast<std::size_t>(y) * frame.stride + rect.x * 4];
        part.pixels.insert(part.pixels.end(), row, row + part.stride);
    }
    return part;
}

class RealClientsTest : public X11TestFixture {
protected:
    WindowHandle waitForWindow(const std::string& title) {
        targets::WindowQuery query;
        query.title = title;
        query.fullMatchTitle = true;
        WindowHandle found = 0;
        eventually([&] {
            for (const WindowHandle window : backend_->topLevelWindows()) {
                if (backend_->matches(window, query)) {
                    found = window;
                }
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
    // Button centres in xcalc's fixed layout, and its number display.
    const Point clear{200, 74}, two{112, 345}, seven{67, 286}, nine{157, 286};
    const Point plus{200, 345}, equals{200, 376};
    const Rect display{0, 0, 226, 50};
    const auto shown = [&] { return crop(backend_->capture(window, false), display); };
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
