#pragma once
// Clicks a label of the task's model where the detector finds it. Results: "type",
// "clicked", "alias", "err", "sim", "points".

#include "actions/FindClick.h"
#include "conditions/LabelSearch.h"
#include "engine/SearchArea.h"

namespace autoscene::actions {

// The label an action looks for, and where.
struct LabelTarget {
    recognition::ILabelDetector* detector = nullptr;  // null: no model
    int labelId = 0;
    float minProbability = 0.5f;
    engine::SearchArea searchArea;

    // The label's name; empty when the model or the label is missing.
    QString name() const;
};

// Shown when the model or the label cannot be found.
QString labelMissingText();

class LabelAction : public FindClickAction {
public:
    static constexpr int kType = 18;

    // A click area is moved so that its top-left corner lands on the box's.
    LabelAction(engine::RunContext& context, LabelTarget target, std::optional<QRect> clickArea,
                platform::MouseOp op, ClickTiming timing, float waitSeconds);
    float run(TaskInfo& task) override;

private:
    const LabelTarget target_;
};

}  // namespace autoscene::actions
