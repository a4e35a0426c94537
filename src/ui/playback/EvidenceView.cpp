#include "ui/playback/EvidenceView.h"

#include <QJsonArray>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>

#include "model/RectText.h"

namespace autoscene::ui {

namespace {

constexpr int kHolds = 1;  // engine::ItemState::Holds as the evidence writes it

void addShapes(const QJsonObject& condition, std::vector<EvidenceView::Shape>& shapes) {
    const QString type = condition["type"].toString();
    if (condition["item_state"].isArray()) {  // a group
        for (const auto& member : condition["item_state"].toArray()) {
            addShapes(member.toObject(), shapes);
        }
        return;
    }
    const bool holds = condition["item_state"].toInt() == kHolds;
    const QString name = condition["name"].toString();
    if (type == QStringLiteral("image")) {
        for (const QString& part : condition["rect"].toString().split('|', Qt::SkipEmptyParts)) {
            const QRect rect = model::parseRectText(part);
            if (rect.isValid() && !rect.isEmpty()) {
                shapes.push_back({rect,
                                  QStringLiteral("%1 %2/%3")
                                      .arg(name)
                                      .arg(condition["sim"].toDouble(), 0, 'f', 2)
                                      .arg(condition["requirement_sim"].toDouble(), 0, 'f', 2),
                                  holds});
            }
        }
    } else if (type == QStringLiteral("color") && condition.contains("count")) {
        shapes.push_back({{},
                          EvidenceView::tr("%1: %2 个像素 (阈值 %3)")
                              .arg(name)
                              .arg(condition["count"].toInt())
                              .arg(condition["more_than"].toInt()),
                          holds});
    } else if (condition["text_rects"].isArray()) {
        for (const auto& value : condition["text_rects"].toArray()) {
            const QJsonObject box = value.toObject();
            shapes.push_back({QRect(box["x"].toInt(), box["y"].toInt(), box["width"].toInt(),
                                    box["height"].toInt()),
                              box["text"].toString(), holds});
        }
    } else if (type == QStringLiteral("label")) {
        static const QRegularExpression place(QStringLiteral("(-?\\d+,-?\\d+,\\d+,\\d+)"));
        const QString text = condition["text"].toString();
        const QRect rect = model::parseRectText(place.match(text).captured(1));
        if (rect.isValid() && !rect.isEmpty()) {
            shapes.push_back({rect, text, holds});
        }
    }
}

}  // namespace

EvidenceView::EvidenceView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("playback_frame"));
    setAccessibleName(tr("画面与证据"));
    setMinimumSize(320, 200);
}

void EvidenceView::show(const QImage& frame, const QJsonObject& cycleLine, const QString& missing) {
    frame_ = frame;
    missing_ = missing;
    shapes_.clear();
    for (const auto& check : cycleLine["checks"].toArray()) {
        addShapes(check.toObject()["conditions"].toObject(), shapes_);
    }
    // A condition checked by several events is drawn once.
    std::vector<Shape> unique;
    for (const Shape& shape : shapes_) {
        if (std::none_of(unique.begin(), unique.end(), [&](const Shape& seen) {
                return seen.rect == shape.rect && seen.text == shape.text;
            })) {
            unique.push_back(shape);
        }
    }
    shapes_ = std::move(unique);
    update();
}

void EvidenceView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().dark());
    if (frame_.isNull()) {
        painter.setPen(palette().brightText().color());
        painter.drawText(rect(), Qt::AlignCenter,
                         missing_.isEmpty() ? tr("此周期没有画面") : missing_);
    } else {
        const QSize fitted = frame_.size().scaled(size(), Qt::KeepAspectRatio);
        const QRect target(QPoint((width() - fitted.width()) / 2, (height() - fitted.height()) / 2),
                           fitted);
        painter.drawImage(target, frame_);
        const double scale = double(fitted.width()) / frame_.width();
        for (const Shape& shape : shapes_) {
            if (shape.rect.isNull()) {
                continue;
            }
            const QColor colour = shape.holds ? QColor(0, 200, 0) : QColor(230, 30, 30);
            const QRect onScreen(target.topLeft() + shape.rect.topLeft() * scale,
                                 shape.rect.size() * scale);
            painter.setPen(QPen(colour, 2, shape.holds ? Qt::SolidLine : Qt::DashLine));
            painter.drawRect(onScreen);
            const QRect label =
                painter.fontMetrics().boundingRect(shape.text).adjusted(-2, 0, 2, 0);
            const QRect placed(onScreen.bottomLeft() + QPoint(0, 2), label.size());
            painter.fillRect(placed, QColor(0, 0, 0, 170));
            painter.setPen(colour.lighter(130));
            painter.drawText(placed, Qt::AlignCenter, shape.text);
        }
    }
    // Counts have no place on the frame: listed in its corner.
    int y = 4;
    for (const Shape& shape : shapes_) {
        if (!shape.rect.isNull()) {
            continue;
        }
        const QRect label = painter.fontMetrics().boundingRect(shape.text).adjusted(-3, -1, 3, 1);
        const QRect placed(QPoint(4, y), label.size());
        painter.fillRect(placed, QColor(0, 0, 0, 190));
        painter.setPen(shape.holds ? QColor(90, 230, 90) : QColor(250, 90, 90));
        painter.drawText(placed, Qt::AlignCenter, shape.text);
        y += placed.height() + 2;
    }
}

}  // namespace autoscene::ui
