#pragma once
// Finds a template image in every search rectangle and stores where it was found in
// a variable, as a rectangle list. Results: "type", "variable_name", "image_name",
// "exist", "err", "sim", "rects".

#include "actions/ImageAction.h"
#include "actions/SaveCoordAction.h"

namespace autoscene::actions {

class MVSaveCoordAction : public SaveCoordAction {
public:
    static constexpr int kType = 5;

    MVSaveCoordAction(ImageAction::Target target, engine::MVVariable* variable,
                      std::optional<QRect> area, SaveCoordKind kind);
    float run(TaskInfo& task) override;

private:
    const ImageAction::Target target_;
};

}  // namespace autoscene::actions
