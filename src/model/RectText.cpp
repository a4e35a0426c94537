#include "model/RectText.h"

#include <QStringList>

namespace autoscene::model {

namespace {

// Bounded so that QRect's far edge, x + width - 1, is computed within int.
constexpr qint64 kRectLimit = (qint64(1) << 30) - 1;

int part(const QString& text) {
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok);
    return ok ? int(qBound(-kRectLimit, value, kRectLimit)) : 0;
}

}  // namespace

QRect parseRectText(const QString& text) {
    QString normalised = text;
    normalised.replace(QChar(0xFF0C), QLatin1Char(','));
    const QStringList parts = normalised.split(QLatin1Char(','), Qt::SkipEmptyParts);
    QRect rect(0, 0, 0, 0);
    if (parts.size() < 2) {
        return rect;
    }
    rect.moveTo(part(parts[0]), part(parts[1]));
    if (parts.size() == 2) {
        rect.setSize({1, 1});
    } else if (parts.size() == 4) {
        rect.setSize({part(parts[2]), part(parts[3])});
    }
    return rect;
}

QString formatRectText(const QRect& rect) {
    return QStringLiteral("%1,%2,%3,%4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

}  // namespace autoscene::model
