#pragma once
// Which key types a keysym on this server, and room for the keysyms no key types: a few
// spare keycodes (mapped to nothing) are remapped on demand and given back when the
// connection closes.

#include <X11/Xlib.h>

#include <cstdint>
#include <vector>

namespace autoscene::platform::x11 {

struct KeyStroke {
    KeyCode keycode = 0;  // 0: nothing can type the keysym
    bool shift = false;   // the keysym is on the shifted level
};

class KeyboardMap {
public:
    explicit KeyboardMap(Display* display);
    ~KeyboardMap();
    KeyboardMap(const KeyboardMap&) = delete;
    KeyboardMap& operator=(const KeyboardMap&) = delete;

    // Re-reads the server's map; call once per input call, as other clients may change it.
    void refresh();

    // The key for `keysym`; remaps the least recently used spare keycode when no key has it.
    KeyStroke strokeFor(KeySym keysym);

private:
    struct Spare {
        KeyCode keycode = 0;
        KeySym keysym = NoSymbol;
        std::uint64_t lastUse = 0;
    };

    KeyStroke find(KeySym keysym) const;
    void collectSpares();
    Spare* spareFor(KeySym keysym);

    Display* display_ = nullptr;
    int minKeycode_ = 0;
    int maxKeycode_ = 0;
    int symsPerKeycode_ = 0;
    std::vector<KeySym> map_;
    std::vector<Spare> spares_;
    std::uint64_t useCounter_ = 0;
};

}  // namespace autoscene::platform::x11
