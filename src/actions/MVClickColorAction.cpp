#include "actions/MVClickColorAction.h"

#include "engine/RandomPick.h"
#include "recognition/ColorSearch.h"

namespace autoscene::actions {

MVClickColorAction::MVClickColorAction(engine::RunContext& context, std::optional<Colour> colour,
                                       engine::SearchArea searchArea,
                                       std::optional<QRect> clickArea, platform::MouseOp op,
                                       ClickTiming timing, float waitSeconds)
    : FindClickAction(kType, context, clickArea, op, timing, waitSeconds),
      colour_(std::move(colour)),
      searchArea_(std::move(searchArea)) {}

QPoint MVClickColorAction::currentPoint() {
    return currentPoints_.get([] { return QPoint(-1, -1); });
}

float MVClickColorAction::run(TaskInfo& task) {
    QJsonObject result{{QStringLiteral("type"), type()},
                       {QStringLiteral("clicked"), false},
                       {QStringLiteral("alias"), colour_ ? colour_->name : QString()},
                       {QStringLiteral("err"), QString()}};
    const std::vector<QRect> rects = searchArea_.rects();
    if (!colour_ || rects.empty() || task.frame.empty()) {
        if (!colour_) {
            result[QStringLiteral("err")] = QStringLiteral("颜色异常,请确认颜色是否被删除");
        } else if (rects.empty()) {
            result[QStringLiteral("err")] = QStringLiteral(" 查找范围异常");
        }
        setResult(result);
        return 0.0f;
    }
    QPoint& current = currentPoints_.get();
    current = QPoint(-1, -1);
    for (const QRect& rect : rects) {
        if (const auto hit =
                recognition::findColor(task.frame, colour_->rgb, colour_->similarity, rect)) {
            current = *hit;
            break;
        }
    }
    if (current == QPoint(-1, -1)) {
        setResult(result);
        return 0.0f;
    }
    // A colour has no position of its own to keep an offset from: the area is moved
    // so that its top-left corner lands on the hit.
    const QPoint point =
        engine::randomPointIn(clickRect(clickArea_, clickArea_ ? clickArea_->topLeft() : QPoint(),
                                        current, QRect(current, QSize())));
    result[QStringLiteral("clicked")] = true;
    return click(task, result, point);
}

}  // namespace autoscene::actions
