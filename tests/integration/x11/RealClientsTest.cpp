// The back end on an X program that ships with Debian and that nobody here wrote: xcalc, an
// ordinary toolkit application. What each event carries is InputTest's, on the demo target.

#include <chrono>
#include <thread>

#include "ClientProcess.h"
#include "X11TestFixture.h"
#include "XcalcLayout.h"

// After gtest: Xlib defines None, a name gtest uses.
#include <X11/Xlib.h>

namespace autoscene::testing {
namespace {

using platform::BgraFrame;
using platform::InputTarget;
using platform::MouseOp;
using platform::Point;
using platform::WindowHandle;

using RealClientsTest = X11TestFixture;

TEST_F(RealClientsTest, XcalcComputesWithClicksInBothModesAndWithTypedText) {
    ClientProcess xcalc(server_.display(), {"xcalc", "-geometry", "+0+0"});
    const platform::WindowQuery query{.title = "Calculator", .fullMatchTitle = true};
    WindowHandle window = 0;
    eventually([&] {
        for (const WindowHandle candidate : backend_->topLevelWindows()) {
            window = backend_->matches(candidate, query) ? candidate : window;
        }
        return window != 0;
    });
    ASSERT_NE(window, 0u) << "xcalc (Debian package x11-apps) did not show its window";
    const InputTarget target{window, 0};
    XSync(reference_->display(), False);
    const Calculator calculator = calculatorLayout(reference_->display(), window);
    ASSERT_EQ(calculator.rows.size(), 11u);
    ASSERT_GT(calculator.display.width, 0);
    const auto& keys = calculator.rows;
    const Point clear = centreOf(keys[0][4]);
    const Point seven = centreOf(keys[7][1]);
    const Point nine = centreOf(keys[7][3]);
    const Point two = centreOf(keys[9][2]);
    const Point plus = centreOf(keys[9][4]);
    const Point equals = centreOf(keys[10][4]);
    const auto shown = [&] { return reference_->read(calculator.display); };
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
