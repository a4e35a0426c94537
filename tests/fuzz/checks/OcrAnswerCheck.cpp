#include "Checks.h"

#include <limits>
#include <string_view>
#include <vector>

#include "OcrAnswer.h"
#include "text/RecognisedText.h"

namespace autoscene::fuzz {

namespace {

using text::RecognisedText;
using text::TextBox;

// Negative sizes are left out, and the far corners must not leave int.
bool withinBounds(const TextBox& box) {
    const QRect& r = box.rect;
    const qint64 right = qint64(r.x()) + r.width();
    const qint64 bottom = qint64(r.y()) + r.height();
    return r.width() >= 0 && r.height() >= 0 && right <= std::numeric_limits<int>::max() &&
           bottom <= std::numeric_limits<int>::max();
}

// The lines the service would have recognised for these boxes.
std::vector<ocr::TextLine> asServiceLines(const RecognisedText& text) {
    std::vector<ocr::TextLine> lines;
    for (const TextBox& box : text.boxes) {
        lines.push_back({box.text.toStdString(), box.rect.x(), box.rect.y(), box.rect.width(),
                         box.rect.height()});
    }
    return lines;
}

}  // namespace

QString checkOcrAnswer(const QByteArray& input) {
    const std::optional<RecognisedText> read =
        text::parseRecognisedText(std::string_view(input.constData(), size_t(input.size())));
    if (!read) {
        return {};
    }
    for (const TextBox& box : read->boxes) {
        if (!withinBounds(box)) {
            return QStringLiteral("the box %1 at %2,%3 sized %4x%5 was taken")
                .arg(box.text, QString::number(box.rect.x()), QString::number(box.rect.y()),
                     QString::number(box.rect.width()), QString::number(box.rect.height()));
        }
    }
    const std::string written = ocr::buildAnswerJson(asServiceLines(*read), "accurate");
    const std::optional<RecognisedText> again = text::parseRecognisedText(written);
    if (!again || again->boxes != read->boxes) {
        return QStringLiteral("the service's answer %1 does not read as the same boxes")
            .arg(QString::fromStdString(written));
    }
    return {};
}

}  // namespace autoscene::fuzz
