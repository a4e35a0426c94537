#include "model/TaskSummary.h"

namespace autoscene::model {

TaskSummary summarise(const TaskDocument& task) {
    TaskSummary summary;
    summary.scenes = int(task.scenes.size());
    TaskDocument::forEachScene(
        task, [&](const EditorScene& scene) { summary.events += int(scene.events.size()); });
    task.forEachCondition([&](const IEditorItem&) { ++summary.conditions; });
    task.forEachAction([&](const IEditorItem&) { ++summary.actions; });
    summary.definitions = int(task.definitions.size());
    summary.images = int(task.images.size());
    summary.colors = int(task.colors.size());
    return summary;
}

}  // namespace autoscene::model
