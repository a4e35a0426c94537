#include "actions/LabelAction.h"

#include <QJsonArray>

#include "engine/RandomPick.h"

namespace autoscene::actions {

QString LabelTarget::name() const {
    return detector ? detector->className(labelId) : QString();
}

QString labelMissingText() {
    return QStringLiteral("标签异常，请检查模型或标签是否存在");
}

LabelAction::LabelAction(engine::RunContext& context, LabelTarget target,
                         std::optional<QRect> clickArea, platform::MouseOp op, ClickTiming timing,
                         float waitSeconds)
    : FindClickAction(kType, context, clickArea, op, timing, waitSeconds),
      target_(std::move(target)) {}

float LabelAction::run(TaskInfo& task) {
    const QString label = target_.name();
    QJsonObject result{{QStringLiteral("type"), type()},
                       {QStringLiteral("clicked"), false},
                       {QStringLiteral("alias"), label},
                       {QStringLiteral("err"), label.isEmpty() ? labelMissingText() : QString()},
                       {QStringLiteral("sim"), 0.0},
                       {QStringLiteral("points"), QJsonArray()}};
    const conditions::LabelFind find =
        conditions::findLabel(conditions::labelsOf(task, target_.detector), label,
                              target_.minProbability, target_.searchArea.rects());
    if (find.box) {
        result[QStringLiteral("sim")] = double(find.box->probability);
    }
    if (!find.found) {
        setResult(result);
        return 0.0f;
    }
    const QRect box = conditions::boxRect(*find.box);
    const QPoint point = engine::randomPointIn(
        clickRect(clickArea_, clickArea_ ? clickArea_->topLeft() : QPoint(), box.topLeft(), box));
    return click(task, clickedResult(result, point), point);
}

}  // namespace autoscene::actions
