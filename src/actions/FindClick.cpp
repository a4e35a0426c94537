#include "actions/FindClick.h"

#include <QJsonArray>

#include "engine/RandomPick.h"
#include "engine/RunClock.h"
#include "engine/TargetService.h"

namespace autoscene::actions {

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

FindClickAction::FindClickAction(int type, engine::RunContext& context,
                                 std::optional<QRect> clickArea, platform::MouseOp op,
                                 ClickTiming timing, float waitSeconds)
    : IAction(type, waitSeconds),
      clickArea_(clickArea),
      context_(context),
      op_(op),
      timing_(timing) {}

float FindClickAction::click(TaskInfo& task, const QJsonObject& result, QPoint point) {
    setResult(result);
    const int pressMs = engine::pressTimeMs(timing_.pressSeconds);
    const std::int64_t intervalMs = engine::secondsToMs(timing_.intervalSeconds);
    for (int i = 0; i < timing_.clickTimes; ++i) {
        if (i > 0 && intervalMs > 0) {
            context_.clock.sleepMs(intervalMs);
        }
        context_.targets.mouse(task, {point.x(), point.y()}, op_, pressMs);
    }
    return waitSeconds();
}

}  // namespace autoscene::actions
