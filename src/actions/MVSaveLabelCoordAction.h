#pragma once
// Finds every box of a label and stores them in a variable as a rectangle list.
// Results: "type", "variable_name", "label", "exist", "err", "sim", "rects".

#include "actions/LabelAction.h"
#include "actions/SaveCoordAction.h"

namespace autoscene::actions {

class MVSaveLabelCoordAction : public SaveCoordAction {
public:
    static constexpr int kType = 19;

    // An area is stored in place of each box, moved so that its top-left corner
    // lands on the box's.
    MVSaveLabelCoordAction(LabelTarget target, engine::MVVariable* variable,
                           std::optional<QRect> area, SaveCoordKind kind);
    float run(TaskInfo& task) override;

private:
    const LabelTarget target_;
};

}  // namespace autoscene::actions
