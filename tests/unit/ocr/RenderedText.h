#pragma once
// Test images with real text, drawn by Qt with the WenQuanYi Zen Hei font. Needs a
// QGuiApplication (the offscreen platform will do).

#include <QColor>
#include <QPoint>
#include <QSize>
#include <QString>

#include <string>
#include <vector>

namespace autoscene::ocr::testkit {

struct TextLabel {
    QString text;
    QPoint topLeft;
    int pixelSize = 32;
};

inline const QString kCjkFontFamily = QStringLiteral("WenQuanYi Zen Hei");

// PNG bytes of a `size` image on `background` with the labels drawn in black.
std::string renderTextPng(QSize size, const std::vector<TextLabel>& labels,
                          QColor background = Qt::white);

}  // namespace autoscene::ocr::testkit
