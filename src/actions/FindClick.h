#pragma once
// What the find-then-click actions share: the click area moved with what was found,
// and the repeated click at one point.

#include <QJsonObject>
#include <QPoint>
#include <QRect>
#include <optional>

#include "InputActions.h"

namespace autoscene::actions {

// The mouse operation of a record's `button`; Invalid outside 1..7.
targets::MouseOp mouseOpOf(int button);

// `area` was drawn where the target sat at `origin`; the target now sits at `found`.
// Without an area, `fallback` is clicked.
QRect clickRect(const std::optional<QRect>& area, QPoint origin, QPoint found,
                const QRect& fallback);

// `result` as recorded when the action clicks at `point`.
QJsonObject clickedResult(QJsonObject result, QPoint point);

// One press time for all clicks; `clickTimes` clicks at `point` with the interval
// between them; none when the count is below 1.
void clickRepeatedly(engine::RunContext& context, TaskInfo& task, QPoint point, targets::MouseOp op,
                     const ClickTiming& timing);

}  // namespace autoscene::actions
