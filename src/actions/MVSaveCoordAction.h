#pragma once
// Finds a template image in every search rectangle and stores where it was found in
// a variable, as a rectangle list. Results: "type", "variable_name", "image_name",
// "exist", "err", "sim", "rects".

#include "ImageAction.h"

namespace autoscene::engine {
class MVVariable;
}

namespace autoscene::actions {

// What is stored for each find (`save_type`).
enum class SaveCoordKind : int { Rect = 0, Centre = 1 };

// What is stored for one find at `found`: `area` (drawn where the target sat at `origin`)
// moved with the find, or the find itself; its centre alone for SaveCoordKind::Centre.
QRect savedRect(const std::optional<QRect>& area, QPoint origin, const QRect& found,
                SaveCoordKind kind);

// The rectangle list of `found`, stored in `variable` when there is one and anything was found.
QString storeRects(engine::MVVariable* variable, const std::vector<QRect>& found);

class MVSaveCoordAction : public IAction {
public:
    static constexpr int kType = 5;

    MVSaveCoordAction(ImageAction::Target target, engine::MVVariable* variable,
                      std::optional<QRect> area, SaveCoordKind kind);
    float run(TaskInfo& task) override;

private:
    const ImageAction::Target target_;
    engine::MVVariable* variable_;
    const std::optional<QRect> area_;  // stored in place of the find, moved with it
    const SaveCoordKind kind_;
};

}  // namespace autoscene::actions
