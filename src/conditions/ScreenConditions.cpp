#include "conditions/ScreenConditions.h"

#include "conditions/ColorCondition.h"
#include "conditions/ImageCondition.h"
#include "conditions/LabelCondition.h"
#include "conditions/ScreenTextCondition.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorConditions.h"
#include "model/TaskDocument.h"
#include "model/TaskImages.h"
#include "recognition/LabelDetector.h"

namespace autoscene::conditions {

using namespace autoscene::model;
using recognition::TemplateMatcher;

std::shared_ptr<recognition::TemplateMatcher> makeTemplateMatcher(const TaskDocument& task,
                                                                  int imageId,
                                                                  std::optional<QRect> searchRect) {
    recognition::TemplateMatcher::Settings settings;
    settings.searchRect = searchRect;
    settings.expandSizePx = task.settings.expandSize;
    if (const ImageRecord* image = task.image(imageId)) {
        settings.filePath = imageFilePath(task, *image).value_or(QString());
        settings.imageType = recognition::MatchImageType(image->type);
        settings.similarity = image->sim;
        settings.thresholdValue = image->threshold;
        settings.filterColor = image->filterColor;
        settings.filterSimilarity = image->filterSim;
    }
    return std::make_shared<recognition::TemplateMatcher>(settings);
}

void registerScreenConditions(engine::RuntimeFactory& factory, const ScreenServices& services) {
    factory.addRunStartHook([labels = services.labels](const TaskDocument& task) {
        if (labels && task.usesLabels()) {
            labels->load(recognition::labelModelFiles(task.folderPath, task.modelId));
        }
    });
    factory.addCondition<EditorImageCondition>(
        [](const EditorImageCondition& r, engine::RunContext& context) {
            const engine::SearchArea area(context.definitions, r.searchId);
            const ImageRecord* image = context.task.image(r.imageId);
            return std::make_unique<ImageCondition>(
                r.relation(),
                engine::ScreenItem::Settings{r.state == 1 ? engine::kFound : engine::kNotFound,
                                             r.timeout, r.resetTimeout},
                context.clock, image ? image->name : QString(),
                makeTemplateMatcher(context.task, r.imageId, area.crop()), area);
        });
    factory.addCondition<EditorColorCondition>(
        [](const EditorColorCondition& r, engine::RunContext& context) {
            return std::make_unique<ColorCondition>(
                r.relation(), engine::ScreenItem::Settings{r.state, r.timeout, false},
                context.clock, recognition::searchColour(context.task, r.colorId),
                context.definitions.cropRect(r.searchId),
                ColorCondition::Tests{r.count, r.countTolerance});
        });
    factory.addCondition<EditorLabelCondition>(
        [labels = services.labels](const EditorLabelCondition& r, engine::RunContext& context) {
            return std::make_unique<LabelCondition>(
                r.relation(),
                engine::ScreenItem::Settings{r.state == 1 ? engine::kFound : engine::kNotFound,
                                             r.timeout, r.resetTimeout},
                context.clock, labels.get(), r.labelId, r.sim,
                engine::SearchArea(context.definitions, r.searchId));
        });
    factory.addCondition<EditorScreenTextCondition>(
        [ocr = services.ocr](const EditorScreenTextCondition& r, engine::RunContext& context) {
            return std::make_unique<ScreenTextCondition>(
                r.relation(),
                engine::ScreenItem::Settings{engine::kFound, r.timeout, r.resetTimeout},
                context.clock, makeTextSearch(r.textInfo, context, ocr));
        });
}

}  // namespace autoscene::conditions
