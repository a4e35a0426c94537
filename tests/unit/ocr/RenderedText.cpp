#include "RenderedText.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

namespace autoscene::ocr::testkit {

std::string renderTextPng(QSize size, const std::vector<TextLabel>& labels, QColor background) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(background);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.setPen(Qt::black);
        for (const TextLabel& label : labels) {
            QFont font(kCjkFontFamily);
            font.setPixelSize(label.pixelSize);
            painter.setFont(font);
            const QFontMetrics metrics(font);
            painter.drawText(label.topLeft + QPoint(0, metrics.ascent()), label.text);
        }
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png.toStdString();
}

}  // namespace autoscene::ocr::testkit
