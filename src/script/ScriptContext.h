#pragma once
// What the script objects of one evaluation reach: the task, and during a run its
// variables, the calling worker and the run control. The editor's test button has a
// task only.

namespace autoscene::platform {
class IWindowControl;
}
namespace autoscene::model {
class TaskDocument;
}
namespace autoscene::engine {
class RuntimeDefinitions;
class IRunControl;
struct TaskInfo;
}  // namespace autoscene::engine

namespace autoscene::script {

class Clipboard;

struct ScriptContext {
    const model::TaskDocument& task;
    engine::RuntimeDefinitions* definitions = nullptr;
    engine::TaskInfo* worker = nullptr;
    engine::IRunControl* control = nullptr;
    Clipboard* clipboard = nullptr;  // none: the clipboard reads empty and keeps nothing
    platform::IWindowControl* windows = nullptr;  // none: the window methods find nothing
};

}  // namespace autoscene::script
