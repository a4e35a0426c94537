#include "LabelCondition.h"

#include "RectList.h"

namespace autoscene::engine {

LabelCondition::LabelCondition(int relation, Settings settings, const RunClock& clock,
                               ILabelDetector* detector, int labelId, float minProbability,
                               SearchArea searchArea)
    : ScreenItem(kType, relation, settings, clock),
      detector_(detector),
      labelId_(labelId),
      minProbability_(minProbability),
      searchArea_(std::move(searchArea)) {}

int LabelCondition::detect(TaskInfo& task) {
    const QString label = detector_ ? detector_->className(labelId_) : QString();
    LabelFind& result = results_.get();
    result = findLabel(labelsOf(task, detector_), label, minProbability_, searchArea_.rects());
    return result.found ? kFound : kNotFound;
}

LabelFind LabelCondition::result(std::thread::id thread) const {
    const LabelFind* result = results_.find(thread);
    return result ? *result : LabelFind{};
}

void LabelCondition::clearThreadState() {
    ScreenItem::clearThreadState();
    results_.clear();
}

QJsonObject LabelCondition::describe(std::thread::id thread) const {
    QJsonObject status = ScreenItem::describe(thread);
    const LabelFind current = result(thread);
    const LabelBox box = current.box.value_or(LabelBox{});
    status.insert(QStringLiteral("text"),
                  QStringLiteral("标签:%1,坐标:%2,相似度:%3")
                      .arg(detector_ ? detector_->className(labelId_) : QString(),
                           formatRectList({boxRect(box)}))
                      .arg(double(box.probability)));
    return status;
}

}  // namespace autoscene::engine
