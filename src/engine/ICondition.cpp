#include "engine/ICondition.h"

namespace autoscene::engine {

void ICondition::clearThreadState() {
    std::lock_guard lock(stateMutex_);
    states_.clear();
}

QJsonObject ICondition::describe(std::thread::id thread) const {
    return {{QStringLiteral("type"), typeWord()},
            {QStringLiteral("item_state"), int(itemState(thread))}};
}

ItemState ICondition::itemState(std::thread::id thread) const {
    std::lock_guard lock(stateMutex_);
    const auto it = states_.find(thread);
    return it == states_.end() ? ItemState::NotEvaluated : it->second;
}

QString ICondition::statePrefix(ItemState state) {
    switch (state) {
        case ItemState::Holds:
            return QStringLiteral("✔:");
        case ItemState::Fails:
            return QStringLiteral("✘:");
        default:
            return QStringLiteral("〇:");
    }
}

bool ICondition::setOutcome(bool holds) {
    std::lock_guard lock(stateMutex_);
    states_[std::this_thread::get_id()] = holds ? ItemState::Holds : ItemState::Fails;
    return holds;
}

}  // namespace autoscene::engine
