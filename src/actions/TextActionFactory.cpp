#include "actions/ActionGroups.h"

#include "actions/MVClickTextAction.h"
#include "actions/MVScreenValueAction.h"
#include "conditions/ScreenConditions.h"
#include "conditions/TextSearch.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"

namespace autoscene::actions {

using namespace autoscene::model;
using engine::RunContext;

void registerTextActions(engine::RuntimeFactory& factory,
                         const conditions::ScreenServices& services) {
    const std::shared_ptr<const text::OcrClient> client = services.ocr;
    factory.addAction<EditorClickTextAction>(
        [client](const EditorClickTextAction& r, RunContext& c) {
            return std::make_unique<MVClickTextAction>(
                c, conditions::makeTextSearch(r.textInfo, c, client),
                c.definitions.cropRect(r.deviationId), platform::mouseOpOf(r.button),
                ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
        });
    factory.addAction<EditorScreenValueAction>([client](const EditorScreenValueAction& r,
                                                        RunContext& c) {
        auto reader = std::make_shared<text::TextRegionReader>(
            client, conditions::textPreparationOf(r.imageType, r.threshold, r.filterColor.text,
                                                  r.filterSim));
        return std::make_unique<MVScreenValueAction>(std::move(reader),
                                                     engine::SearchArea(c.definitions, r.searchId),
                                                     c.definitions.find(r.variableId));
    });
}

}  // namespace autoscene::actions
