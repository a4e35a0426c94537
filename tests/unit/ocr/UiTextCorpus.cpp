#include "UiTextCorpus.h"

#include <QFile>
#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <random>
#include <stdexcept>

#include "RenderedText.h"

namespace autoscene::ocr::testkit {

namespace {

enum class Ground { Plain, Gradient, Noisy };

void paintGround(QImage& image, Ground ground, bool dark, std::mt19937& random) {
    const QColor base = dark ? QColor(34, 40, 58) : QColor(236, 232, 222);
    QLinearGradient gradient(0, 0, image.width(), image.height());
    gradient.setColorAt(0, base);
    gradient.setColorAt(1, dark ? QColor(70, 36, 30) : QColor(196, 214, 236));
    QPainter(&image).fillRect(image.rect(),
                              ground == Ground::Gradient ? QBrush(gradient) : QBrush(base));
    std::uniform_int_distribution<int> noise(-28, 28);
    for (int y = 0; ground == Ground::Noisy && y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int n = noise(random);
            row[x] =
                qRgb(std::clamp(qRed(row[x]) + n, 0, 255), std::clamp(qGreen(row[x]) + n, 0, 255),
                     std::clamp(qBlue(row[x]) + n, 0, 255));
        }
    }
}

QFont fontFor(const QString& text, int pixelSize) {
    const bool latin =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0x7f; });
    QFont font(latin ? QStringLiteral("DejaVu Sans") : kCjkFontFamily);
    font.setPixelSize(pixelSize);
    return font;
}

// The samples of tests/fixtures/ocr/ui-text.txt, each as its lines.
std::vector<QStringList> corpusTexts() {
    QFile file(QStringLiteral(AUTOSCENE_FIXTURES "/ocr/ui-text.txt"));
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + file.fileName().toStdString());
    }
    std::vector<QStringList> samples;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (!line.isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            samples.push_back(line.split(QLatin1Char('|')));
        }
    }
    return samples;
}

}  // namespace

std::vector<CorpusSample> uiTextCorpus() {
    const int sizes[] = {12, 14, 16, 18, 20, 24, 28, 32};
    const char* grounds[] = {"plain", "gradient", "noisy"};
    std::mt19937 random(20261123);
    std::vector<CorpusSample> corpus;
    for (const QStringList& lines : corpusTexts()) {
        // Sizes, grounds and polarity rotate at different periods, so they combine.
        const int index = int(corpus.size());
        const int pixelSize = sizes[index % 8];
        const bool light = index % 2 == 1;
        const QFont font = fontFor(lines.join(QString()), pixelSize);
        const QFontMetrics metrics(font);
        const int lineHeight = metrics.height() + pixelSize / 2;
        int width = 0;
        for (const QString& line : lines) {
            width = std::max(width, metrics.horizontalAdvance(line));
        }
        QImage image(width + 2 * pixelSize, lineHeight * int(lines.size()) + 2 * pixelSize,
                     QImage::Format_RGB32);
        paintGround(image, Ground(index % 3), light, random);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.setFont(font);
        painter.setPen(light ? QColor(250, 240, 200) : QColor(24, 24, 30));
        for (int i = 0; i < int(lines.size()); ++i) {
            painter.drawText(pixelSize, pixelSize + i * lineHeight + metrics.ascent(), lines[i]);
        }
        painter.end();
        corpus.push_back({lines.join(QStringLiteral(" / ")).toStdString() + " (" +
                              std::to_string(pixelSize) + " px, " + grounds[index % 3] + ", " +
                              (light ? "light on dark" : "dark on light") + ")",
                          pngOf(image), lines.join(QLatin1Char('\n')).toStdString()});
    }
    return corpus;
}

CorpusSample uiTextFrame() {
    std::mt19937 random(720);
    QImage image(1280, 720, QImage::Format_RGB32);
    paintGround(image, Ground::Gradient, true, random);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing);
    QStringList placed;
    for (const QStringList& text : corpusTexts()) {
        const int n = int(placed.size());
        if (text.size() != 1 || n == 36) {
            continue;
        }
        painter.setFont(fontFor(text.front(), 18 + (n % 4) * 4));
        painter.setPen(n % 3 == 0 ? QColor(255, 220, 120) : QColor(235, 240, 250));
        painter.drawText(40 + (n % 4) * 310, 60 + (n / 4) * 74, text.front());
        placed << text.front();
    }
    painter.end();
    return {"1280x720 frame", pngOf(image), placed.join(QLatin1Char('\n')).toStdString()};
}

}  // namespace autoscene::ocr::testkit
