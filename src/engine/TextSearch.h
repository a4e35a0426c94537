#pragma once
// A text region at run time: where to read, how to prepare the region and which text
// to look for. Shared by the screen-text condition and the click-text action.

#include <memory>

#include "SearchArea.h"
#include "TextMatcher.h"
#include "TextRegionReader.h"

namespace autoscene::model {
struct TextRegion;
}

namespace autoscene::engine {

struct RunContext;
struct TaskInfo;

class TextSearch {
public:
    TextSearch(std::shared_ptr<TextRegionReader> reader, TextMatcher matcher, SearchArea area);

    // The boxes that match, in answer order, over the area's rectangles in turn (the
    // variable's, else the crop, else the whole frame).
    std::vector<TextBox> find(const TaskInfo& task) const;
    const TextMatcher& matcher() const { return matcher_; }
    void clearThreadState() { reader_->clearThreadState(); }

private:
    const std::shared_ptr<TextRegionReader> reader_;
    const TextMatcher matcher_;
    const SearchArea area_;
};

// The preparation fields of a record; a filter colour that is not a number is 0.
TextPreparation textPreparationOf(int imageType, int thresholdValue, const std::string& filterColor,
                                  float filterSimilarity);

TextSearch makeTextSearch(const model::TextRegion& region, RunContext& context,
                          std::shared_ptr<const OcrClient> client);

}  // namespace autoscene::engine
