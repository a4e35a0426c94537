#pragma once
// What the recognition service answers: the whole text and one box per line.

#include <QRect>
#include <QString>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace autoscene::text {

struct TextBox {
    QString text;
    QRect rect;  // frame pixels

    // Top-left, top-right, bottom-right, bottom-left: (x, y), (x + width, y), ...
    std::array<QPoint, 4> corners() const;

    bool operator==(const TextBox&) const = default;
};

struct RecognisedText {
    QString whole;
    std::vector<TextBox> boxes;  // in the order of the answer

    bool operator==(const RecognisedText&) const = default;
};

// Reads {"strRes": "...", "boxes": [{"text", "x", "y", "width", "height"}, ...]}.
// Nothing when the body is not such an object; a box with a missing or mistyped
// member, or a negative size, is left out.
std::optional<RecognisedText> parseRecognisedText(std::string_view body);

}  // namespace autoscene::text
