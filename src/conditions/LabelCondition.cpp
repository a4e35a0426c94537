#include "conditions/LabelCondition.h"

#include "engine/RectList.h"

namespace autoscene::conditions {

LabelCondition::LabelCondition(int relation, Settings settings, const engine::RunClock& clock,
                               recognition::ILabelDetector* detector, int labelId,
                               float minProbability, engine::SearchArea searchArea)
    : engine::ScreenItem(kType, relation, settings, clock),
      detector_(detector),
      labelId_(labelId),
      minProbability_(minProbability),
      searchArea_(std::move(searchArea)) {}

int LabelCondition::detect(engine::TaskInfo& task) {
    const QString label = detector_ ? detector_->className(labelId_) : QString();
    LabelFind& result = results_.get();
    result = findLabel(labelsOf(task, detector_), label, minProbability_, searchArea_.rects());
    return result.found ? engine::kFound : engine::kNotFound;
}

LabelFind LabelCondition::result(std::thread::id thread) const {
    const LabelFind* result = results_.find(thread);
    return result ? *result : LabelFind{};
}

void LabelCondition::clearThreadState() {
    engine::ScreenItem::clearThreadState();
    results_.clear();
}

QJsonObject LabelCondition::describe(std::thread::id thread) const {
    QJsonObject status = engine::ScreenItem::describe(thread);
    const LabelFind current = result(thread);
    const recognition::LabelBox box = current.box.value_or(recognition::LabelBox{});
    status.insert(QStringLiteral("text"),
                  QStringLiteral("标签:%1,坐标:%2,相似度:%3")
                      .arg(detector_ ? detector_->className(labelId_) : QString(),
                           engine::formatRectList({boxRect(box)}))
                      .arg(double(box.probability)));
    return status;
}

}  // namespace autoscene::conditions
