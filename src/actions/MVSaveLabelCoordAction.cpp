#include "MVSaveLabelCoordAction.h"

#include <algorithm>

#include "MVVariable.h"

namespace autoscene::actions {

MVSaveLabelCoordAction::MVSaveLabelCoordAction(LabelTarget target, engine::MVVariable* variable,
                                               std::optional<QRect> area, SaveCoordKind kind)
    : IAction(kType, 0.0f),
      target_(std::move(target)),
      variable_(variable),
      area_(area),
      kind_(kind) {}

float MVSaveLabelCoordAction::run(TaskInfo& task) {
    const QString label = target_.name();
    std::vector<QRect> found;
    float bestProbability = 0.0f;
    for (const engine::LabelBox& box :
         findAllLabels(engine::labelsOf(task, target_.detector), label, target_.minProbability,
                       target_.searchArea.rects())) {
        bestProbability = std::max(bestProbability, box.probability);
        found.push_back(
            savedRect(area_, area_ ? area_->topLeft() : QPoint(), engine::boxRect(box), kind_));
    }
    const QString text = storeRects(variable_, found);
    QString error;
    if (label.isEmpty()) {
        error = labelMissingText();
    } else if (!variable_) {
        error = QStringLiteral("variable not found");
    }
    setResult({{QStringLiteral("type"), type()},
               {QStringLiteral("variable_name"), variable_ ? variable_->name() : QString()},
               {QStringLiteral("label"), label},
               {QStringLiteral("exist"), !found.empty()},
               {QStringLiteral("err"), error},
               {QStringLiteral("sim"), double(bestProbability)},
               {QStringLiteral("rects"), text}});
    return 0.0f;
}

}  // namespace autoscene::actions
