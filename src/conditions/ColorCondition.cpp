#include "conditions/ColorCondition.h"

#include <cstdlib>

#include "recognition/ColorSearch.h"

namespace autoscene::conditions {

ColorCondition::ColorCondition(int relation, Settings settings, const engine::RunClock& clock,
                               std::optional<Colour> colour, std::optional<QRect> rect, Tests tests)
    : engine::ScreenItem(kType, relation, settings, clock),
      colour_(std::move(colour)),
      rect_(rect),
      tests_(tests) {}

int ColorCondition::detect(engine::TaskInfo& task) {
    Counts& counts = counts_.get();
    if (!colour_) {
        return 0;
    }
    if (counts.cycleId == task.cycleCount) {
        return counts.observed;
    }
    counts.cycleId = task.cycleCount;
    counts.observed = 0;
    counts.searched = rect_.value_or(QRect(0, 0, task.frame.cols, task.frame.rows));
    const int count = recognition::countColor(task.frame, colour_->rgb, colour_->similarity,
                                              counts.searched, counts.mask);
    if (count < 0) {
        return 0;
    }
    // The first count has nothing to differ from, so it counts as unchanged.
    counts.previous = counts.current < 0 ? count : counts.current;
    counts.current = count;
    const int change = std::abs(counts.current - counts.previous) >= tests_.countTolerance
                           ? engine::kChanged
                           : engine::kUnchanged;
    const int size = counts.current > tests_.count ? engine::kMoreThan : engine::kNotMoreThan;
    counts.observed = change | size;
    return counts.observed;
}

void ColorCondition::clearThreadState() {
    engine::ScreenItem::clearThreadState();
    counts_.clear();
}

QJsonObject ColorCondition::describe(std::thread::id thread) const {
    QJsonObject status = engine::ScreenItem::describe(thread);
    status.insert(QStringLiteral("name"), colour_ ? colour_->name : QString());
    if (const Counts* counts = counts_.find(thread)) {
        status.insert(QStringLiteral("previous"), counts->previous);
        status.insert(QStringLiteral("count"), counts->current);
        // What the counts were held against, so that a reader of the evidence need not
        // look the condition up.
        status.insert(QStringLiteral("more_than"), tests_.count);
        status.insert(QStringLiteral("change_tolerance"), tests_.countTolerance);
    }
    return status;
}

}  // namespace autoscene::conditions
