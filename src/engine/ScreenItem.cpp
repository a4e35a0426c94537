#include "engine/ScreenItem.h"

#include "engine/RunClock.h"

namespace autoscene::engine {

ScreenItem::ScreenItem(int type, int relation, Settings settings, const RunClock& clock)
    : ICondition(type, relation), settings_(settings), clock_(clock) {}

bool ScreenItem::found(TaskInfo& task) {
    return (settings_.expectedState & detect(task)) != 0;
}

void ScreenItem::prepare(TaskInfo& task) {
    Timing& timing = timing_.get();
    if (task.frame.empty()) {
        timing = {};
    }
    if (!found(task)) {
        timing = {};
        return;
    }
    const std::int64_t now = clock_.nowMs();
    const std::int64_t since = timing.sinceMs != 0 ? timing.sinceMs : now;
    timing = {since, now - since};
}

bool ScreenItem::evaluate(TaskInfo& task) {
    Timing& timing = timing_.get();
    if (task.frame.empty()) {
        timing = {};
        return setOutcome(false);
    }
    if (settings_.confirmedSeconds == 0.0f) {
        return setOutcome(found(task));
    }
    const bool holds = float(timing.durationMs) > settings_.confirmedSeconds * 1000.0f;
    if (holds && settings_.resetWhenConfirmed) {
        timing = {};
    }
    return setOutcome(holds);
}

void ScreenItem::clearThreadState() {
    ICondition::clearThreadState();
    timing_.clear();
}

QJsonObject ScreenItem::describe(std::thread::id thread) const {
    QJsonObject status = ICondition::describe(thread);
    status.insert(QStringLiteral("confirmed_time"), double(settings_.confirmedSeconds));
    return status;
}

}  // namespace autoscene::engine
