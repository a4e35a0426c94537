#include "actions/MVSaveLabelCoordAction.h"

#include <algorithm>

namespace autoscene::actions {

MVSaveLabelCoordAction::MVSaveLabelCoordAction(LabelTarget target, engine::MVVariable* variable,
                                               std::optional<QRect> area, SaveCoordKind kind)
    : SaveCoordAction(kType, variable, area, kind), target_(std::move(target)) {}

float MVSaveLabelCoordAction::run(TaskInfo& task) {
    const QString label = target_.name();
    std::vector<QRect> found;
    float bestProbability = 0.0f;
    for (const recognition::LabelBox& box :
         conditions::findAllLabels(conditions::labelsOf(task, target_.detector), label,
                                   target_.minProbability, target_.searchArea.rects())) {
        bestProbability = std::max(bestProbability, box.probability);
        found.push_back(saved(areaOrigin(), conditions::boxRect(box)));
    }
    QString error;
    if (label.isEmpty()) {
        error = labelMissingText();
    } else if (!hasVariable()) {
        error = variableMissingText();
    }
    report(found, bestProbability, {QStringLiteral("label"), label}, error);
    return 0.0f;
}

}  // namespace autoscene::actions
