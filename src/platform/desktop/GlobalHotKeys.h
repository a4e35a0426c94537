#pragma once
// Keys that reach the program whichever window has the focus. The back end that grabs
// them on X11 or registers them on Windows implements this contract.

#include <functional>

namespace autoscene::platform {

struct HotKey {
    bool control = false;
    bool alt = false;
    bool shift = false;
    bool win = false;
    int virtualKey = 0;  // Windows virtual-key code of the main key
};

class IGlobalHotKeys {
public:
    virtual ~IGlobalHotKeys() = default;

    // Replaces what `id` had registered. False, and nothing registered under `id`, when
    // another program holds the key or this desktop has no such key.
    virtual bool registerKey(int id, const HotKey& key) = 0;
    virtual void unregisterKey(int id) = 0;
    // Turns readable when presses may be waiting, for the caller's event loop; -1 where the
    // back end has no such descriptor (Windows) and calls the wake-up function instead.
    virtual int eventDescriptor() const = 0;
    // Where eventDescriptor() is -1: `wake` runs on the back end's own thread after each press
    // so that the caller can dispatch on its thread; it must not call into this object. An
    // empty function stops the calls, and none is running once this returns.
    virtual void setWakeUp(std::function<void()> wake) = 0;
    // Calls `pressed` with the id of each registered key pressed since the last call.
    virtual void dispatch(const std::function<void(int id)>& pressed) = 0;
};

}  // namespace autoscene::platform
