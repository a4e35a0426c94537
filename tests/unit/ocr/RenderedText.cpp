#include "RenderedText.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <opencv2/imgcodecs.hpp>

namespace autoscene::ocr::testkit {

std::string renderTextPng(QSize size, const std::vector<TextLabel>& labels) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
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
    return pngOf(image);
}

std::string pngOf(const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png.toStdString();
}

cv::Mat renderTextFrame(QSize size, const std::vector<TextLabel>& labels) {
    const std::string png = renderTextPng(size, labels);
    return cv::imdecode(cv::Mat(1, int(png.size()), CV_8UC1, const_cast<char*>(png.data())),
                        cv::IMREAD_COLOR);
}

}  // namespace autoscene::ocr::testkit
