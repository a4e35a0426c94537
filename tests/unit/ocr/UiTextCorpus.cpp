#include "UiTextCorpus.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QStringList>

#include <random>

#include "RenderedText.h"

namespace autoscene::ocr::testkit {

namespace {

enum class Ground { Plain, Gradient, Noisy };

struct Style {
    int pixelSize = 20;
    Ground ground = Ground::Plain;
    bool lightText = false;
};

const QString kLatinFontFamily = QStringLiteral("DejaVu Sans");

bool isLatin(const QString& text) {
    for (const QChar c : text) {
        if (c.unicode() > 0x7f) {
            return false;
        }
    }
    return true;
}

void paintGround(QImage& image, Ground ground, bool dark, std::mt19937& random) {
    const QColor base = dark ? QColor(34, 40, 58) : QColor(236, 232, 222);
    const QColor other = dark ? QColor(70, 36, 30) : QColor(196, 214, 236);
    QPainter painter(&image);
    if (ground == Ground::Gradient) {
        QLinearGradient gradient(0, 0, image.width(), image.height());
        gradient.setColorAt(0, base);
        gradient.setColorAt(1, other);
        painter.fillRect(image.rect(), gradient);
        return;
    }
    painter.fillRect(image.rect(), base);
    if (ground == Ground::Noisy) {
        std::uniform_int_distribution<int> noise(-28, 28);
        for (int y = 0; y < image.height(); ++y) {
            auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                const int n = noise(random);
                row[x] = qRgb(std::clamp(qRed(row[x]) + n, 0, 255),
                              std::clamp(qGreen(row[x]) + n, 0, 255),
                              std::clamp(qBlue(row[x]) + n, 0, 255));
            }
        }
    }
}

QFont fontFor(const QString& text, int pixelSize) {
    QFont font(isLatin(text) ? kLatinFontFamily : kCjkFontFamily);
    font.setPixelSize(pixelSize);
    return font;
}

CorpusSample render(const QStringList& lines, const Style& style, std::mt19937& random) {
    const QFont font = fontFor(lines.join(QString()), style.pixelSize);
    const QFontMetrics metrics(font);
    const int lineHeight = metrics.height() + style.pixelSize / 2;
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
    }
    const int margin = style.pixelSize;
    QImage image(width + 2 * margin, lineHeight * int(lines.size()) + 2 * margin,
                 QImage::Format_RGB32);
    paintGround(image, style.ground, style.lightText, random);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.setFont(font);
        painter.setPen(style.lightText ? QColor(250, 240, 200) : QColor(24, 24, 30));
        for (int i = 0; i < int(lines.size()); ++i) {
            painter.drawText(margin, margin + i * lineHeight + metrics.ascent(), lines[i]);
        }
    }
    CorpusSample sample;
    sample.png = pngOf(image);
    for (const QString& line : lines) {
        sample.lines.push_back(line.toStdString());
    }
    const char* grounds[] = {"plain", "gradient", "noisy"};
    sample.name = lines.join(QStringLiteral(" / ")).toStdString() + " (" +
                  std::to_string(style.pixelSize) + " px, " + grounds[int(style.ground)] + ", " +
                  (style.lightText ? "light on dark" : "dark on light") + ")";
    return sample;
}

// Samples apart at '|', a dialog's lines at '\n': Chinese buttons and phrases, numbers,
// Chinese with digits, Latin, then dialogs.
const std::vector<QStringList>& corpusTexts() {
    static const std::vector<QStringList> texts = [] {
        const QString samples = QStringLiteral(
            "开始游戏|确定|取消|设置|返回主页|领取奖励|商城|背包已满|任务完成|继续战斗|登录|"
            "退出游戏|每日签到|好友列表|自动寻路|"
            "12850|3/5|00:15:32|1024|99+|2026-11-23|"
            "金币 12850|第3关|体力 120/120|等级 27|剩余 5 次|VIP8|第12章 风起|钻石 x500|"
            "Start Game|Settings|OK|Cancel|Continue|Level 27|Open Chest|Daily Rewards|"
            "网络连接已断开\n请检查网络后重试|恭喜获得\n金币 x500\n经验 x200|"
            "Save changes\nYour progress is kept|背包已满\n请先整理背包|"
            "确认购买\n价格 300 钻石\n确定 取消|Quest Complete\nReward 250 Gold");
        std::vector<QStringList> split;
        for (const QString& sample : samples.split(QLatin1Char('|'))) {
            split.push_back(sample.split(QLatin1Char('\n')));
        }
        return split;
    }();
    return texts;
}

}  // namespace

std::vector<CorpusSample> uiTextCorpus() {
    const int sizes[] = {12, 14, 16, 18, 20, 24, 28, 32};
    std::mt19937 random(20261123);
    std::vector<CorpusSample> corpus;
    int index = 0;
    for (const QStringList& text : corpusTexts()) {
        // Sizes, grounds and polarity rotate at different periods, so they combine.
        const Style style{sizes[index % 8], Ground(index % 3), index % 2 == 1};
        corpus.push_back(render(text, style, random));
        ++index;
    }
    return corpus;
}

CorpusSample uiTextFrame() {
    std::mt19937 random(720);
    QImage image(1280, 720, QImage::Format_RGB32);
    paintGround(image, Ground::Gradient, true, random);
    CorpusSample frame;
    frame.name = "1280x720 frame";
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const std::vector<QStringList>& texts = corpusTexts();
    int placed = 0;
    for (std::size_t i = 0; i < texts.size() && placed < 36; ++i) {
        if (texts[i].size() != 1) {
            continue;
        }
        const QString& text = texts[i].front();
        const int pixelSize = 18 + (placed % 4) * 4;
        painter.setFont(fontFor(text, pixelSize));
        painter.setPen(placed % 3 == 0 ? QColor(255, 220, 120) : QColor(235, 240, 250));
        const int column = placed % 4;
        const int row = placed / 4;
        painter.drawText(40 + column * 310, 60 + row * 74, text);
        frame.lines.push_back(text.toStdString());
        ++placed;
    }
    painter.end();
    frame.png = pngOf(image);
    return frame;
}

bool readsExactly(const std::string& recognised, const std::string& expected) {
    const auto normalised = [](const std::string& text) {
        QString out;
        for (QChar c : QString::fromStdString(text)) {
            if (c.unicode() >= 0xff01 && c.unicode() <= 0xff5e) {
                c = QChar(c.unicode() - 0xfee0);
            }
            if (!c.isSpace()) {
                out += c;
            }
        }
        return out;
    };
    return normalised(recognised) == normalised(expected);
}

}  // namespace autoscene::ocr::testkit
