#include "script/ScriptItems.h"

#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "script/JavaScriptCondition.h"
#include "script/MVJavaScriptAction.h"

namespace autoscene::script {

void registerScriptItems(engine::RuntimeFactory& factory) {
    factory.addCondition<model::EditorJavaScriptCondition>(
        [](const model::EditorJavaScriptCondition& r, engine::RunContext& context) {
            return std::make_unique<JavaScriptCondition>(r.relation(), r.jsCode, context);
        });
    factory.addAction<model::EditorJavaScriptAction>(
        [](const model::EditorJavaScriptAction& r, engine::RunContext& context) {
            return std::make_unique<MVJavaScriptAction>(r.jsCode, context.definitions.find(r.varId),
                                                        context);
        });
}

}  // namespace autoscene::script
