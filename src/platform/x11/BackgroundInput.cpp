#include <X11/Xutil.h>

#include <cstdlib>
#include <vector>

#include "x11/HitTest.h"
#include "x11/Input.h"
#include "x11/InputTiming.h"
#include "x11/WindowTree.h"

namespace autoscene::platform::x11 {
namespace {

constexpr unsigned int kWheelUpButton = 4;
constexpr unsigned int kWheelDownButton = 5;

struct Recipient {
    Window window = None;
    Rect rect;  // in the top-level window's coordinates
};

// Where the events go: the named child alone, or the top-level window and all its
// descendants.
struct Recipients {
    Window topLevel = None;
    Point topLevelOrigin;  // on the root, for the events' root coordinates
    std::vector<Recipient> windows;
};

std::optional<Recipients> recipientsOf(Connection& connection, const InputTarget& target) {
    const Window topLevel = static_cast<Window>(target.window);
    if (topLevel == None) {
        return std::nullopt;
    }
    const auto topRect = rectRelativeTo(connection, topLevel, connection.root());
    if (!topRect) {
        return std::nullopt;
    }
    Recipients recipients;
    recipients.topLevel = topLevel;
    recipients.topLevelOrigin = Point{topRect->x, topRect->y};
    std::vector<Window> windows;
    if (target.child != 0) {
        windows.push_back(static_cast<Window>(target.child));
    } else {
        windows.push_back(topLevel);
        const auto below = descendants(connection, topLevel);
        windows.insert(windows.end(), below.begin(), below.end());
    }
    for (Window window : windows) {
        if (const auto rect = rectRelativeTo(connection, window, topLevel)) {
            recipients.windows.push_back(Recipient{window, *rect});
        }
    }
    return recipients;
}

void send(Connection& connection, Window window, long mask, XEvent& event) {
    XSendEvent(connection.display(), window, False, mask, &event);
}

// A button or motion event for the recipient under `point`, in its own coordinates.
XEvent pointerEvent(Connection& connection, const Recipients& recipients, const Recipient& to,
                    int type, Point point) {
    XEvent event{};
    XButtonEvent& button = event.xbutton;  // motion events share this layout
    button.type = type;
    button.display = connection.display();
    button.window = to.window;
    button.root = connection.root();
    button.subwindow = None;
    button.time = CurrentTime;
    const Point local = toLocal(to.rect, point);
    button.x = local.x;
    button.y = local.y;
    button.x_root = recipients.topLevelOrigin.x + point.x;
    button.y_root = recipients.topLevelOrigin.y + point.y;
    button.same_screen = True;
    return event;
}

void postButton(Connection& connection, const Recipients& recipients, Point point, int type,
                unsigned int button, unsigned int state) {
    if (point.x < 0 || point.y < 0) {
        return;
    }
    const long mask = type == ButtonPress ? ButtonPressMask : ButtonReleaseMask;
    for (const Recipient& to : recipients.windows) {
        if (containsInclusive(to.rect, point)) {
            XEvent event = pointerEvent(connection, recipients, to, type, point);
            event.xbutton.button = button;
            event.xbutton.state = state;
            send(connection, to.window, mask, event);
        }
    }
    XFlush(connection.display());
}

// Sent with the left button reported held, as every background mouse operation starts.
void postMotion(Connection& connection, const Recipients& recipients, Point point) {
    if (point.x < 0 || point.y < 0) {
        return;
    }
    for (const Recipient& to : recipients.windows) {
        if (containsInclusive(to.rect, point)) {
            XEvent event = pointerEvent(connection, recipients, to, MotionNotify, point);
            event.xmotion.state = Button1Mask;
            event.xmotion.is_hint = NotifyNormal;
            send(connection, to.window, PointerMotionMask | ButtonMotionMask | Button1MotionMask,
                 event);
        }
    }
    XFlush(connection.display());
}

void postKey(Connection& connection, const Recipients& recipients, int type, KeyCode keycode,
             unsigned int state) {
    for (const Recipient& to : recipients.windows) {
        XEvent event{};
        XKeyEvent& key = event.xkey;
        key.type = type;
        key.display = connection.display();
        key.window = to.window;
        key.root = connection.root();
        key.subwindow = None;
        key.time = CurrentTime;
        key.same_screen = True;
        key.keycode = keycode;
        key.state = state;
        send(connection, to.window, type == KeyPress ? KeyPressMask : KeyReleaseMask, event);
    }
    XFlush(connection.display());
}

}  // namespace

void BackgroundInput::windowMissing() const {
    if (log_) {
        log_("窗口不存在");
    }
}

void BackgroundInput::mouse(Connection& connection, const InputTarget& target, Point point,
                            MouseOp op, int pressMs) {
    const auto recipients = recipientsOf(connection, target);
    if (!recipients) {
        windowMissing();
        return;
    }
    postMotion(connection, *recipients, point);
    std::lock_guard lock(inputMutex_);
    for (const MouseStep& step : backgroundMouseSteps(op, point, pressedPoints_)) {
        switch (step.kind) {
            case MouseStepKind::Down:
                postButton(connection, *recipients, step.point, ButtonPress,
                           buttonNumber(step.button), 0);
                break;
            case MouseStepKind::Hold:
                sleepMs(effectivePressMs(pressMs));
                break;
            case MouseStepKind::Release:
            case MouseStepKind::Up:
                postButton(connection, *recipients, step.point, ButtonRelease,
                           buttonNumber(step.button), buttonMask(step.button));
                break;
        }
    }
    // A recipient that vanished meanwhile only raises an error the handler counts.
    XSync(connection.display(), False);
}

void BackgroundInput::wheel(Connection& connection, const InputTarget& target, int steps,
                            Point point) {
    const auto recipients = recipientsOf(connection, target);
    if (!recipients) {
        windowMissing();
        return;
    }
    if (steps == 0) {
        return;
    }
    postMotion(connection, *recipients, point);
    std::lock_guard lock(inputMutex_);
    const unsigned int button = steps > 0 ? kWheelUpButton : kWheelDownButton;
    // Every window of the list, hit or not, as the wheel goes to the focus, not the point.
    for (int step = 0; step < std::abs(steps); ++step) {
        for (const int type : {ButtonPress, ButtonRelease}) {
            for (const Recipient& to : recipients->windows) {
                XEvent event = pointerEvent(connection, *recipients, to, type, point);
                event.xbutton.button = button;
                send(connection, to.window,
                     type == ButtonPress ? ButtonPressMask : ButtonReleaseMask, event);
            }
        }
    }
    // A recipient that vanished meanwhile only raises an error the handler counts.
    XSync(connection.display(), False);
}

void BackgroundInput::key(Connection& connection, const InputTarget& target, KeySym keysym,
                          KeyOp op) {
    const auto recipients = recipientsOf(connection, target);
    if (!recipients) {
        return;
    }
    std::lock_guard lock(inputMutex_);
    connection.keyboard().refresh();
    const KeyStroke stroke = connection.keyboard().strokeFor(keysym);
    if (stroke.keycode == 0) {
        return;
    }
    const unsigned int state = stroke.shift ? ShiftMask : 0;
    switch (op) {
        case KeyOp::Click:
            postKey(connection, *recipients, KeyPress, stroke.keycode, state);
            postKey(connection, *recipients, KeyRelease, stroke.keycode, state);
            break;
        case KeyOp::Down:
            postKey(connection, *recipients, KeyPress, stroke.keycode, state);
            break;
        case KeyOp::Up:
            postKey(connection, *recipients, KeyRelease, stroke.keycode, state);
            break;
        case KeyOp::System:
            // The key as typed with Alt held, which is what a system key press means here.
            postKey(connection, *recipients, KeyPress, stroke.keycode, state | Mod1Mask);
            postKey(connection, *recipients, KeyRelease, stroke.keycode, state | Mod1Mask);
            break;
    }
    // A recipient that vanished meanwhile only raises an error the handler counts.
    XSync(connection.display(), False);
}

}  // namespace autoscene::platform::x11
