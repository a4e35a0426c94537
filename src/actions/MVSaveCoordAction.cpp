#include "actions/MVSaveCoordAction.h"

namespace autoscene::actions {

MVSaveCoordAction::MVSaveCoordAction(ImageAction::Target target, engine::MVVariable* variable,
                                     std::optional<QRect> area, SaveCoordKind kind)
    : SaveCoordAction(kType, variable, area, kind), target_(std::move(target)) {}

float MVSaveCoordAction::run(TaskInfo& task) {
    recognition::TemplateMatcher& matcher = *target_.matcher;
    std::vector<QRect> searched = target_.searchArea.variableRects();
    if (searched.empty()) {
        searched.push_back(matcher.defaultRect(task.frame));
    }
    matcher.matchRects(task.frame, searched, true, task.cycleCount);

    const recognition::MatchRecord& record = matcher.record();
    std::vector<QRect> found;
    float bestScore = 0.0f;
    for (size_t i = 0; i < record.resultCount; ++i) {
        const recognition::MatchResult& result = record.results[i];
        bestScore = std::max(bestScore, result.score);
        if (result.status != recognition::kMatchOk ||
            result.score < matcher.settings().similarity) {
            continue;
        }
        found.push_back(saved(target_.origin, result.match));
    }
    const int status = found.empty() ? record.status : recognition::kMatchOk;
    report(found, bestScore, {QStringLiteral("image_name"), target_.name},
           hasVariable() ? recognition::matchStatusText(status) : variableMissingText());
    return 0.0f;
}

}  // namespace autoscene::actions
