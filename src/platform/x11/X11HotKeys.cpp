#include "x11/X11HotKeys.h"

#include <X11/Xlib.h>
#include <X11/keysym.h>

#include <map>
#include <vector>

#include "x11/ErrorTrap.h"
#include "x11/VirtualKeys.h"

namespace autoscene::platform {

namespace {

struct Grab {
    KeyCode keycode = 0;
    unsigned modifiers = 0;
};

class X11HotKeys : public IGlobalHotKeys {
public:
    explicit X11HotKeys(Display* display) : display_(display), root_(DefaultRootWindow(display)) {
        findLockMasks();
        XSelectInput(display_, root_, KeyPressMask);
    }

    ~X11HotKeys() override {
        for (const auto& [id, grab] : grabs_) {
            ungrab(grab);
        }
        XCloseDisplay(display_);
    }

    bool registerKey(int id, const HotKey& key) override {
        unregisterKey(id);
        const unsigned long keysym = x11::keysymForVirtualKey(key.virtualKey);
        const KeyCode keycode = keysym == NoSymbol ? 0 : XKeysymToKeycode(display_, keysym);
        if (keycode == 0) {
            return false;
        }
        const Grab grab{keycode, modifiersOf(key)};
        x11::ErrorTrap trap(display_);
        for (const unsigned locks : lockCombinations()) {
            XGrabKey(display_, keycode, grab.modifiers | locks, root_, False, GrabModeAsync,
                     GrabModeAsync);
        }
        // Another client's grab of any combination makes the server refuse with BadAccess.
        if (trap.failed()) {
            ungrab(grab);
            return false;
        }
        grabs_[id] = grab;
        return true;
    }

    void unregisterKey(int id) override {
        const auto found = grabs_.find(id);
        if (found != grabs_.end()) {
            ungrab(found->second);
            grabs_.erase(found);
        }
    }

    int eventDescriptor() const override { return ConnectionNumber(display_); }
    // The descriptor announces the presses here.
    void setWakeUp(std::function<void()> /*wake*/) override {}

    void dispatch(const std::function<void(int)>& pressed) override {
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type != KeyPress) {
                continue;
            }
            const unsigned modifiers = event.xkey.state & ~allLocks();
            for (const auto& [id, grab] : grabs_) {
                if (grab.keycode == event.xkey.keycode && grab.modifiers == modifiers) {
                    pressed(id);
                }
            }
        }
    }

private:
    static unsigned modifiersOf(const HotKey& key) {
        return (key.control ? ControlMask : 0) | (key.alt ? Mod1Mask : 0) |
               (key.shift ? ShiftMask : 0) | (key.win ? Mod4Mask : 0);
    }

    // The modifier bits Num Lock and Scroll Lock sit on here (commonly Mod2 and none).
    void findLockMasks() {
        XModifierKeymap* map = XGetModifierMapping(display_);
        const KeyCode num = XKeysymToKeycode(display_, XK_Num_Lock);
        const KeyCode scroll = XKeysymToKeycode(display_, XK_Scroll_Lock);
        for (int modifier = 0; modifier < 8; ++modifier) {
            for (int i = 0; i < map->max_keypermod; ++i) {
                const KeyCode code = map->modifiermap[modifier * map->max_keypermod + i];
                if (code != 0 && code == num) {
                    numLock_ = 1u << modifier;
                }
                if (code != 0 && code == scroll) {
                    scrollLock_ = 1u << modifier;
                }
            }
        }
        XFreeModifiermap(map);
    }

    unsigned allLocks() const { return LockMask | numLock_ | scrollLock_; }

    std::vector<unsigned> lockCombinations() const {
        std::vector<unsigned> combinations{0};
        for (const unsigned lock : {unsigned(LockMask), numLock_, scrollLock_}) {
            if (lock == 0) {
                continue;
            }
            const size_t count = combinations.size();
            for (size_t i = 0; i < count; ++i) {
                combinations.push_back(combinations[i] | lock);
            }
        }
        return combinations;
    }

    void ungrab(const Grab& grab) {
        x11::ErrorTrap trap(display_);
        for (const unsigned locks : lockCombinations()) {
            XUngrabKey(display_, grab.keycode, grab.modifiers | locks, root_);
        }
        trap.failed();
    }

    Display* display_;
    Window root_;
    unsigned numLock_ = 0;
    unsigned scrollLock_ = 0;
    std::map<int, Grab> grabs_;
};

}  // namespace

std::unique_ptr<IGlobalHotKeys> makeX11HotKeys(const char* display) {
    x11::installErrorHandler();
    Display* connection = XOpenDisplay(display);
    if (!connection) {
        return nullptr;
    }
    return std::make_unique<X11HotKeys>(connection);
}

}  // namespace autoscene::platform
