#include "script/ScriptItems.h"

#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "script/JavaScriptCondition.h"
#include "script/MVJavaScriptAction.h"

namespace autoscene::script {

void registerScriptItems(engine::RuntimeFactory& factory, platform::IWindowControl* windows) {
    factory.addCondition<model::EditorJavaScriptCondition>(
        [windows](const model::EditorJavaScriptCondition& r, engine::RunContext& context) {
            return std::make_unique<JavaScriptCondition>(r.relation(), r.jsCode, context, windows);
        });
    factory.addAction<model::EditorJavaScriptAction>(
        [windows](const model::EditorJavaScriptAction& r, engine::RunContext& context) {
            return std::make_unique<MVJavaScriptAction>(r.jsCode, context.definitions.find(r.varId),
                                                        context, windows);
        });
}

}  // namespace autoscene::script
