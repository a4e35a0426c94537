#include "keys/KeyGroupPress.h"

#include "keys/QtKeyTable.h"

namespace autoscene::platform::keys {

int virtualKeyOfGroupEntry(int code) {
    return isQtModifierKey(code) ? virtualKeyFromQtKey(code) : code;
}

void sendKeyGroup(const std::vector<int>& group, const std::stop_token& stop,
                  const std::function<void(int virtualKey, KeyOp op)>& send) {
    std::size_t down = 0;
    for (; down < group.size() && !stop.stop_requested(); ++down) {
        send(virtualKeyOfGroupEntry(group[down]), KeyOp::Down);
    }
    while (down > 0) {
        --down;
        send(virtualKeyOfGroupEntry(group[down]), KeyOp::Up);
    }
}

void pressKeyGroup(IDesktopBackend& backend, const InputTarget& target,
                   const std::vector<int>& group, bool background, const std::stop_token& stop) {
    sendKeyGroup(group, stop, [&](int virtualKey, KeyOp op) {
        backend.key(target, virtualKey, op, background);
    });
}

}  // namespace autoscene::platform::keys
