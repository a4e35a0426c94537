#pragma once
// Test images with real text, drawn by Qt with the WenQuanYi Zen Hei font. Needs a
// QGuiApplication (the offscreen platform will do).

#include <QImage>
#include <QPoint>
#include <QSize>
#include <QString>
#include <opencv2/core/mat.hpp>

#include <string>
#include <vector>

namespace autoscene::ocr::testkit {

struct TextLabel {
    QString text;
    QPoint topLeft;
    int pixelSize = 32;
};

inline const QString kCjkFontFamily = QStringLiteral("WenQuanYi Zen Hei");

// PNG bytes of a white `size` image with the labels drawn in black.
std::string renderTextPng(QSize size, const std::vector<TextLabel>& labels);
std::string pngOf(const QImage& image);
// The same image decoded as a BGR frame.
cv::Mat renderTextFrame(QSize size, const std::vector<TextLabel>& labels);

}  // namespace autoscene::ocr::testkit
