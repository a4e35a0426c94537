#pragma once
// Actions that change only run state: variables, reset all, delay, stop.

#include <QString>
#include <vector>

#include "engine/IAction.h"
#include "engine/RunContext.h"

namespace autoscene::engine {

class MVVariable;
class RuntimeDefinitions;
class RunClock;

// Set, plus, sub and reset of one variable. Results: "original", "modify", "err".
class VariableAction : public IAction {
public:
    enum class Kind { Set = 0, Plus = 1, Sub = 2, Reset = 3 };

    VariableAction(Kind kind, MVVariable* variable, QString literal, MVVariable* source);
    float run(TaskInfo& task) override;

private:
    QString newValue(const QString& current, QString& error) const;

    const Kind kind_;
    MVVariable* variable_;
    const QString literal_;
    MVVariable* source_;  // set from this variable instead of the literal
};

class MVResetAllVariableAction : public IAction {
public:
    MVResetAllVariableAction(RuntimeDefinitions& definitions, std::vector<int> exclude);
    float run(TaskInfo& task) override;

private:
    RuntimeDefinitions& definitions_;
    const std::vector<int> exclude_;
};

// Waits a random whole number of seconds from min to max.
class DelayAction : public IAction {
public:
    DelayAction(int minSeconds, int maxSeconds, RunClock& clock);
    float run(TaskInfo& task) override;

private:
    const int minSeconds_;
    const int maxSeconds_;
    RunClock& clock_;
};

class StopAction : public IAction {
public:
    explicit StopAction(IRunControl& control) : IAction(10, 0.0f), control_(control) {}
    float run(TaskInfo& task) override;

private:
    IRunControl& control_;
};

}  // namespace autoscene::engine
