#pragma once
// Choosing a window by pointing at it: the pointer turns into a crosshair over the whole
// desktop and the next click names the top-level window under it (the program's own window,
// not a window manager's frame around it).

#include "desktop/DesktopBackend.h"

namespace autoscene::platform {

struct WindowPick {
    enum class State { Waiting, Picked, Cancelled };
    State state = State::Waiting;
    WindowHandle window = 0;  // set when picked
};

class IWindowPicker {
public:
    virtual ~IWindowPicker() = default;

    // Takes the pointer and shows the crosshair; false when another program holds the
    // pointer. A click outside every window, another button or Escape cancels.
    virtual bool begin() = 0;
    // Reads what the user did since the last call without waiting for more. Once picked or
    // cancelled the pointer is given back.
    virtual WindowPick poll() = 0;
    // Gives the pointer back without a window.
    virtual void cancel() = 0;
};

}  // namespace autoscene::platform
