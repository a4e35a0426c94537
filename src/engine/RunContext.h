#pragma once
// What runtime conditions and actions are built with: the task, its runtime
// definitions, the clock, the targets and the run they belong to.

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::engine {

class RuntimeDefinitions;
class RunClock;
class ITargetService;

// The run as actions see it.
class IRunControl {
public:
    virtual ~IRunControl() = default;
    // Ends the whole run at the task's own request (the stop action).
    virtual void stopByTask() = 0;
    // Ends the calling worker's target with a finish code.
    virtual void finishCurrentTarget(int code) = 0;
};

struct RunContext {
    const model::TaskDocument& task;
    RuntimeDefinitions& definitions;
    RunClock& clock;
    ITargetService& targets;
    IRunControl& control;
};

}  // namespace autoscene::engine
