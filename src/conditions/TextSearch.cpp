#include "conditions/TextSearch.h"

#include <charconv>

#include "engine/RunContext.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/TaskInfo.h"
#include "model/TextRegion.h"

namespace autoscene::conditions {

TextSearch::TextSearch(std::shared_ptr<text::TextRegionReader> reader, text::TextMatcher matcher,
                       engine::SearchArea area)
    : reader_(std::move(reader)), matcher_(std::move(matcher)), area_(std::move(area)) {}

std::vector<text::TextBox> TextSearch::find(const engine::TaskInfo& task) const {
    std::vector<std::optional<QRect>> rects;
    for (const QRect& rect : area_.rects()) {
        rects.emplace_back(rect);
    }
    if (rects.empty()) {
        rects.emplace_back(std::nullopt);
    }
    std::vector<text::TextBox> found;
    for (const std::optional<QRect>& rect : rects) {
        if (task.stop.stop_requested()) {
            break;
        }
        text::RecognisedText text = reader_->read(task.frame, rect, task.cycleCount, task.stop);
        for (text::TextBox& box : text.boxes) {
            if (matcher_.matches(box.text)) {
                found.push_back(std::move(box));
            }
        }
    }
    return found;
}

text::TextPreparation textPreparationOf(int imageType, int thresholdValue,
                                        const std::string& filterColor, float filterSimilarity) {
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
    return {recognition::MatchImageType(imageType), thresholdValue, colour, filterSimilarity};
}

TextSearch makeTextSearch(const model::TextRegion& region, engine::RunContext& context,
                          std::shared_ptr<const text::OcrClient> client) {
    auto reader = std::make_shared<text::TextRegionReader>(
        std::move(client), textPreparationOf(region.imageType, region.threshold,
                                             region.filterColor.text, region.filterSim));
    std::function<QString()> current;
    if (engine::MVVariable* variable =
            region.isVariableValue ? context.definitions.find(region.valueId) : nullptr) {
        current = [variable] { return variable->value(); };
    }
    return TextSearch(
        std::move(reader),
        text::TextMatcher(model::TextCompare(region.state), region.value, std::move(current)),
        engine::SearchArea(context.definitions, region.searchId));
}

}  // namespace autoscene::conditions
