#pragma once
// Where an item searches: a crop definition gives one fixed rectangle; a plain
// variable (an image variable) gives the rectangles its text holds at each use.

#include <QRect>
#include <optional>
#include <vector>

namespace autoscene::engine {

class MVVariable;
class RuntimeDefinitions;

class SearchArea {
public:
    SearchArea() = default;
    SearchArea(const RuntimeDefinitions& definitions, int definitionId);

    const std::optional<QRect>& crop() const { return crop_; }
    // The variable's rectangles now; empty without a variable.
    std::vector<QRect> variableRects() const;
    // The variable's rectangles, else the crop, else nothing.
    std::vector<QRect> rects() const;

private:
    std::optional<QRect> crop_;
    MVVariable* variable_ = nullptr;
};

}  // namespace autoscene::engine
