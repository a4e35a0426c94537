#include "x11/KeyboardMap.h"

#include <X11/Xutil.h>

#include <algorithm>

namespace autoscene::platform::x11 {

KeyboardMap::KeyboardMap(Display* display) : display_(display) {
    XDisplayKeycodes(display_, &minKeycode_, &maxKeycode_);
    refresh();
}

KeyboardMap::~KeyboardMap() {
    KeySym nothing[2] = {NoSymbol, NoSymbol};
    bool changed = false;
    for (const Spare& spare : spares_) {
        if (spare.keysym != NoSymbol) {
            XChangeKeyboardMapping(display_, spare.keycode, 2, nothing, 1);
            changed = true;
        }
    }
    if (changed) {
        XSync(display_, False);
    }
}

void KeyboardMap::refresh() {
    const int count = maxKeycode_ - minKeycode_ + 1;
    map_.clear();
    symsPerKeycode_ = 0;
    if (count <= 0) {
        return;
    }
    KeySym* syms =
        XGetKeyboardMapping(display_, static_cast<KeyCode>(minKeycode_), count, &symsPerKeycode_);
    if (syms == nullptr || symsPerKeycode_ <= 0) {
        symsPerKeycode_ = 0;
        return;
    }
    map_.assign(syms, syms + static_cast<std::ptrdiff_t>(count) * symsPerKeycode_);
    XFree(syms);
    collectSpares();
}

// Spares are keycodes with no keysym at all, plus those this connection remapped.
void KeyboardMap::collectSpares() {
    for (int keycode = minKeycode_; keycode <= maxKeycode_; ++keycode) {
        const auto first =
            map_.begin() + static_cast<std::ptrdiff_t>(keycode - minKeycode_) * symsPerKeycode_;
        const bool empty =
            std::all_of(first, first + symsPerKeycode_, [](KeySym sym) { return sym == NoSymbol; });
        const bool known = std::any_of(spares_.begin(), spares_.end(),
                                       [keycode](const Spare& s) { return s.keycode == keycode; });
        if (empty && !known) {
            spares_.push_back(Spare{static_cast<KeyCode>(keycode), NoSymbol, 0});
        }
    }
}

KeyStroke KeyboardMap::find(KeySym keysym) const {
    // Only the two levels of the first group are reachable with Shift alone.
    const int levels = std::min(symsPerKeycode_, 2);
    for (int level = 0; level < levels; ++level) {
        for (int keycode = minKeycode_; keycode <= maxKeycode_; ++keycode) {
            const std::size_t index =
                static_cast<std::size_t>(keycode - minKeycode_) * symsPerKeycode_ + level;
            if (map_[index] == keysym) {
                return KeyStroke{static_cast<KeyCode>(keycode), level == 1};
            }
        }
    }
    return KeyStroke{};
}

KeyboardMap::Spare* KeyboardMap::spareFor(KeySym keysym) {
    if (spares_.empty()) {
        return nullptr;
    }
    // The least recently used spare: its last character was typed long ago, so the client
    // that received it has long since read the old mapping.
    Spare* oldest =
        &*std::min_element(spares_.begin(), spares_.end(),
                           [](const Spare& a, const Spare& b) { return a.lastUse < b.lastUse; });
    KeySym syms[2] = {keysym, keysym};
    XChangeKeyboardMapping(display_, oldest->keycode, 2, syms, 1);
    XSync(display_, False);
    oldest->keysym = keysym;
    refresh();
    return oldest;
}

KeyStroke KeyboardMap::strokeFor(KeySym keysym) {
    if (keysym == NoSymbol) {
        return KeyStroke{};
    }
    Spare* used = nullptr;
    KeyStroke stroke = find(keysym);
    if (stroke.keycode == 0) {
        used = spareFor(keysym);
        stroke = used != nullptr ? KeyStroke{used->keycode, false} : KeyStroke{};
    } else {
        const auto spare = std::find_if(spares_.begin(), spares_.end(), [&](const Spare& s) {
            return s.keycode == stroke.keycode;
        });
        used = spare != spares_.end() ? &*spare : nullptr;
    }
    if (used != nullptr) {
        used->lastUse = ++useCounter_;
    }
    return stroke;
}

}  // namespace autoscene::platform::x11
