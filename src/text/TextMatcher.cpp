#include "text/TextMatcher.h"

#include <optional>

namespace autoscene::text {

using model::TextCompare;

namespace {

std::optional<double> numberOf(const QString& text) {
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok ? std::optional<double>(value) : std::nullopt;
}

}  // namespace

TextMatcher::TextMatcher(TextCompare compare, QString text, std::function<QString()> current)
    : compare_(compare), text_(std::move(text)), current_(std::move(current)) {}

QString TextMatcher::wanted() const {
    return current_ ? current_() : text_;
}

bool TextMatcher::matches(const QString& recognised) const {
    const QString want = wanted();
    switch (compare_) {
        case TextCompare::Equal:
            return recognised == want;
        case TextCompare::NotEqual:
            return recognised != want;
        case TextCompare::Greater:
        case TextCompare::Less: {
            const std::optional<double> left = numberOf(recognised);
            const std::optional<double> right = numberOf(want);
            if (!left || !right) {
                return false;
            }
            return compare_ == TextCompare::Greater ? *left > *right : *left < *right;
        }
        case TextCompare::Contains:
            return recognised.contains(want);
        case TextCompare::StartsWith:
            return recognised.startsWith(want);
        default:
            return false;
    }
}

}  // namespace autoscene::text
