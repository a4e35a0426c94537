#include "model/Resources.h"

namespace autoscene::model {

QString ColorRecord::displayText() const {
    const auto channel = [this](int shift) {
        return QStringLiteral("%1").arg((color >> shift) & 0xFF, 2, 16, QLatin1Char('0'));
    };
    return QLatin1Char('#') + channel(16) + channel(8) + channel(0);
}

}  // namespace autoscene::model
