#include "actions/MVClickTextAction.h"

#include <QJsonArray>

#include "engine/RandomPick.h"
#include "engine/RectList.h"

namespace autoscene::actions {

MVClickTextAction::MVClickTextAction(engine::RunContext& context, conditions::TextSearch search,
                                     std::optional<QRect> clickOffset, platform::MouseOp op,
                                     ClickTiming timing, float waitSeconds)
    : FindClickAction(kType, context, clickOffset, op, timing, waitSeconds),
      search_(std::move(search)) {}

float MVClickTextAction::run(TaskInfo& task) {
    const std::vector<text::TextBox> found = search_.find(task);
    QJsonArray results;
    for (const text::TextBox& box : found) {
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
    const text::TextBox& target = found.front();
    const QRect clickArea =
        clickArea_ ? clickArea_->translated(target.rect.topLeft()) : target.rect;
    result[QStringLiteral("clicked")] = true;
    result[QStringLiteral("rect")] = engine::formatRectList({clickArea});
    result[QStringLiteral("text")] = target.text;
    return click(task, result, engine::randomPointIn(clickArea));
}

}  // namespace autoscene::actions
