#include "actions/ImageAction.h"

#include <QJsonArray>

#include "engine/RandomPick.h"

namespace autoscene::actions {

ImageAction::ImageAction(engine::RunContext& context, Target target, std::optional<QRect> clickArea,
                         platform::MouseOp op, ClickTiming timing, float waitSeconds)
    : FindClickAction(kType, context, clickArea, op, timing, waitSeconds),
      target_(std::move(target)) {}

float ImageAction::run(TaskInfo& task) {
    const recognition::MatchResult match =
        target_.matcher->find(task.frame, target_.searchArea.variableRects(), task.cycleCount);
    QJsonObject result{{QStringLiteral("type"), type()},
                       {QStringLiteral("clicked"), false},
                       {QStringLiteral("alias"), target_.name},
                       {QStringLiteral("err"), recognition::matchStatusText(match.status)},
                       {QStringLiteral("sim"), double(match.score)},
                       {QStringLiteral("points"), QJsonArray()}};
    if (match.status != recognition::kMatchOk ||
        target_.matcher->settings().similarity > match.score) {
        setResult(result);
        return 0.0f;
    }
    const QPoint point = engine::randomPointIn(
        clickRect(clickArea_, target_.origin, match.match.topLeft(), match.match));
    return click(task, clickedResult(result, point), point);
}

}  // namespace autoscene::actions
