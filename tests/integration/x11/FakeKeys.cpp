#include "FakeKeys.h"

#include <X11/extensions/XTest.h>

namespace autoscene::testing {

void pressKeys(Display* display, const std::vector<KeySym>& keysyms) {
    for (const KeySym keysym : keysyms) {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, keysym), True, 0);
    }
    for (auto it = keysyms.rbegin(); it != keysyms.rend(); ++it) {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, *it), False, 0);
    }
    XSync(display, False);
}

void clickAt(Display* display, int x, int y, unsigned button) {
    XTestFakeMotionEvent(display, -1, x, y, 0);
    XTestFakeButtonEvent(display, button, True, 0);
    XTestFakeButtonEvent(display, button, False, 0);
    XSync(display, False);
}

}  // namespace autoscene::testing
