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
    // True once the run has ended or its time is up: work that can run long (a script)
    // polls it to give up early.
    virtual bool stopRequested() const = 0;
    // The exclusive queue: while the calling worker heads it, the other workers wait at
    // their next check. Entering twice queues once; leaving unqueued does nothing.
    virtual void enterExclusive() = 0;
    virtual void leaveExclusive() = 0;
};

struct RunContext {
    const model::TaskDocument& task;
    RuntimeDefinitions& definitions;
    RunClock& clock;
    ITargetService& targets;
    IRunControl& control;
};

}  // namespace autoscene::engine
