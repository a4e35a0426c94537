#include "engine/MVTimer.h"

#include <QJsonObject>
#include <QStringList>

#include "engine/RunClock.h"

namespace autoscene::engine {

namespace {

QString timerText(int delay, int period) {
    return QStringLiteral("%1:%2").arg(delay).arg(period);
}

}  // namespace

MVTimer::MVTimer(int id, QString name, Scope scope, Settings settings, const RunClock& clock)
    : MVVariable(id, std::move(name), timerText(settings.delaySeconds, settings.periodSeconds),
                 scope),
      clock_(clock) {
    shared_.delaySeconds = settings.delaySeconds;
    shared_.periodSeconds = settings.periodSeconds;
    shared_.defaultClose = settings.defaultClose;
    shared_.running = !settings.defaultClose;
    shared_.markMs = clock.nowMs();
}

MVTimer::State& MVTimer::state() {
    if (scope_.global) {
        return shared_;
    }
    const auto [it, added] = states_.try_emplace(std::this_thread::get_id(), shared_);
    if (added) {
        it->second.running = !shared_.defaultClose;
    }
    return it->second;
}

const MVTimer::State* MVTimer::stateFor(std::thread::id thread) const {
    if (scope_.global) {
        return &shared_;
    }
    const auto it = states_.find(thread);
    return it == states_.end() ? &shared_ : &it->second;
}

void MVTimer::start() {
    std::lock_guard lock(mutex_);
    State& s = state();
    s.markMs = clock_.nowMs();
    s.running = true;
    s.firedOnce = false;
    s.firedNow = false;
}

void MVTimer::reset() {
    std::lock_guard lock(mutex_);
    states_.clear();
    shared_.markMs = clock_.nowMs();
    shared_.running = !shared_.defaultClose;
    shared_.firedOnce = false;
    shared_.firedNow = false;
}

bool MVTimer::fire() {
    std::lock_guard lock(mutex_);
    State& s = state();
    s.firedNow = false;
    if (!s.running) {
        return false;
    }
    const std::int64_t now = clock_.nowMs();
    if (!s.firedOnce) {
        if (now - s.markMs >= std::int64_t(s.delaySeconds) * 1000) {
            s.firedOnce = true;
            s.firedNow = true;
            s.markMs = now;
        }
    } else if (s.periodSeconds >= 1 && now - s.markMs >= std::int64_t(s.periodSeconds) * 1000) {
        s.firedNow = true;
        s.markMs = now;
    }
    return s.firedNow;
}

bool MVTimer::running() {
    std::lock_guard lock(mutex_);
    return state().running;
}

QString MVTimer::statusText() {
    std::lock_guard lock(mutex_);
    const State& s = state();
    if (!s.running) {
        return QStringLiteral("未启动");
    }
    if (s.firedOnce && s.periodSeconds == 0) {
        return QStringLiteral("已停止");
    }
    // 32-bit arithmetic on the low bits of the clock, as the run view always did.
    const std::int32_t interval = (s.firedOnce ? s.periodSeconds : s.delaySeconds) * 1000;
    const auto low = [](std::int64_t ms) { return std::int32_t(std::uint32_t(ms)); };
    const std::int32_t remainingMs =
        std::int32_t(std::uint32_t(interval) + std::uint32_t(low(s.markMs)) -
                     std::uint32_t(low(clock_.nowMs())));
    if (remainingMs < 1) {
        return QStringLiteral("待触发");
    }
    return QStringLiteral("剩余时间:%1秒").arg(remainingMs / 1000);
}

QString MVTimer::valueFor(std::thread::id thread) const {
    std::lock_guard lock(mutex_);
    const State* s = stateFor(thread);
    return timerText(s->delaySeconds, s->periodSeconds);
}

void MVTimer::setValue(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(':'));
    std::lock_guard lock(mutex_);
    State& s = state();
    s.delaySeconds = parts.value(0).toInt();
    if (parts.size() > 1) {
        s.periodSeconds = parts[1].toInt();
    }
}

void MVTimer::setDefaultValue(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() < 2) {
        return;
    }
    std::lock_guard lock(mutex_);
    shared_.delaySeconds = parts[0].toInt();
    shared_.periodSeconds = parts[1].toInt();
}

void MVTimer::setStartValue(const QString& text) {
    if (text.split(QLatin1Char(':')).size() >= 2) {
        setValue(text);
    }
}

QJsonValue MVTimer::saveState(std::thread::id thread) const {
    std::lock_guard lock(mutex_);
    const State* s = stateFor(thread);
    return QJsonObject{{"delay", s->delaySeconds},
                       {"period", s->periodSeconds},
                       {"running", s->running},
                       {"fired_once", s->firedOnce},
                       {"mark_ms", double(s->markMs)}};
}

void MVTimer::restoreState(const QJsonValue& state) {
    const QJsonObject saved = state.toObject();
    std::lock_guard lock(mutex_);
    State& s = this->state();
    s.delaySeconds = saved["delay"].toInt(s.delaySeconds);
    s.periodSeconds = saved["period"].toInt(s.periodSeconds);
    s.running = saved["running"].toBool(s.running);
    s.firedOnce = saved["fired_once"].toBool(s.firedOnce);
    s.markMs = std::int64_t(saved["mark_ms"].toDouble(double(s.markMs)));
    s.firedNow = false;
}

}  // namespace autoscene::engine
