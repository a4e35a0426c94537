#include "engine/SearchArea.h"

#include "engine/RectList.h"
#include "engine/RuntimeDefinitions.h"

namespace autoscene::engine {

SearchArea::SearchArea(const RuntimeDefinitions& definitions, int definitionId) {
    if (definitionId == 0) {
        return;
    }
    crop_ = definitions.cropRect(definitionId);
    if (!crop_) {
        variable_ = definitions.find(definitionId);
    }
}

std::vector<QRect> SearchArea::variableRects() const {
    return variable_ ? parseRectList(variable_->value()) : std::vector<QRect>{};
}

std::vector<QRect> SearchArea::rects() const {
    std::vector<QRect> rects = variableRects();
    if (rects.empty() && crop_) {
        rects.push_back(*crop_);
    }
    return rects;
}

}  // namespace autoscene::engine
