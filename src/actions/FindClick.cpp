#include "actions/FindClick.h"

#include <QJsonArray>
#include <algorithm>
#include <cstdint>

#include "engine/RandomPick.h"
#include "engine/RunClock.h"
#include "engine/TargetService.h"

namespace autoscene::actions {

namespace {

// Task rectangles stay within +-2^30 (model/RectText.cpp); a rectangle moved by what was
// found stays there too, so that no later sum on it leaves the int range.
int shifted(int value, int by) {
    constexpr std::int64_t kLimit = (std::int64_t(1) << 30) - 1;
    return int(std::clamp<std::int64_t>(std::int64_t(value) + by, -kLimit, kLimit));
}

}  // namespace

QRect clickRect(const std::optional<QRect>& area, QPoint origin, QPoint found,
                const QRect& fallback) {
    if (!area) {
        return fallback;
    }
    const QPoint by = found - origin;
    return {shifted(area->x(), by.x()), shifted(area->y(), by.y()), area->width(), area->height()};
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
    const QString refused = context_.targets.refusesPoint(task, {point.x(), point.y()});
    if (!refused.isEmpty()) {
        QJsonObject notSent = result;
        notSent.insert(QStringLiteral("err"), refused);
        setResult(notSent);
        return waitSeconds();
    }
    const int pressMs = engine::pressTimeMs(timing_.pressSeconds);
    const std::int64_t intervalMs = engine::secondsToMs(timing_.intervalSeconds);
    for (int i = 0; i < timing_.clickTimes; ++i) {
        if (i > 0 && intervalMs > 0) {
            context_.clock.sleepMs(intervalMs);
        }
        context_.targets.mouse(task, {point.x(), point.y()}, op_, pressMs);
    }
    QJsonObject sent = result;
    addInputError(context_.targets, task, sent);
    setResult(sent);
    return waitSeconds();
}

}  // namespace autoscene::actions
