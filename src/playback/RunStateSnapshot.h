#pragma once
// A worker's run state between two cycles as JSON: every variable, timer and alarm, the
// current scene and each scene's progress. A recording keeps it after each cycle; a replay
// puts it back before the next one, so that a changed decision does not carry over.

#include <QJsonObject>
#include <memory>
#include <vector>

namespace autoscene::engine {
class RuntimeDefinitions;
class Scene;
struct TaskInfo;
}  // namespace autoscene::engine

namespace autoscene::playback {

using Scenes = std::vector<std::unique_ptr<engine::Scene>>;

// {"variables": {id: state}, "scene": index or -1, "scenes": {index: [recognised,
// last event fired, recognised since ms]}} of the calling worker.
QJsonObject saveRunState(const engine::TaskInfo& task, const engine::RuntimeDefinitions& values,
                         const Scenes& scenes);

// Puts the calling worker's state back; ids and scene indexes the task does not have
// are left out.
void restoreRunState(const QJsonObject& state, engine::TaskInfo& task,
                     engine::RuntimeDefinitions& values, const Scenes& scenes);

}  // namespace autoscene::playback
