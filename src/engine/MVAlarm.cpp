#include "engine/MVAlarm.h"

#include <QJsonObject>

#include "engine/RunClock.h"

namespace autoscene::engine {

MVAlarm::MVAlarm(int id, QString name, Scope scope, Settings settings, const RunClock& clock)
    : MVVariable(id, std::move(name), settings.timeOfDay.toString(QStringLiteral("HH:mm:ss")),
                 scope),
      settings_(settings),
      clock_(clock) {}

MVAlarm::State& MVAlarm::state() {
    return scope_.global ? shared_ : states_[std::this_thread::get_id()];
}

std::int64_t MVAlarm::dueOn(const QDate& date) const {
    return QDateTime(date, settings_.timeOfDay).toSecsSinceEpoch();
}

bool MVAlarm::inWindow(std::int64_t now, std::int64_t due) const {
    return now >= due && now <= due + std::int64_t(settings_.timeoutMinutes) * 60;
}

bool MVAlarm::fire() {
    const QDateTime local = clock_.localNow();
    const std::int64_t now = local.toSecsSinceEpoch();
    std::lock_guard lock(mutex_);
    State& s = state();
    const QDate day = s.nextDay ? local.date().addDays(1) : local.date();
    const bool inside = inWindow(now, dueOn(day));
    if (!s.triggered) {
        s.firedNow = s.triggered = inside;
        return s.firedNow;
    }
    if (settings_.repeat != 0 && !inside) {
        s.firedNow = s.triggered = false;
        return false;
    }
    s.firedNow = false;
    return false;
}

bool MVAlarm::triggered() {
    std::lock_guard lock(mutex_);
    return state().triggered;
}

QString MVAlarm::statusText() {
    const QDateTime local = clock_.localNow();
    const std::int64_t now = local.toSecsSinceEpoch();
    std::lock_guard lock(mutex_);
    if (state().triggered) {
        return QStringLiteral("已触发");
    }
    std::int64_t due = dueOn(local.date());
    if (settings_.repeat != 1 && now > due + std::int64_t(settings_.timeoutMinutes) * 60) {
        return QStringLiteral("已超时");
    }
    if (now >= due && !inWindow(now, due)) {
        due = dueOn(local.date().addDays(1));
    }
    const std::int64_t remaining = due - now;
    if (remaining > 0 && remaining < 61) {
        return QStringLiteral("剩余:%2秒").arg(remaining);
    }
    if (remaining >= 61) {
        return QStringLiteral("剩余:%2分钟").arg(remaining / 60);
    }
    return QStringLiteral("待触发");
}

void MVAlarm::reset() {
    MVVariable::reset();
    std::lock_guard lock(mutex_);
    shared_ = State{};
    states_.clear();
}

QJsonValue MVAlarm::saveState(std::thread::id thread) const {
    std::lock_guard lock(mutex_);
    State s = shared_;
    if (!scope_.global) {
        const auto it = states_.find(thread);
        s = it == states_.end() ? State{} : it->second;
    }
    return QJsonObject{{"triggered", s.triggered}, {"next_day", s.nextDay}};
}

void MVAlarm::restoreState(const QJsonValue& state) {
    const QJsonObject saved = state.toObject();
    std::lock_guard lock(mutex_);
    State& s = this->state();
    s.triggered = saved["triggered"].toBool();
    s.nextDay = saved["next_day"].toBool();
    s.firedNow = false;
}

}  // namespace autoscene::engine
