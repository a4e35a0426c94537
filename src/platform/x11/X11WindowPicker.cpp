#include "x11/X11WindowPicker.h"

#include <X11/Xlib.h>
#include <X11/cursorfont.h>
#include <X11/keysym.h>

#include <deque>

#include "x11/ErrorTrap.h"

namespace autoscene::platform {

namespace {

// Window managers put each program's window inside a frame of their own and mark the
// program's window with WM_STATE; without a window manager nothing is marked and the
// window under the click is the program's.
class X11WindowPicker : public IWindowPicker {
public:
    explicit X11WindowPicker(Display* display)
        : display_(display),
          root_(DefaultRootWindow(display)),
          cursor_(XCreateFontCursor(display, XC_crosshair)),
          wmState_(XInternAtom(display, "WM_STATE", False)) {}

    ~X11WindowPicker() override {
        release();
        XFreeCursor(display_, cursor_);
        XCloseDisplay(display_);
    }

    bool begin() override {
        release();
        const int grabbed =
            XGrabPointer(display_, root_, False, ButtonPressMask | ButtonReleaseMask, GrabModeAsync,
                         GrabModeAsync, None, cursor_, CurrentTime);
        if (grabbed != GrabSuccess) {
            return false;
        }
        // Without the keyboard Escape cannot cancel, but a click elsewhere still can.
        XGrabKeyboard(display_, root_, False, GrabModeAsync, GrabModeAsync, CurrentTime);
        XSync(display_, False);
        grabbing_ = true;
        pressed_ = None;
        return true;
    }

    WindowPick poll() override {
        while (grabbing_ && XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type == KeyPress && XLookupKeysym(&event.xkey, 0) == XK_Escape) {
                return finish({WindowPick::State::Cancelled, 0});
            }
            if (event.type == ButtonPress && event.xbutton.button == Button1) {
                pressed_ = event.xbutton.subwindow;
            } else if (event.type == ButtonPress) {
                return finish({WindowPick::State::Cancelled, 0});
            } else if (event.type == ButtonRelease && event.xbutton.button == Button1) {
                // Given back on the release, so that the window under the pointer does not
                // receive a release without its press.
                const Window client = pressed_ == None ? None : clientOf(pressed_);
                return finish(client == None ? WindowPick{WindowPick::State::Cancelled, 0}
                                             : WindowPick{WindowPick::State::Picked, client});
            }
        }
        return {grabbing_ ? WindowPick::State::Waiting : WindowPick::State::Cancelled, 0};
    }

    void cancel() override { release(); }

private:
    WindowPick finish(WindowPick pick) {
        release();
        return pick;
    }

    void release() {
        if (grabbing_) {
            XUngrabKeyboard(display_, CurrentTime);
            XUngrabPointer(display_, CurrentTime);
            XSync(display_, True);
            grabbing_ = false;
        }
    }

    bool marked(Window window) {
        Atom type = None;
        int format = 0;
        unsigned long items = 0;
        unsigned long after = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(display_, window, wmState_, 0, 0, False, AnyPropertyType, &type, &format,
                           &items, &after, &data);
        if (data != nullptr) {
            XFree(data);
        }
        return type != None;
    }

    // The nearest marked window at or below `top` (breadth first, as a frame holds its
    // client near the top), else `top` itself.
    Window clientOf(Window top) {
        x11::ErrorTrap trap(display_);
        std::deque<Window> queue{top};
        for (int visited = 0; !queue.empty() && visited < kMaxVisited; ++visited) {
            const Window window = queue.front();
            queue.pop_front();
            if (marked(window)) {
                trap.failed();
                return window;
            }
            Window root = None;
            Window parent = None;
            Window* children = nullptr;
            unsigned count = 0;
            if (XQueryTree(display_, window, &root, &parent, &children, &count) != 0 &&
                children != nullptr) {
                queue.insert(queue.end(), children, children + count);
            }
            if (children != nullptr) {
                XFree(children);
            }
        }
        trap.failed();  // a child that vanished midway was not the client
        return top;
    }

    // Enough for any frame; a deep foreign tree must not stall the window's thread.
    static constexpr int kMaxVisited = 512;

    Display* display_;
    Window root_;
    Cursor cursor_;
    Atom wmState_;
    bool grabbing_ = false;
    Window pressed_ = None;
};

}  // namespace

std::unique_ptr<IWindowPicker> makeX11WindowPicker(const char* display) {
    x11::installErrorHandler();
    Display* connection = XOpenDisplay(display);
    if (!connection) {
        return nullptr;
    }
    return std::make_unique<X11WindowPicker>(connection);
}

}  // namespace autoscene::platform
