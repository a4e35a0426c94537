#include "ScreenConditions.h"

#include "ColorCondition.h"
#include "EditorConditions.h"
#include "ImageCondition.h"
#include "LabelCondition.h"
#include "RuntimeDefinitions.h"
#include "RuntimeFactory.h"
#include "TaskDocument.h"
#include "TaskImages.h"

namespace autoscene::engine {

using namespace autoscene::model;

std::shared_ptr<TemplateMatcher> makeTemplateMatcher(const TaskDocument& task, int imageId,
                                                     std::optional<QRect> searchRect) {
    TemplateMatcher::Settings settings;
    settings.searchRect = searchRect;
    settings.expandSizePx = task.settings.expandSize;
    if (const ImageRecord* image = task.image(imageId)) {
        settings.filePath = imageFilePath(task, *image).value_or(QString());
        settings.imageType = MatchImageType(image->type);
        settings.similarity = image->sim;
        settings.thresholdValue = image->threshold;
        settings.filterColor = image->filterColor;
        settings.filterSimilarity = image->filterSim;
    }
    return std::make_shared<TemplateMatcher>(settings);
}

void registerScreenConditions(RuntimeFactory& factory) {
    factory.addCondition(
        EditorImageCondition::kType, [](const IEditorCondition& record, RunContext& context) {
            const auto& r = static_cast<const EditorImageCondition&>(record);
            const SearchArea area(context.definitions, r.searchId);
            const ImageRecord* image = context.task.image(r.imageId);
            return std::make_unique<ImageCondition>(
                r.relation(),
                ScreenItem::Settings{r.state == 1 ? kFound : kNotFound, r.timeout, r.resetTimeout},
                context.clock, image ? image->name : QString(),
                makeTemplateMatcher(context.task, r.imageId, area.crop()), area);
        });
    factory.addCondition(
        EditorColorCondition::kType, [](const IEditorCondition& record, RunContext& context) {
            const auto& r = static_cast<const EditorColorCondition&>(record);
            return std::make_unique<ColorCondition>(
                r.relation(), ScreenItem::Settings{r.state, r.timeout, false}, context.clock,
                searchColour(context.task, r.colorId), context.definitions.cropRect(r.searchId),
                ColorCondition::Tests{r.count, r.countTolerance});
        });
    factory.addCondition(
        EditorLabelCondition::kType, [](const IEditorCondition& record, RunContext& context) {
            const auto& r = static_cast<const EditorLabelCondition&>(record);
            return std::make_unique<LabelCondition>(
                r.relation(),
                ScreenItem::Settings{r.state == 1 ? kFound : kNotFound, r.timeout, r.resetTimeout},
                context.clock, context.labels, r.labelId, r.sim,
                SearchArea(context.definitions, r.searchId));
        });
}

}  // namespace autoscene::engine
