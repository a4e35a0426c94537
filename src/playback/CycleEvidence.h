#pragma once
// The evidence of one cycle's decisions as JSON, the one form that the trace, the
// recordings and their replay share.

#include <QJsonArray>
#include <QJsonObject>

namespace autoscene::engine {
class ItemGroup;
class RuntimeEvent;
class Scene;
}  // namespace autoscene::engine

namespace autoscene::playback {

// Whether a scene's identification (`kind` "identification") or one of its events (`kind`
// "event") holds, with every condition's state on the calling thread (scores, counts,
// places, errors): {"scene", kind: name, "holds", "conditions"}.
QJsonObject conditionCheck(const engine::Scene& scene, const QString& kind, const QString& name,
                           const engine::ItemGroup* conditions, bool holds);

// The result record of each of the event's actions on the calling thread.
QJsonArray actionResults(const engine::RuntimeEvent& event);

}  // namespace autoscene::playback
