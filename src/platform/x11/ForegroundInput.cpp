#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <cstdlib>

#include "system/Utf8.h"
#include "x11/Activation.h"
#include "x11/ErrorTrap.h"
#include "x11/Input.h"
#include "x11/InputTiming.h"
#include "x11/VirtualKeys.h"
#include "x11/WindowTree.h"

namespace autoscene::platform::x11 {
namespace {

constexpr unsigned int kWheelUpButton = 4;
constexpr unsigned int kWheelDownButton = 5;
constexpr int kSettleAfterActivationMs = 5;
constexpr int kPauseBetweenCharactersMs = 10;

// The point on the screen, after activating the target window; nothing when the target
// names a window that cannot be activated.
std::optional<Point> prepare(Connection& connection, const InputTarget& target, Point point) {
    const Window window = static_cast<Window>(target.window);
    if (window == None) {
        return point;
    }
    if (!activate(connection, window)) {
        return std::nullopt;
    }
    const auto client = rectRelativeTo(connection, window, connection.root());
    if (!client) {
        return std::nullopt;
    }
    return Point{client->x + point.x, client->y + point.y};
}

void moveTo(Display* display, Point client, Point screen) {
    if (client.x >= 0 && client.y >= 0) {
        XTestFakeMotionEvent(display, -1, screen.x, screen.y, CurrentTime);
    }
}

void button(Display* display, unsigned int number, bool press) {
    XTestFakeButtonEvent(display, number, press ? True : False, CurrentTime);
    XSync(display, False);
}

void keyEvent(Display* display, KeyCode keycode, bool press) {
    XTestFakeKeyEvent(display, keycode, press ? True : False, CurrentTime);
    XSync(display, False);
}

void typeStroke(Display* display, KeyStroke stroke) {
    const KeyCode shift = XKeysymToKeycode(display, XK_Shift_L);
    const bool holdShift = stroke.shift && shift != 0;
    if (holdShift) {
        keyEvent(display, shift, true);
    }
    keyEvent(display, stroke.keycode, true);
    keyEvent(display, stroke.keycode, false);
    if (holdShift) {
        keyEvent(display, shift, false);
    }
}

}  // namespace

void ForegroundInput::mouse(Connection& connection, const InputTarget& target, Point point,
                            MouseOp op, int pressMs) {
    std::lock_guard lock(inputMutex_);
    const auto screen = prepare(connection, target, point);
    if (!screen) {
        return;
    }
    Display* display = connection.display();
    moveTo(display, point, *screen);
    // Releases are sent even if the window vanished during the press, so that no button
    // stays held on the server.
    for (const MouseStep& step : foregroundMouseSteps(op, point)) {
        if (step.kind == MouseStepKind::Hold) {
            sleepMs(effectivePressMs(pressMs));
        } else {
            button(display, buttonNumber(step.button), step.kind == MouseStepKind::Down);
        }
    }
    XSync(display, False);
}

void ForegroundInput::wheel(Connection& connection, const InputTarget& target, int steps,
                            Point point) {
    std::lock_guard lock(inputMutex_);
    const auto screen = prepare(connection, target, point);
    if (!screen) {
        return;
    }
    Display* display = connection.display();
    moveTo(display, point, *screen);
    const unsigned int number = steps > 0 ? kWheelUpButton : kWheelDownButton;
    for (int step = 0; step < std::abs(steps); ++step) {
        button(display, number, true);
        button(display, number, false);
    }
}

void ForegroundInput::key(Connection& connection, const InputTarget& target, KeySym keysym,
                          KeyOp op) {
    std::lock_guard lock(inputMutex_);
    if (!prepare(connection, target, Point{})) {
        return;
    }
    connection.keyboard().refresh();
    const KeyStroke stroke = connection.keyboard().strokeFor(keysym);
    if (stroke.keycode == 0) {
        return;
    }
    // A key operation is about the physical key, whatever level its keysym is on.
    Display* display = connection.display();
    if (op != KeyOp::Up) {
        keyEvent(display, stroke.keycode, true);
    }
    if (op != KeyOp::Down) {
        keyEvent(display, stroke.keycode, false);
    }
}

void ForegroundInput::text(Connection& connection, const InputTarget& target,
                           const std::string& utf8) {
    std::lock_guard lock(inputMutex_);
    if (!prepare(connection, target, Point{})) {
        return;
    }
    sleepMs(kSettleAfterActivationMs);
    connection.keyboard().refresh();
    for (const char32_t codePoint : sys::decodeUtf8(utf8)) {
        const KeyStroke stroke = connection.keyboard().strokeFor(keysymForCodePoint(codePoint));
        if (stroke.keycode != 0) {
            typeStroke(connection.display(), stroke);
        }
        sleepMs(kPauseBetweenCharactersMs);
    }
}

}  // namespace autoscene::platform::x11
