#pragma once
// xcalc's keypad and display, found from its widget windows: their places follow the fonts
// installed rather than a layout written down here.

#include <X11/Xlib.h>

#include <vector>

#include "desktop/DesktopBackend.h"

namespace autoscene::testing {

// The keypad as rows of buttons in root coordinates, top to bottom and left to right: the
// windows that share the most common size. The display is the widest window above them.
// AC ends the first row; 7 8 9, 4 5 6, 1 2 3 fill places 1 to 3 of rows 7 to 9, with + at
// the end of row 9 and = at the end of row 10; 0 is at place 1 of row 10.
struct Calculator {
    std::vector<std::vector<platform::Rect>> rows;
    platform::Rect display{};
};

Calculator calculatorLayout(Display* display, Window window);

inline platform::Point centreOf(platform::Rect r) {
    return {r.x + r.width / 2, r.y + r.height / 2};
}

}  // namespace autoscene::testing
