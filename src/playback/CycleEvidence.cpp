#include "playback/CycleEvidence.h"

#include <thread>

#include "engine/IAction.h"
#include "engine/ItemGroup.h"
#include "engine/Scene.h"

namespace autoscene::playback {

QJsonObject conditionCheck(const engine::Scene& scene, const QString& kind, const QString& name,
                           const engine::ItemGroup* conditions, bool holds) {
    return {{"scene", scene.name},
            {kind, name},
            {"holds", holds},
            {"conditions",
             conditions ? conditions->describe(std::this_thread::get_id()) : QJsonObject()}};
}

QJsonArray actionResults(const engine::RuntimeEvent& event) {
    QJsonArray results;
    for (const auto& action : event.actions) {
        results.append(action->state(std::this_thread::get_id()));
    }
    return results;
}

}  // namespace autoscene::playback
