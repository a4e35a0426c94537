#include "MVSaveCoordAction.h"

#include "MVVariable.h"
#include "RectList.h"

namespace autoscene::actions {

QRect savedRect(const std::optional<QRect>& area, QPoint origin, const QRect& found,
                SaveCoordKind kind) {
    const QRect rect = clickRect(area, origin, found.topLeft(), found);
    return kind == SaveCoordKind::Centre ? QRect(rect.center(), QSize(1, 1)) : rect;
}

QString storeRects(engine::MVVariable* variable, const std::vector<QRect>& found) {
    QString text = engine::formatRectList(found);
    if (variable && !found.empty()) {
        variable->setValue(text);
    }
    return text;
}

MVSaveCoordAction::MVSaveCoordAction(ImageAction::Target target, engine::MVVariable* variable,
                                     std::optional<QRect> area, SaveCoordKind kind)
    : IAction(kType, 0.0f),
      target_(std::move(target)),
      variable_(variable),
      area_(area),
      kind_(kind) {}

float MVSaveCoordAction::run(TaskInfo& task) {
    engine::TemplateMatcher& matcher = *target_.matcher;
    std::vector<QRect> searched = target_.searchArea.variableRects();
    if (searched.empty()) {
        searched.push_back(matcher.defaultRect(task.frame));
    }
    matcher.matchRects(task.frame, searched, true, task.cycleCount);

    const engine::MatchRecord& record = matcher.record();
    std::vector<QRect> found;
    float bestScore = 0.0f;
    for (size_t i = 0; i < record.resultCount; ++i) {
        const engine::MatchResult& result = record.results[i];
        bestScore = std::max(bestScore, result.score);
        if (result.status != engine::kMatchOk || result.score < matcher.settings().similarity) {
            continue;
        }
        found.push_back(savedRect(area_, target_.origin, result.match, kind_));
    }
    const QString text = storeRects(variable_, found);
    const int status = found.empty() ? record.status : engine::kMatchOk;
    setResult({{QStringLiteral("type"), type()},
               {QStringLiteral("variable_name"), variable_ ? variable_->name() : QString()},
               {QStringLiteral("image_name"), target_.name},
               {QStringLiteral("exist"), !found.empty()},
               {QStringLiteral("err"),
                variable_ ? engine::matchStatusText(status) : QStringLiteral("variable not found")},
               {QStringLiteral("sim"), double(bestScore)},
               {QStringLiteral("rects"), text}});
    return 0.0f;
}

}  // namespace autoscene::actions
