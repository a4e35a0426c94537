#include "ActionFactory.h"

#include "EditorActions.h"
#include "RuntimeDefinitions.h"
#include "RuntimeFactory.h"
#include "StateActions.h"

namespace autoscene::actions {

using namespace autoscene::model;
using engine::RunContext;

void registerStateActions(engine::RuntimeFactory& factory) {
    factory.addAction(
        EditorVariableAction::kType, [](const IEditorAction& record, RunContext& context) {
            const auto& r = static_cast<const EditorVariableAction&>(record);
            const int kind = r.changeType >= 0 && r.changeType <= 3 ? r.changeType : 0;
            return std::make_unique<VariableAction>(
                VariableAction::Kind(kind), context.definitions.find(r.variableId), r.changeValue,
                r.isVariableChange ? context.definitions.find(r.contentVariableId) : nullptr);
        });
    factory.addAction(
        EditorResetAllAction::kType, [](const IEditorAction& record, RunContext& context) {
            const auto& r = static_cast<const EditorResetAllAction&>(record);
            return std::make_unique<MVResetAllVariableAction>(context.definitions, r.exclude);
        });
    factory.addAction(EditorDelayAction::kType,
                      [](const IEditorAction& record, RunContext& context) {
                          const auto& r = static_cast<const EditorDelayAction&>(record);
                          return std::make_unique<DelayAction>(r.min, r.max, context.clock);
                      });
    factory.addAction(EditorStopAction::kType, [](const IEditorAction&, RunContext& context) {
        return std::make_unique<StopAction>(context.control);
    });
}

}  // namespace autoscene::actions
