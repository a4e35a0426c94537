#include "engine/MVVariable.h"

#include "system/ThreadKey.h"

namespace autoscene::engine {

MVVariable::MVVariable(int id, QString name, QString defaultValue, Scope scope)
    : id_(id),
      name_(std::move(name)),
      scope_(scope),
      value_(defaultValue),
      default_(std::move(defaultValue)) {}

MVVariable::ThreadValue& MVVariable::own() {
    const auto [it, added] =
        threads_.try_emplace(sys::threadKey(), ThreadValue{default_, {}, false});
    return it->second;
}

void MVVariable::startThread() {
    std::lock_guard lock(mutex_);
    ThreadValue& mine = own();
    mine.value = mine.hasStart ? mine.start : default_;
}

void MVVariable::reset() {
    std::lock_guard lock(mutex_);
    value_ = default_;
    threads_.clear();
}

QString MVVariable::valueFor(std::thread::id thread) const {
    std::lock_guard lock(mutex_);
    if (scope_.global) {
        return value_;
    }
    const auto it = threads_.find(thread);
    return it == threads_.end() ? default_ : it->second.value;
}

QString MVVariable::value() {
    return valueFor(sys::threadKey());
}

void MVVariable::setValue(const QString& text) {
    std::lock_guard lock(mutex_);
    if (scope_.global) {
        value_ = text;
    } else {
        own().value = text;
    }
}

void MVVariable::setDefaultValue(const QString& text) {
    std::lock_guard lock(mutex_);
    default_ = text;
    value_ = text;
}

void MVVariable::setStartValue(const QString& text) {
    std::lock_guard lock(mutex_);
    ThreadValue& mine = own();
    mine.value = text;
    mine.start = text;
    mine.hasStart = true;
}

QJsonValue MVVariable::saveState(std::thread::id thread) const {
    return valueFor(thread);
}

void MVVariable::restoreState(const QJsonValue& state) {
    setValue(state.toString());
}

}  // namespace autoscene::engine
