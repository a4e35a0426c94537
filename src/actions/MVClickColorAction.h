#pragma once
// Clicks the first pixel of a colour found in the search rectangles. Results:
// "type", "clicked", "alias", "err".

#include "actions/FindClick.h"
#include "engine/SearchArea.h"
#include "recognition/ColorSearch.h"
#include "system/PerThread.h"

namespace autoscene::actions {

class MVClickColorAction : public FindClickAction {
public:
    static constexpr int kType = 21;

    using Colour = recognition::SearchColour;

    MVClickColorAction(engine::RunContext& context, std::optional<Colour> colour,
                       engine::SearchArea searchArea, std::optional<QRect> clickArea,
                       platform::MouseOp op, ClickTiming timing, float waitSeconds);
    float run(TaskInfo& task) override;
    // The thread's last hit, (-1, -1) when nothing was found.
    QPoint currentPoint();

private:
    const std::optional<Colour> colour_;
    const engine::SearchArea searchArea_;
    sys::PerThread<QPoint> currentPoints_;
};

}  // namespace autoscene::actions
