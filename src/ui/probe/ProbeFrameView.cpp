#include "ui/probe/ProbeFrameView.h"

#include <QPainter>

namespace autoscene::ui {

QString candidateLabel(const probe::ProbeCandidate& candidate) {
    if (candidate.score <= 0.0f) {
        return candidate.text;
    }
    const QString score = QString::number(double(candidate.score), 'f', 2);
    return candidate.text.isEmpty() ? score : candidate.text + QLatin1Char(' ') + score;
}

ProbeFrameView::ProbeFrameView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("probeFrameView"));
    setMinimumSize(320, 200);
}

void ProbeFrameView::show(QImage frame, probe::ProbeResult result) {
    frame_ = std::move(frame);
    result_ = std::move(result);
    update();
}

void ProbeFrameView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().dark());
    if (frame_.isNull()) {
        return;
    }
    // Frame pixels to widget pixels: scaled to fit, centred, never enlarged past 4x.
    const QSize shown = frame_.size().scaled(size(), Qt::KeepAspectRatio);
    const double scale = std::min(4.0, double(shown.width()) / frame_.width());
    const QPointF origin((width() - frame_.width() * scale) / 2,
                         (height() - frame_.height() * scale) / 2);
    painter.translate(origin);
    painter.scale(scale, scale);
    painter.drawImage(0, 0, frame_);

    QPen pen;
    pen.setCosmetic(true);
    pen.setWidth(2);
    if (result_.searchArea) {
        pen.setColor(QColor(40, 120, 255));
        pen.setStyle(Qt::DashLine);
        painter.setPen(pen);
        painter.drawRect(*result_.searchArea);
    }
    pen.setStyle(Qt::SolidLine);
    QFont font = painter.font();
    font.setPointSizeF(std::max(6.0, font.pointSizeF() / scale));
    painter.setFont(font);
    QPen halo = pen;
    halo.setWidth(4);
    halo.setColor(Qt::black);
    for (const probe::ProbeCandidate& c : result_.candidates) {
        const bool passes = c.inArea && c.score >= result_.threshold;
        // Under a dark halo, so the frame's own colours cannot hide the box.
        painter.setPen(halo);
        painter.drawRect(c.rect);
        pen.setColor(passes ? QColor(0, 230, 80) : QColor(255, 150, 0));
        painter.setPen(pen);
        painter.drawRect(c.rect);
        painter.drawText(QPointF(c.rect.left(), c.rect.top() - 3 / scale), candidateLabel(c));
    }
    if (result_.click) {
        pen.setColor(Qt::red);
        painter.setPen(pen);
        const QPoint at = *result_.click;
        const int arm = int(8 / scale) + 1;
        painter.drawLine(at - QPoint(arm, 0), at + QPoint(arm, 0));
        painter.drawLine(at - QPoint(0, arm), at + QPoint(0, arm));
    }
}

}  // namespace autoscene::ui
