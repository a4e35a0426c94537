#pragma once
// A timer during a run: fires `delay` seconds after its start, then every `period`
// seconds (never again when the period is 0). Its text value is "delay:period".

#include <cstdint>

#include "engine/MVVariable.h"

namespace autoscene::engine {

class MVTimer : public MVVariable {
public:
    struct Settings {
        int delaySeconds = 0;
        int periodSeconds = 0;
        bool defaultClose = false;
    };

    MVTimer(int id, QString name, Scope scope, Settings settings, const RunClock& clock);

    // Restarts this thread's timer (or the shared one) from now.
    void start();
    void reset() override;
    // True when the timer fires in this evaluation.
    bool fire();
    bool running();
    // The run view's text: "未启动", "已停止", "待触发" or "剩余时间:N秒".
    QString statusText();

    // A variable action's reset on a timer is how a task starts it (a timer that starts
    // switched off has no other way to run).
    void startThread() override { start(); }
    QString valueFor(std::thread::id thread) const override;
    void setValue(const QString& text) override;
    void setDefaultValue(const QString& text) override;
    void setStartValue(const QString& text) override;
    QJsonValue saveState(std::thread::id thread) const override;
    void restoreState(const QJsonValue& state) override;

private:
    struct State {
        int delaySeconds = 0;
        int periodSeconds = 0;
        bool defaultClose = false;
        bool running = false;
        bool firedOnce = false;
        bool firedNow = false;
        std::int64_t markMs = 0;
    };
    // The state this thread uses; the caller holds mutex_.
    State& state();
    const State* stateFor(std::thread::id thread) const;

    const RunClock& clock_;
    State shared_;
    std::unordered_map<std::thread::id, State> states_;
};

}  // namespace autoscene::engine
