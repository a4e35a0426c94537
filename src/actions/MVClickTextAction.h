#pragma once
// Clicks the first text box in its region that matches the wanted text. With a click
// offset (`deviation_id`) the click lands in that crop moved to the box's top-left
// corner instead of in the box. Results: "type", "clicked", "is_deviation", "rect"
// (the area clicked in), "text" (the box clicked), "results" (every matching box).

#include "actions/FindClick.h"
#include "conditions/TextSearch.h"

namespace autoscene::actions {

class MVClickTextAction : public FindClickAction {
public:
    static constexpr int kType = 15;

    MVClickTextAction(engine::RunContext& context, conditions::TextSearch search,
                      std::optional<QRect> clickOffset, platform::MouseOp op, ClickTiming timing,
                      float waitSeconds);
    float run(TaskInfo& task) override;

private:
    const conditions::TextSearch search_;
};

}  // namespace autoscene::actions
