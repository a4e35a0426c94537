#pragma once
// Turns the records of a task into runtime conditions and actions. The engine knows
// the conditions on run state; the other kinds register their builders here.

#include <functional>
#include <map>
#include <memory>

#include "IAction.h"
#include "ICondition.h"
#include "RunContext.h"

namespace autoscene::model {
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

    // Knows the variable, timer, alarm and group conditions.
    RuntimeFactory();

    void addCondition(int type, ConditionBuilder builder);
    void addAction(int type, ActionBuilder builder);

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
};

}  // namespace autoscene::engine
