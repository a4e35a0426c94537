#include "engine/IAction.h"

namespace autoscene::engine {

bool interruptsTraversal(int actionType) {
    switch (actionType) {
        case 3:   // variable set, plus, sub, reset
        case 4:   // screen value
        case 5:   // save coordinates
        case 9:   // reset all variables
        case 14:  // delay
        case 19:  // save label coordinates
            return false;
        default:
            return true;
    }
}

QJsonObject IAction::state(std::thread::id thread) const {
    std::lock_guard lock(resultMutex_);
    const auto it = results_.find(thread);
    return it == results_.end() ? QJsonObject{} : it->second;
}

void IAction::reset() {
    std::lock_guard lock(resultMutex_);
    results_.clear();
}

void IAction::setResult(QJsonObject result) {
    std::lock_guard lock(resultMutex_);
    results_[std::this_thread::get_id()] = std::move(result);
}

}  // namespace autoscene::engine
