#pragma once
// What the find-then-click actions share: the click area moved with what was found,
// and the repeated click at one point.

#include <QJsonObject>
#include <QPoint>
#include <QRect>
#include <optional>

#include "actions/InputActions.h"

namespace autoscene::actions {

// `area` was drawn where the target sat at `origin`; the target now sits at `found`.
// Without an area, `fallback` is clicked.
QRect clickRect(const std::optional<QRect>& area, QPoint origin, QPoint found,
                const QRect& fallback);

// `result` as recorded when the action clicks at `point`.
QJsonObject clickedResult(QJsonObject result, QPoint point);

// An action that finds something on the frame and clicks it: its click area, mouse
// operation and timing, and the click it ends with.
class FindClickAction : public IAction {
protected:
    FindClickAction(int type, engine::RunContext& context, std::optional<QRect> clickArea,
                    platform::MouseOp op, ClickTiming timing, float waitSeconds);

    // Records `result`, then clicks `point` `clickTimes` times with one press time for
    // all and the interval between them (none when the count is below 1); returns the
    // wait after the action.
    float click(TaskInfo& task, const QJsonObject& result, QPoint point);

    // Where the record's click area (or offset) lies before it is moved to the find.
    const std::optional<QRect> clickArea_;

private:
    engine::RunContext& context_;
    const platform::MouseOp op_;
    const ClickTiming timing_;
};

}  // namespace autoscene::actions
