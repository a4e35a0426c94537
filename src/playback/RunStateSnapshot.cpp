#include "playback/RunStateSnapshot.h"

#include <QJsonArray>
#include <thread>

#include "engine/RuntimeDefinitions.h"
#include "engine/Scene.h"
#include "engine/TaskInfo.h"

namespace autoscene::playback {

QJsonObject saveRunState(const engine::TaskInfo& task, const engine::RuntimeDefinitions& values,
                         const Scenes& scenes) {
    const std::thread::id self = std::this_thread::get_id();
    QJsonObject variables;
    values.forEach([&](const engine::MVVariable& variable) {
        variables.insert(QString::number(variable.id()), variable.saveState(self));
    });
    int current = -1;
    QJsonObject progress;
    for (size_t i = 0; i < scenes.size(); ++i) {
        const engine::Scene& scene = *scenes[i];
        if (&scene == task.currentScene) {
            current = int(i);
        }
        if (const engine::Scene::ThreadState* state = scene.state.find(self)) {
            progress.insert(QString::number(i), QJsonArray{state->recognised, state->lastFired,
                                                           double(state->recognisedSinceMs)});
        }
    }
    return {{"variables", variables}, {"scene", current}, {"scenes", progress}};
}

void restoreRunState(const QJsonObject& state, engine::TaskInfo& task,
                     engine::RuntimeDefinitions& values, const Scenes& scenes) {
    const QJsonObject variables = state["variables"].toObject();
    for (auto it = variables.begin(); it != variables.end(); ++it) {
        bool number = false;
        const int id = it.key().toInt(&number);
        if (engine::MVVariable* variable = number ? values.find(id) : nullptr) {
            variable->restoreState(it.value());
        }
    }
    const int current = state["scene"].toInt(-1);
    task.currentScene =
        current >= 0 && size_t(current) < scenes.size() ? scenes[size_t(current)].get() : nullptr;
    const QJsonObject progress = state["scenes"].toObject();
    for (size_t i = 0; i < scenes.size(); ++i) {
        const QJsonArray saved = progress[QString::number(i)].toArray();
        engine::Scene::ThreadState& own = scenes[i]->state.get();
        own.recognised = saved.at(0).toBool();
        own.lastFired = saved.at(1).toInt(-1);
        own.recognisedSinceMs = std::int64_t(saved.at(2).toDouble());
    }
}

}  // namespace autoscene::playback
