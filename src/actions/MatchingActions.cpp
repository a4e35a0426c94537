#include "MatchingActions.h"

#include "EditorActions.h"
#include "ImageAction.h"
#include "LabelAction.h"
#include "MVClickColorAction.h"
#include "MVSaveCoordAction.h"
#include "MVSaveLabelCoordAction.h"
#include "RuntimeDefinitions.h"
#include "RuntimeFactory.h"
#include "ScreenConditions.h"
#include "TaskDocument.h"

namespace autoscene::actions {

using namespace autoscene::model;
using engine::RunContext;
using engine::SearchArea;

namespace {

ImageAction::Target imageTarget(RunContext& c, int imageId, int searchId) {
    const SearchArea area(c.definitions, searchId);
    const ImageRecord* image = c.task.image(imageId);
    return {image ? image->name : QString(),
            engine::makeTemplateMatcher(c.task, imageId, area.crop()), area,
            image ? image->rect.topLeft() : QPoint()};
}

LabelTarget labelTarget(RunContext& c, int labelId, float sim, int searchId) {
    return {c.labels, labelId, sim, SearchArea(c.definitions, searchId)};
}

}  // namespace

void registerMatchingActions(engine::RuntimeFactory& factory) {
    factory.addAction(EditorImageAction::kType, [](const IEditorAction& record, RunContext& c) {
        const auto& r = static_cast<const EditorImageAction&>(record);
        return std::make_unique<ImageAction>(
            c, imageTarget(c, r.imageId, r.searchId), c.definitions.cropRect(r.deviationId),
            mouseOpOf(r.button), ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
    });
    factory.addAction(EditorSaveCoordAction::kType, [](const IEditorAction& record, RunContext& c) {
        const auto& r = static_cast<const EditorSaveCoordAction&>(record);
        return std::make_unique<MVSaveCoordAction>(
            imageTarget(c, r.imageId, r.searchId), c.definitions.find(r.variableId),
            c.definitions.cropRect(r.deviationId), SaveCoordKind(r.saveType == 1 ? 1 : 0));
    });
    factory.addAction(
        EditorClickColorAction::kType, [](const IEditorAction& record, RunContext& c) {
            const auto& r = static_cast<const EditorClickColorAction&>(record);
            return std::make_unique<MVClickColorAction>(
                c, engine::searchColour(c.task, r.colorId), SearchArea(c.definitions, r.searchId),
                c.definitions.cropRect(r.deviationId), mouseOpOf(r.button),
                ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
        });
    factory.addAction(EditorLabelAction::kType, [](const IEditorAction& record, RunContext& c) {
        const auto& r = static_cast<const EditorLabelAction&>(record);
        return std::make_unique<LabelAction>(
            c, labelTarget(c, r.labelId, r.sim, r.searchId), c.definitions.cropRect(r.deviationId),
            mouseOpOf(r.button), ClickTiming{r.pressTime, r.clickTimes, r.interval}, r.postpone);
    });
    factory.addAction(
        EditorSaveLabelCoordAction::kType, [](const IEditorAction& record, RunContext& c) {
            const auto& r = static_cast<const EditorSaveLabelCoordAction&>(record);
            return std::make_unique<MVSaveLabelCoordAction>(
                labelTarget(c, r.labelId, r.sim, r.searchId), c.definitions.find(r.variableId),
                c.definitions.cropRect(r.deviationId), SaveCoordKind(r.saveType == 1 ? 1 : 0));
        });
}

}  // namespace autoscene::actions
