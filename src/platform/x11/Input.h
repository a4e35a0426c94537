#pragma once
// The two input methods. Points are client coordinates of the top-level window.

#include <X11/Xlib.h>

#include <mutex>
#include <string>

#include "desktop/DesktopBackend.h"
#include "desktop/MouseSteps.h"
#include "x11/Connection.h"
#include "x11/LogSink.h"

namespace autoscene::platform::x11 {

inline unsigned int buttonNumber(MouseButton button) {
    return button == MouseButton::Left ? Button1 : Button3;
}

// The button's bit in the state of the events that follow its press.
inline unsigned int buttonMask(MouseButton button) {
    return button == MouseButton::Left ? Button1Mask : Button3Mask;
}

// Synthetic events sent straight to the window and the descendants under the point; the
// pointer and the focus stay where they are, so the window may be covered. Programs that
// ignore events flagged as sent by another client do not react.
class BackgroundInput {
public:
    BackgroundInput(std::mutex& inputMutex, PressedPoints& pressedPoints, LogSink log)
        : inputMutex_(inputMutex), pressedPoints_(pressedPoints), log_(std::move(log)) {}

    void mouse(Connection& connection, const InputTarget& target, Point point, MouseOp op,
               int pressMs);
    void wheel(Connection& connection, const InputTarget& target, int steps, Point point);
    void key(Connection& connection, const InputTarget& target, KeySym keysym, KeyOp op);

private:
    void windowMissing() const;

    std::mutex& inputMutex_;
    PressedPoints& pressedPoints_;
    LogSink log_;
};

// Real input through XTest after raising and focusing the window; it moves the pointer
// and the focus. Input for a window that is gone is dropped.
class ForegroundInput {
public:
    explicit ForegroundInput(std::mutex& inputMutex) : inputMutex_(inputMutex) {}

    void mouse(Connection& connection, const InputTarget& target, Point point, MouseOp op,
               int pressMs);
    void wheel(Connection& connection, const InputTarget& target, int steps, Point point);
    void key(Connection& connection, const InputTarget& target, KeySym keysym, KeyOp op);
    void text(Connection& connection, const InputTarget& target, const std::string& utf8);

private:
    std::mutex& inputMutex_;
};

}  // namespace autoscene::platform::x11
