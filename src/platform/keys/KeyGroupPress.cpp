#include "keys/KeyGroupPress.h"

#include "keys/QtKeyTable.h"

namespace autoscene::platform::keys {

int virtualKeyOfGroupEntry(int code) {
    return isQtModifierKey(code) ? virtualKeyFromQtKey(code) : code;
}

void pressKeyGroup(IDesktopBackend& backend, const InputTarget& target,
                   const std::vector<int>& group, bool background) {
    for (const int code : group) {
        backend.key(target, virtualKeyOfGroupEntry(code), KeyOp::Down, background);
    }
    for (auto code = group.rbegin(); code != group.rend(); ++code) {
        backend.key(target, virtualKeyOfGroupEntry(*code), KeyOp::Up, background);
    }
}

}  // namespace autoscene::platform::keys
