#include "conditions/ImageCondition.h"

#include "engine/RectList.h"

namespace autoscene::conditions {

ImageCondition::ImageCondition(int relation, Settings settings, const engine::RunClock& clock,
                               QString imageName,
                               std::shared_ptr<recognition::TemplateMatcher> matcher,
                               engine::SearchArea searchArea)
    : engine::ScreenItem(kType, relation, settings, clock),
      imageName_(std::move(imageName)),
      matcher_(std::move(matcher)),
      searchArea_(std::move(searchArea)) {}

int ImageCondition::detect(engine::TaskInfo& task) {
    results_.get() = matcher_->find(task.frame, searchArea_.variableRects(), task.cycleCount);
    return matcher_->record().found ? engine::kFound : engine::kNotFound;
}

recognition::MatchResult ImageCondition::result(std::thread::id thread) const {
    const recognition::MatchResult* result = results_.find(thread);
    return result ? *result : recognition::MatchResult{};
}

void ImageCondition::clearThreadState() {
    engine::ScreenItem::clearThreadState();
    results_.clear();
}

QJsonObject ImageCondition::describe(std::thread::id thread) const {
    QJsonObject status = engine::ScreenItem::describe(thread);
    const recognition::MatchResult current = result(thread);
    status.insert(QStringLiteral("name"), imageName_);
    status.insert(QStringLiteral("err"), recognition::matchStatusText(current.status));
    status.insert(QStringLiteral("sim"), double(current.score));
    status.insert(QStringLiteral("rect"), engine::formatRectList({current.match}));
    status.insert(QStringLiteral("requirement_sim"), double(matcher_->settings().similarity));
    return status;
}

}  // namespace autoscene::conditions
