#pragma once
// A text region at run time: where to read, how to prepare the region and which text
// to look for. Shared by the screen-text condition and the click-text action.

#include <memory>

#include "engine/SearchArea.h"
#include "text/TextMatcher.h"
#include "text/TextRegionReader.h"

namespace autoscene::model {
struct TextRegion;
}
namespace autoscene::engine {
struct RunContext;
struct TaskInfo;
}  // namespace autoscene::engine

namespace autoscene::conditions {

class TextSearch {
public:
    TextSearch(std::shared_ptr<text::TextRegionReader> reader, text::TextMatcher matcher,
               engine::SearchArea area);

    // The boxes that match, in answer order, over the area's rectangles in turn (the
    // variable's, else the crop, else the whole frame).
    std::vector<text::TextBox> find(const engine::TaskInfo& task) const;
    const text::TextMatcher& matcher() const { return matcher_; }
    void clearThreadState() { reader_->clearThreadState(); }

private:
    const std::shared_ptr<text::TextRegionReader> reader_;
    const text::TextMatcher matcher_;
    const engine::SearchArea area_;
};

// The preparation fields of a record; a filter colour that is not a number is 0.
text::TextPreparation textPreparationOf(int imageType, int thresholdValue,
                                        const std::string& filterColor, float filterSimilarity);

TextSearch makeTextSearch(const model::TextRegion& region, engine::RunContext& context,
                          std::shared_ptr<const text::OcrClient> client);

}  // namespace autoscene::conditions
