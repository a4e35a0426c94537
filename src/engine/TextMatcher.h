#pragma once
// Decides whether a recognised text is what a text region asks for.

#include <QString>

#include "TextRegion.h"

namespace autoscene::engine {

class MVVariable;

class TextMatcher {
public:
    // With a variable, its value at each match replaces `text`.
    TextMatcher(model::TextCompare compare, QString text, MVVariable* variable = nullptr);

    QString wanted() const;
    // Operators 3 and 4 need both texts to be numbers; unknown operators never match.
    bool matches(const QString& recognised) const;

private:
    const model::TextCompare compare_;
    const QString text_;
    MVVariable* const variable_;
};

}  // namespace autoscene::engine
