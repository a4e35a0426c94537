#include "TextSearch.h"

#include <charconv>

#include "RunContext.h"
#include "RuntimeDefinitions.h"
#include "TaskInfo.h"
#include "TextRegion.h"

namespace autoscene::engine {

TextSearch::TextSearch(std::shared_ptr<TextRegionReader> reader, TextMatcher matcher,
                       SearchArea area)
    : reader_(std::move(reader)), matcher_(std::move(matcher)), area_(std::move(area)) {}

std::vector<TextBox> TextSearch::find(const TaskInfo& task) const {
    std::vector<std::optional<QRect>> rects;
    for (const QRect& rect : area_.rects()) {
        rects.emplace_back(rect);
    }
    if (rects.empty()) {
        rects.emplace_back(std::nullopt);
    }
    std::vector<TextBox> found;
    for (const std::optional<QRect>& rect : rects) {
        RecognisedText text = reader_->read(task.frame, rect, task.cycleCount);
        for (TextBox& box : text.boxes) {
            if (matcher_.matches(box.text)) {
                found.push_back(std::move(box));
            }
        }
    }
    return found;
}

TextPreparation textPreparationOf(int imageType, int thresholdValue, const std::string& filterColor,
                                  float filterSimilarity) {
    // The file keeps the colour as a JSON value: a number, or a number in a string.
    std::string_view digits = filterColor;
    if (digits.size() >= 2 && digits.front() == '"' && digits.back() == '"') {
        digits = digits.substr(1, digits.size() - 2);
    }
    std::int64_t colour = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), colour);
    if (error != std::errc() || end != digits.data() + digits.size() || colour < 0 ||
        colour > 0xFFFFFF) {
        colour = 0;
    }
    return {MatchImageType(imageType), thresholdValue, colour, filterSimilarity};
}

TextSearch makeTextSearch(const model::TextRegion& region, RunContext& context,
                          std::shared_ptr<const OcrClient> client) {
    auto reader = std::make_shared<TextRegionReader>(
        std::move(client), textPreparationOf(region.imageType, region.threshold,
                                             region.filterColor.text, region.filterSim));
    return TextSearch(
        std::move(reader),
        TextMatcher(model::TextCompare(region.state), region.value,
                    region.isVariableValue ? context.definitions.find(region.valueId) : nullptr),
        SearchArea(context.definitions, region.searchId));
}

}  // namespace autoscene::engine
