#include "engine/RectList.h"

#include <QStringList>

#include "model/RectText.h"

namespace autoscene::engine {

std::vector<QRect> parseRectList(const QString& text) {
    std::vector<QRect> rects;
    for (const QString& part : text.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        if (!part.trimmed().isEmpty()) {
            rects.push_back(model::parseRectText(part));
        }
    }
    return rects;
}

QString formatRectList(const std::vector<QRect>& rects) {
    QStringList parts;
    for (const QRect& rect : rects) {
        parts.push_back(model::formatRectText(rect));
    }
    return parts.join(QLatin1Char('|'));
}

}  // namespace autoscene::engine
