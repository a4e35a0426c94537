#pragma once
// The text region shared by the screen-text condition and the click-text action.

#include <QString>

#include "model/Fields.h"

namespace autoscene::model {

// Comparisons of a text region (`state`).
enum class TextCompare : int {
    Invalid = 0,
    Equal = 1,
    NotEqual = 2,
    Greater = 3,
    Less = 4,
    Contains = 5,
    StartsWith = 6,
};

struct TextRegion {
    int searchId = 0;
    int valueId = 0;
    QString value;
    bool isVariableValue = false;
    int state = int(TextCompare::Equal);
    int imageType = 1;
    int threshold = 128;
    RawJson filterColor{"0"};
    float filterSim = 0.9f;

    static constexpr auto fields() {
        using R = TextRegion;
        return std::tuple{
            field("search_id", &R::searchId, Ref::Definition),
            field("value_id", &R::valueId, Ref::Definition),
            field("value", &R::value),
            field("is_variable_value", &R::isVariableValue),
            field("state", &R::state),
            field("image_type", &R::imageType),
            field("threshold", &R::threshold),
            field("filter_color", &R::filterColor),
            field("filter_sim", &R::filterSim),
        };
    }
};

}  // namespace autoscene::model
