#include "XcalcLayout.h"

#include <algorithm>
#include <map>

namespace autoscene::testing {
namespace {

using platform::Rect;

// Every descendant window of `window` with its rectangle in root coordinates.
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

}  // namespace

Calculator calculatorLayout(Display* display, Window window) {
    std::vector<Rect> windows;
    collectWindows(display, window, windows);
    Calculator calculator;
    if (windows.empty()) {
        return calculator;
    }
    std::map<std::pair<int, int>, int> sizes;
    for (const Rect& r : windows) {
        ++sizes[{r.width, r.height}];
    }
    const auto common = std::max_element(sizes.begin(), sizes.end(), [](auto& a, auto& b) {
                            return a.second < b.second;
                        })->first;
    std::map<int, std::vector<Rect>> byRow;
    for (const Rect& r : windows) {
        if (std::pair{r.width, r.height} == common) {
            byRow[r.y].push_back(r);
        }
    }
    for (auto& [y, row] : byRow) {
        std::sort(row.begin(), row.end(), [](Rect a, Rect b) { return a.x < b.x; });
        calculator.rows.push_back(row);
    }
    for (const Rect& r : windows) {
        if (r.y + r.height <= byRow.begin()->first && r.width > calculator.display.width) {
            calculator.display = r;
        }
    }
    return calculator;
}

}  // namespace autoscene::testing
