#include "TextActions.h"

#include "EditorActions.h"
#include "MVClickTextAction.h"
#include "MVScreenValueAction.h"
#include "RuntimeDefinitions.h"
#include "RuntimeFactory.h"

namespace autoscene::actions {

using namespace autoscene::model;
using engine::RunContext;

void registerTextActions(engine::RuntimeFactory& factory,
                         std::shared_ptr<const engine::OcrClient> client) {
    factory.addAction(EditorClickTextAction::kType, [client](const IEditorAction& record,
                                                             RunContext& c) {
        const auto& r = static_cast<const EditorClickTextAction&>(record);
        return std::make_unique<MVClickTextAction>(
            c, engine::makeTextSearch(r.textInfo, c, client), c.definitions.cropRect(r.deviationId),
            mouseOpOf(r.button), ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
    });
    factory.addAction(EditorScreenValueAction::kType, [client](const IEditorAction& record,
                                                               RunContext& c) {
        const auto& r = static_cast<const EditorScreenValueAction&>(record);
        auto reader = std::make_shared<engine::TextRegionReader>(
            client,
            engine::textPreparationOf(r.imageType, r.threshold, r.filterColor.text, r.filterSim));
        return std::make_unique<MVScreenValueAction>(std::move(reader),
                                                     engine::SearchArea(c.definitions, r.searchId),
                                                     c.definitions.find(r.variableId));
    });
}

}  // namespace autoscene::actions
