#include "ImageCondition.h"

namespace autoscene::engine {

ImageCondition::ImageCondition(int relation, Settings settings, const RunClock& clock,
                               QString imageName, std::shared_ptr<TemplateMatcher> matcher,
                               SearchArea searchArea)
    : ScreenItem(kType, relation, settings, clock),
      imageName_(std::move(imageName)),
      matcher_(std::move(matcher)),
      searchArea_(std::move(searchArea)) {}

int ImageCondition::detect(TaskInfo& task) {
    results_.get() = matcher_->find(task.frame, searchArea_.variableRects(), task.cycleCount);
    return matcher_->record().found ? kFound : kNotFound;
}

MatchResult ImageCondition::result(std::thread::id thread) const {
    const MatchResult* result = results_.find(thread);
    return result ? *result : MatchResult{};
}

void ImageCondition::clearThreadState() {
    ScreenItem::clearThreadState();
    results_.clear();
}

QJsonObject ImageCondition::describe(std::thread::id thread) const {
    QJsonObject status = ScreenItem::describe(thread);
    const MatchResult current = result(thread);
    status.insert(QStringLiteral("name"), imageName_);
    status.insert(QStringLiteral("err"), matchStatusText(current.status));
    status.insert(QStringLiteral("sim"), double(current.score));
    status.insert(QStringLiteral("requirement_sim"), double(matcher_->settings().similarity));
    return status;
}

}  // namespace autoscene::engine
