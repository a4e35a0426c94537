#pragma once
// A recorded cycle's decisions and run state as tree rows: what the viewer lists beside the
// frame.

#include <QJsonObject>
#include <QString>
#include <optional>

class QTreeWidget;
class QTreeWidgetItem;

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::ui {

// The event a decision row belongs to, for opening it in the editor.
struct DecisionEvent {
    QString scene;
    QString event;  // empty for the scene's identification
};

// One row per check (the scene's identification or an event: held or not) with its conditions
// below, then one per event fired with its actions' results, then the scene the cycle ended on.
void showDecisions(QTreeWidget& tree, const QJsonObject& cycleLine);
// The event of a row of showDecisions or of one of its children; nothing for other rows.
std::optional<DecisionEvent> decisionEventOf(const QTreeWidgetItem* row);

// The variables, timers and alarms after the cycle, named as `task` (the recorded task) names
// them.
void showRunState(QTreeWidget& tree, const QJsonObject& cycleLine, const model::TaskDocument& task);

}  // namespace autoscene::ui
