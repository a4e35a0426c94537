#include "FindClick.h"

#include <QJsonArray>

#include "RandomPick.h"
#include "RunClock.h"
#include "TargetService.h"

namespace autoscene::actions {

targets::MouseOp mouseOpOf(int button) {
    return button >= 1 && button <= 7 ? targets::MouseOp(button) : targets::MouseOp::Invalid;
}

QRect clickRect(const std::optional<QRect>& area, QPoint origin, QPoint found,
                const QRect& fallback) {
    return area ? area->translated(found - origin) : fallback;
}

QJsonObject clickedResult(QJsonObject result, QPoint point) {
    result[QStringLiteral("clicked")] = true;
    result[QStringLiteral("points")] =
        QJsonArray{QJsonObject{{QStringLiteral("x"), point.x()}, {QStringLiteral("y"), point.y()}}};
    return result;
}

void clickRepeatedly(engine::RunContext& context, TaskInfo& task, QPoint point, targets::MouseOp op,
                     const ClickTiming& timing) {
    const int pressMs = engine::pressTimeMs(timing.pressSeconds);
    const std::int64_t intervalMs = engine::secondsToMs(timing.intervalSeconds);
    for (int i = 0; i < timing.clickTimes; ++i) {
        if (i > 0 && intervalMs > 0) {
            context.clock.sleepMs(intervalMs);
        }
        context.targets.mouse(task, {point.x(), point.y()}, op, pressMs);
    }
}

}  // namespace autoscene::actions
