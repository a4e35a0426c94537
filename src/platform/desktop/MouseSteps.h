#pragma once
// What each mouse operation does with its button, for every desktop back end: the back
// ends place the pointer (for every operation and the wheel alike), then turn each step
// into their own call.

#include <vector>

#include "desktop/DesktopBackend.h"
#include "desktop/PressedPoints.h"

namespace autoscene::platform {

enum class MouseButton : int { Left, Right };

enum class MouseStepKind : int {
    Down,     // the button pressed at `point`
    Hold,     // a click's pause between press and release, the press time long
    Release,  // the end of a click: the button released at the click's `point`
    Up,       // an "up" operation of its own: the button released at `point`
};

struct MouseStep {
    MouseStepKind kind = MouseStepKind::Down;
    MouseButton button = MouseButton::Left;
    Point point;  // client coordinates, as given to IDesktopBackend::mouse
};

// Real input: a click is down, hold and release; a down or an up is that step alone at the
// point; a move and an unknown operation add nothing to the pointer placement.
std::vector<MouseStep> foregroundMouseSteps(MouseOp op, Point point);

// Posted input keeps two rules of its own. A right click is two downs and no release, as
// programs driven this way expect. A down or a move records the point for the calling
// thread in `pressed`, and an up lands where that thread's record says, (0,0) without one.
std::vector<MouseStep> backgroundMouseSteps(MouseOp op, Point point, PressedPoints& pressed);

}  // namespace autoscene::platform
