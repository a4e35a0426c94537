#include "editor/ColorButton.h"

#include <QColorDialog>

namespace autoscene::ui {

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
    connect(this, &QPushButton::clicked, this, &ColorButton::pick);
}

void ColorButton::setRgb(qint64 rgb) {
    rgb_ = rgb & 0xFFFFFF;
    const QColor color = QColor::fromRgb(QRgb(rgb_));
    setText(color.name().toUpper());
    // Dark text on light colours and the reverse, so that the name stays readable.
    setStyleSheet(
        QStringLiteral("background-color: %1; color: %2;")
            .arg(color.name(), QLatin1String(color.lightness() > 128 ? "black" : "white")));
    setAccessibleDescription(text());
}

void ColorButton::pick() {
    const QColor chosen = QColorDialog::getColor(QColor::fromRgb(QRgb(rgb_)), this, tr("选择颜色"));
    if (chosen.isValid()) {
        setRgb(chosen.rgb() & 0xFFFFFF);
    }
}

}  // namespace autoscene::ui
