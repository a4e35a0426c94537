// The back end on an X program that ships with Debian and that nobody here wrote: xcalc, an
// ordinary toolkit application. What each event carries is InputTest's, on the demo target.

#include <algorithm>
#include <chrono>
#include <map>
#include <thread>

#include "ClientProcess.h"
#include "X11TestFixture.h"

// After gtest: Xlib defines None, a name gtest uses.
#include <X11/Xlib.h>

namespace autoscene::testing {
namespace {

using platform::BgraFrame;
using platform::InputTarget;
using platform::MouseOp;
using platform::Point;
using platform::Rect;
using platform::WindowHandle;

// Every descendant window of `window` with its rectangle in root coordinates. xcalc's
// buttons and display are widgets with windows of their own, so their places follow the
// fonts installed rather than a layout written down here.
void collectWindows(Display* display, Window window, std::vector<Rect>& out) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) == 0) {
        return;
    }
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes{};
        Window unused = 0;
        int x = 0;
        int y = 0;
        if (XGetWindowAttributes(display, children[i], &attributes) != 0 &&
            XTranslateCoordinates(display, children[i], root, 0, 0, &x, &y, &unused) != 0) {
            out.push_back(Rect{x, y, attributes.width, attributes.height});
        }
        collectWindows(display, children[i], out);
    }
    XFree(children);
}

// xcalc's keypad as rows of buttons, top to bottom and left to right: the windows that share
// the most common size. Its display is the widest window that ends above them.
struct Calculator {
    std::vector<std::vector<Point>> rows;
    Rect display{};
};

Calculator calculatorLayout(Display* display, Window window) {
    std::vector<Rect> windows;
    collectWindows(display, window, windows);
    std::map<std::pair<int, int>, int> sizes;
    for (const Rect& r : windows) {
        ++sizes[{r.width, r.height}];
    }
    const auto common = std::max_element(sizes.begin(), sizes.end(), [](auto& a, auto& b) {
                            return a.second < b.second;
                        })->first;
    std::map<int, std::vector<Point>> byRow;
    for (const Rect& r : windows) {
        if (std::pair{r.width, r.height} == common) {
            byRow[r.y].push_back(Point{r.x + r.width / 2, r.y + r.height / 2});
        }
    }
    Calculator calculator;
    for (auto& [y, row] : byRow) {
        std::sort(row.begin(), row.end(), [](Point a, Point b) { return a.x < b.x; });
        calculator.rows.push_back(row);
    }
    for (const Rect& r : windows) {
        if (r.y + r.height <= byRow.begin()->first && r.width > calculator.display.width) {
            calculator.display = r;
        }
    }
    return calculator;
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

TEST_F(RealClientsTest, XcalcComputesWithClicksInBothModesAndWithTypedText) {
    ClientProcess xcalc(server_.display(), {"xcalc", "-geometry", "+0+0"});
    const WindowHandle window = waitForWindow("Calculator");
    ASSERT_NE(window, 0u) << "xcalc (Debian package x11-apps) did not show its window";
    const InputTarget target{window, 0};
    // The keypad: AC at the end of the first row; 7 8 9, 1 2 3 and "=" in the last three
    // rows of eleven, with + and = in the last column.
    XSync(reference_->display(), False);
    const Calculator calculator = calculatorLayout(reference_->display(), window);
    ASSERT_EQ(calculator.rows.size(), 11u);
    ASSERT_GT(calculator.display.width, 0);
    const auto& keys = calculator.rows;
    const Point clear = keys[0][4];
    const Point seven = keys[7][1];
    const Point nine = keys[7][3];
    const Point two = keys[9][2];
    const Point plus = keys[9][4];
    const Point equals = keys[10][4];
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
