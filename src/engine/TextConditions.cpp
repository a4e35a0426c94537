#include "TextConditions.h"

#include "EditorConditions.h"
#include "RuntimeFactory.h"
#include "ScreenTextCondition.h"

namespace autoscene::engine {

void registerTextConditions(RuntimeFactory& factory, std::shared_ptr<const OcrClient> client) {
    factory.addCondition(
        model::EditorScreenTextCondition::kType,
        [client](const model::IEditorCondition& record, RunContext& context) {
            const auto& r = static_cast<const model::EditorScreenTextCondition&>(record);
            return std::make_unique<ScreenTextCondition>(
                r.relation(), ScreenItem::Settings{kFound, r.timeout, r.resetTimeout},
                context.clock, makeTextSearch(r.textInfo, context, client));
        });
}

}  // namespace autoscene::engine
