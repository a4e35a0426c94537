#include "keys/KeyGroupPress.h"

#include "keys/QtKeyTable.h"

namespace autoscene::platform::keys {

int virtualKeyOfGroupEntry(int code) {
    return isQtModifierKey(code) ? virtualKeyFromQtKey(code) : code;
}

bool sendKeyGroup(const std::vector<int>& group, const std::stop_token& stop,
                  const std::function<void(int entry, KeyOp op)>& send) {
    std::size_t down = 0;
    for (; down < group.size() && !stop.stop_requested(); ++down) {
        send(group[down], KeyOp::Down);
    }
    const bool whole = down == group.size();
    while (down > 0) {
        --down;
        send(group[down], KeyOp::Up);
    }
    return whole;
}

bool pressKeyGroup(IDesktopBackend& backend, const InputTarget& target,
                   const std::vector<int>& group, bool background, const std::stop_token& stop) {
    return sendKeyGroup(group, stop, [&](int entry, KeyOp op) {
        backend.key(target, virtualKeyOfGroupEntry(entry), op, background);
    });
}

}  // namespace autoscene::platform::keys
