#pragma once
// Decides whether a recognised text is what a text region asks for.

#include <QString>
#include <functional>

#include "model/TextRegion.h"

namespace autoscene::text {

class TextMatcher {
public:
    // With `current` (a variable's value), what it gives at each match replaces `text`.
    TextMatcher(model::TextCompare compare, QString text,
                std::function<QString()> current = nullptr);

    QString wanted() const;
    // Operators 3 and 4 need both texts to be numbers; unknown operators never match.
    bool matches(const QString& recognised) const;

private:
    const model::TextCompare compare_;
    const QString text_;
    const std::function<QString()> current_;
};

}  // namespace autoscene::text
