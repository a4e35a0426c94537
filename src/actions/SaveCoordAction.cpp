#include "actions/SaveCoordAction.h"

#include "actions/FindClick.h"
#include "engine/MVVariable.h"
#include "engine/RectList.h"

namespace autoscene::actions {

SaveCoordAction::SaveCoordAction(int type, engine::MVVariable* variable, std::optional<QRect> area,
                                 SaveCoordKind kind)
    : engine::IAction(type, 0.0f), variable_(variable), area_(area), kind_(kind) {}

QRect SaveCoordAction::saved(QPoint origin, const QRect& found) const {
    const QRect rect = clickRect(area_, origin, found.topLeft(), found);
    return kind_ == SaveCoordKind::Centre ? QRect(rect.center(), QSize(1, 1)) : rect;
}

void SaveCoordAction::report(const std::vector<QRect>& found, float bestScore,
                             const std::pair<QString, QString>& sought, const QString& error) {
    const QString text = engine::formatRectList(found);
    if (variable_ && !found.empty()) {
        variable_->setValue(text);
    }
    setResult({{QStringLiteral("type"), type()},
               {QStringLiteral("variable_name"), variable_ ? variable_->name() : QString()},
               {sought.first, sought.second},
               {QStringLiteral("exist"), !found.empty()},
               {QStringLiteral("err"), error},
               {QStringLiteral("sim"), double(bestScore)},
               {QStringLiteral("rects"), text}});
}

}  // namespace autoscene::actions
