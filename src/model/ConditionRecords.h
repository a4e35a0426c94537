#pragma once
// Fields of every condition record, in writing order after `type`. The runtime
// builds its condition objects from these.

#include <QString>

#include "model/Fields.h"
#include "model/TextRegion.h"

namespace autoscene::model {

enum class Relation : int { Invalid = 0, And = 1, Or = 2 };

struct ConditionFields {
    int relation = int(Relation::And);
};

struct ImageConditionRecord : ConditionFields {
    int imageId = 0;
    int searchId = 0;
    float timeout = 0.0f;
    bool resetTimeout = false;
    int state = 1;  // 1 = present, anything else = absent

    static constexpr auto fields() {
        using R = ImageConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            field("image_id", &R::imageId, Ref::Image),
            field("search_id", &R::searchId, Ref::Definition),
            field("timeout", &R::timeout),
            field("reset_timeout", &R::resetTimeout),
            field("state", &R::state),
        };
    }
};

// Comparisons of the variable condition (`state`).
enum class VariableCompare : int {
    Equal = 0,
    NotEqual = 1,
    Greater = 2,
    Less = 3,
    Contains = 4,
    NotContains = 5,
};

struct VariableConditionRecord : ConditionFields {
    int variableId = 0;
    bool isVariableCompare = false;
    int compareId = 0;
    QString compareValue;
    int state = int(VariableCompare::Equal);

    static constexpr auto fields() {
        using R = VariableConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            field("variable_id", &R::variableId, Ref::Definition),
            field("is_variable_compare", &R::isVariableCompare),
            field("compare_id", &R::compareId, Ref::Definition),
            field("compare_value", &R::compareValue),
            field("state", &R::state),
        };
    }
};

// Timer and alarm conditions name their definition only.
struct DefinitionConditionRecord : ConditionFields {
    int variableId = 0;

    static constexpr auto fields() {
        using R = DefinitionConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            field("variable_id", &R::variableId, Ref::Definition),
        };
    }
};

struct ScreenTextConditionRecord : ConditionFields {
    TextRegion textInfo;
    bool resetTimeout = false;
    float timeout = 0.0f;

    static constexpr auto fields() {
        using R = ScreenTextConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            field("text_info", &R::textInfo),
            field("reset_timeout", &R::resetTimeout),
            field("timeout", &R::timeout),
        };
    }
};

// Tests of the colour condition (`state`).
enum class ColorTest : int {
    Invalid = 0,
    Changes = 4,
    Unchanged = 8,
    MoreThan = 256,
    FewerThan = 512,
};

struct ColorConditionRecord : ConditionFields {
    int colorId = 0;
    int searchId = 0;
    int count = 0;
    int countTolerance = 0;
    float timeout = 0.0f;
    int state = int(ColorTest::Changes);
    int version = 1;

    static constexpr auto fields() {
        using R = ColorConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            field("color_id", &R::colorId, Ref::Color),
            field("search_id", &R::searchId, Ref::Definition),
            field("count", &R::count),
            field("count_tolerance", &R::countTolerance),
            field("timeout", &R::timeout),
            field("state", &R::state),
            field("version", &R::version),
        };
    }
};

struct LabelConditionRecord : ConditionFields {
    int labelId = 0;
    int searchId = 0;
    float sim = 0.5f;
    float timeout = 0.0f;
    bool resetTimeout = false;
    int state = 1;  // 1 = present, anything else = absent

    static constexpr auto fields() {
        using R = LabelConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            field("label_id", &R::labelId, Ref::Label),
            field("search_id", &R::searchId, Ref::Definition),
            field("sim", &R::sim),
            field("timeout", &R::timeout),
            field("reset_timeout", &R::resetTimeout),
            field("state", &R::state),
        };
    }
};

struct JavaScriptConditionRecord : ConditionFields {
    QString jsCode;

    static constexpr auto fields() {
        using R = JavaScriptConditionRecord;
        return std::tuple{
            field("relation", &ConditionFields::relation),
            readOnlyField("javascript", &R::jsCode),
            field("js_code", &R::jsCode),
        };
    }
};

}  // namespace autoscene::model
