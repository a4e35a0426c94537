#include "actions/MVScreenValueAction.h"

#include <QLoggingCategory>

#include "engine/MVVariable.h"

namespace autoscene::actions {

Q_LOGGING_CATEGORY(lcScreenValue, "autoscene.actions.screenvalue")

MVScreenValueAction::MVScreenValueAction(std::shared_ptr<text::TextRegionReader> reader,
                                         engine::SearchArea area, engine::MVVariable* variable)
    : IAction(kType, 0.0f),
      reader_(std::move(reader)),
      area_(std::move(area)),
      variable_(variable) {}

float MVScreenValueAction::run(TaskInfo& task) {
    const std::vector<QRect> rects = area_.rects();
    const std::optional<QRect> rect =
        rects.empty() ? std::nullopt : std::optional<QRect>(rects.front());
    qCDebug(lcScreenValue) << "MVScreenValueAction rect:"
                           << rect.value_or(QRect(0, 0, task.frame.cols, task.frame.rows));
    const QString value = reader_->read(task.frame, rect, task.cycleCount, task.stop).whole;
    bool changed = false;
    if (variable_) {
        changed = variable_->value() != value;
        variable_->setValue(value);
    }
    setResult({{QStringLiteral("type"), type()},
               {QStringLiteral("variable_name"), variable_ ? variable_->name() : QString()},
               {QStringLiteral("value"), value},
               {QStringLiteral("changed"), changed}});
    return waitSeconds();
}

}  // namespace autoscene::actions
