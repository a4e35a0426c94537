#include "MVClickTextAction.h"

#include <QJsonArray>

#include "RandomPick.h"
#include "RectList.h"

namespace autoscene::actions {

MVClickTextAction::MVClickTextAction(engine::RunContext& context, engine::TextSearch search,
                                     std::optional<QRect> clickOffset, targets::MouseOp op,
                                     ClickTiming timing, float waitSeconds)
    : FindClickAction(kType, context, clickOffset, op, timing, waitSeconds),
      search_(std::move(search)) {}

float MVClickTextAction::run(TaskInfo& task) {
    const std::vector<engine::TextBox> found = search_.find(task);
    QJsonArray results;
    for (const engine::TextBox& box : found) {
        results.append(QJsonObject{{QStringLiteral("text"), box.text},
                                   {QStringLiteral("rect"), engine::formatRectList({box.rect})}});
    }
    QJsonObject result{{QStringLiteral("type"), type()},
                       {QStringLiteral("clicked"), false},
                       {QStringLiteral("is_deviation"), clickArea_.has_value()},
                       {QStringLiteral("rect"), QString()},
                       {QStringLiteral("text"), QString()},
                       {QStringLiteral("results"), results}};
    if (found.empty()) {
        setResult(result);
        return 0.0f;
    }
    const engine::TextBox& target = found.front();
    const QRect clickArea =
        clickArea_ ? clickArea_->translated(target.rect.topLeft()) : target.rect;
    result[QStringLiteral("clicked")] = true;
    result[QStringLiteral("rect")] = engine::formatRectList({clickArea});
    result[QStringLiteral("text")] = target.text;
    return click(task, result, engine::randomPointIn(clickArea));
}

}  // namespace autoscene::actions
