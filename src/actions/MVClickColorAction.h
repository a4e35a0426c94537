#pragma once
// Clicks the first pixel of a colour found in the search rectangles. Results:
// "type", "clicked", "alias", "err".

#include "FindClick.h"
#include "PerThread.h"
#include "SearchArea.h"

namespace autoscene::actions {

class MVClickColorAction : public IAction {
public:
    static constexpr int kType = 21;

    struct Colour {
        QString name;
        std::int64_t rgb = 0;  // 0xRRGGBB
        float similarity = 0.9f;
    };

    MVClickColorAction(engine::RunContext& context, std::optional<Colour> colour,
                       engine::SearchArea searchArea, std::optional<QRect> clickArea,
                       targets::MouseOp op, ClickTiming timing, float waitSeconds);
    float run(TaskInfo& task) override;
    // The thread's last hit, (-1, -1) when nothing was found.
    QPoint currentPoint();

private:
    engine::RunContext& context_;
    const std::optional<Colour> colour_;
    const engine::SearchArea searchArea_;
    const std::optional<QRect> clickArea_;
    const targets::MouseOp op_;
    const ClickTiming timing_;
    engine::PerThread<QPoint> currentPoints_;
};

}  // namespace autoscene::actions
