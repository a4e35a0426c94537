#pragma once
// Turns the records of a task into runtime conditions and actions. The engine knows
// the conditions and actions on run state; the other kinds register their builders here.

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "engine/IAction.h"
#include "engine/ICondition.h"
#include "engine/RunContext.h"

namespace autoscene::model {
class TaskDocument;
class IEditorCondition;
class IEditorAction;
}  // namespace autoscene::model

namespace autoscene::engine {

class ItemGroup;

class RuntimeFactory {
public:
    using ConditionBuilder =
        std::function<std::unique_ptr<ICondition>(const model::IEditorCondition&, RunContext&)>;
    using ActionBuilder =
        std::function<std::unique_ptr<IAction>(const model::IEditorAction&, RunContext&)>;

    using RunStartHook = std::function<void(const model::TaskDocument&)>;

    // Knows the variable, timer, alarm and group conditions and the variable, reset-all,
    // delay and stop actions.
    RuntimeFactory();

    // Registering a kind twice throws std::logic_error: two builders for one kind is a
    // wiring fault, never a choice.
    void addCondition(int type, ConditionBuilder builder);
    void addAction(int type, ActionBuilder builder);

    // Typed forms: the record class names the kind, the builder sees the record as that class.
    template <class Record, class Build>
    void addCondition(Build build) {
        addCondition(
            Record::kType,
            [build = std::move(build)](const model::IEditorCondition& record,
                                       RunContext& context) -> std::unique_ptr<ICondition> {
                return build(static_cast<const Record&>(record), context);
            });
    }
    template <class Record, class Build>
    void addAction(Build build) {
        addAction(Record::kType,
                  [build = std::move(build)](const model::IEditorAction& record,
                                             RunContext& context) -> std::unique_ptr<IAction> {
                      return build(static_cast<const Record&>(record), context);
                  });
    }

    // Called by the runner as each run starts, before its first cycle (a model to load).
    void addRunStartHook(RunStartHook hook) { runStartHooks_.push_back(std::move(hook)); }
    const std::vector<RunStartHook>& runStartHooks() const { return runStartHooks_; }
    // Called once per run by its last worker as it leaves, before the run counts as idle.
    void addRunEndHook(std::function<void()> hook) { runEndHooks_.push_back(std::move(hook)); }
    const std::vector<std::function<void()>>& runEndHooks() const { return runEndHooks_; }

    // A kind without a builder becomes an item that never holds (or does nothing)
    // and says so in its status.
    std::unique_ptr<ICondition> condition(const model::IEditorCondition& record,
                                          RunContext& context) const;
    std::unique_ptr<ItemGroup> group(const model::IEditorCondition& record,
                                     RunContext& context) const;
    std::unique_ptr<IAction> action(const model::IEditorAction& record, RunContext& context) const;

private:
    std::map<int, ConditionBuilder> conditions_;
    std::map<int, ActionBuilder> actions_;
    std::vector<RunStartHook> runStartHooks_;
    std::vector<std::function<void()>> runEndHooks_;
};

}  // namespace autoscene::engine
