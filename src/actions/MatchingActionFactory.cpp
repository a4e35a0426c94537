#include "actions/ActionGroups.h"

#include "actions/ImageAction.h"
#include "actions/LabelAction.h"
#include "actions/MVClickColorAction.h"
#include "actions/MVSaveCoordAction.h"
#include "actions/MVSaveLabelCoordAction.h"
#include "conditions/ScreenConditions.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"
#include "model/TaskDocument.h"
#include "recognition/LabelDetector.h"

namespace autoscene::actions {

using namespace autoscene::model;
using engine::RunContext;
using engine::SearchArea;

namespace {

ImageAction::Target imageTarget(RunContext& c, int imageId, int searchId) {
    const SearchArea area(c.definitions, searchId);
    const ImageRecord* image = c.task.image(imageId);
    return {image ? image->name : QString(),
            conditions::makeTemplateMatcher(c.task, imageId, area.crop()), area,
            image ? image->rect.topLeft() : QPoint()};
}

LabelTarget labelTarget(recognition::ILabelDetector* labels, RunContext& c, int labelId, float sim,
                        int searchId) {
    return {labels, labelId, sim, SearchArea(c.definitions, searchId)};
}

}  // namespace

void registerMatchingActions(engine::RuntimeFactory& factory,
                             const conditions::ScreenServices& services) {
    recognition::ILabelDetector* const labels = services.labels.get();
    factory.addAction<EditorImageAction>([](const EditorImageAction& r, RunContext& c) {
        return std::make_unique<ImageAction>(
            c, imageTarget(c, r.imageId, r.searchId), c.definitions.cropRect(r.deviationId),
            platform::mouseOpOf(r.button), ClickTiming{r.pressTime, r.clickTimes, r.interval},
            r.postpone);
    });
    factory.addAction<EditorSaveCoordAction>([](const EditorSaveCoordAction& r, RunContext& c) {
        return std::make_unique<MVSaveCoordAction>(
            imageTarget(c, r.imageId, r.searchId), c.definitions.find(r.variableId),
            c.definitions.cropRect(r.deviationId), SaveCoordKind(r.saveType == 1 ? 1 : 0));
    });
    factory.addAction<EditorClickColorAction>([](const EditorClickColorAction& r, RunContext& c) {
        return std::make_unique<MVClickColorAction>(
            c, recognition::searchColour(c.task, r.colorId), SearchArea(c.definitions, r.searchId),
            c.definitions.cropRect(r.deviationId), platform::mouseOpOf(r.button),
            ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
    });
    factory.addAction<EditorLabelAction>([labels](const EditorLabelAction& r, RunContext& c) {
        return std::make_unique<LabelAction>(
            c, labelTarget(labels, c, r.labelId, r.sim, r.searchId),
            c.definitions.cropRect(r.deviationId), platform::mouseOpOf(r.button),
            ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
    });
    factory.addAction<EditorSaveLabelCoordAction>([labels](const EditorSaveLabelCoordAction& r,
                                                           RunContext& c) {
        return std::make_unique<MVSaveLabelCoordAction>(
            labelTarget(labels, c, r.labelId, r.sim, r.searchId), c.definitions.find(r.variableId),
            c.definitions.cropRect(r.deviationId), SaveCoordKind(r.saveType == 1 ? 1 : 0));
    });
}

}  // namespace autoscene::actions
