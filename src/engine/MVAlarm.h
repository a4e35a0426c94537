#pragma once
// An alarm during a run: fires once at the first evaluation inside its window (the
// time of day up to `timeout` minutes later); with repeat it re-arms afterwards.

#include <QDateTime>
#include <QTime>

#include "engine/MVVariable.h"

namespace autoscene::engine {

class MVAlarm : public MVVariable {
public:
    struct Settings {
        QTime timeOfDay;
        int timeoutMinutes = 0;
        int repeat = 0;
    };

    MVAlarm(int id, QString name, Scope scope, Settings settings, const RunClock& clock);

    // True when the alarm fires in this evaluation.
    bool fire();
    bool triggered();
    // The run view's text: "已触发", "已超时", "剩余:N秒", "剩余:N分钟" or "待触发".
    QString statusText();
    void reset() override;
    QJsonValue saveState(std::thread::id thread) const override;
    void restoreState(const QJsonValue& state) override;

private:
    struct State {
        bool triggered = false;
        bool firedNow = false;
        bool nextDay = false;
    };
    State& state();  // the caller holds mutex_
    // Seconds since the epoch at which the alarm is due on `date`.
    std::int64_t dueOn(const QDate& date) const;
    bool inWindow(std::int64_t nowSeconds, std::int64_t dueSeconds) const;

    const Settings settings_;
    const RunClock& clock_;
    State shared_;
    std::unordered_map<std::thread::id, State> states_;
};

}  // namespace autoscene::engine
