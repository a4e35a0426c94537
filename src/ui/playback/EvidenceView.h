#pragma once
// A cycle's frame, scaled to fit, with the evidence of every condition evaluated on it drawn
// over it: match rectangles with their score, text boxes with the text read, detected labels,
// and the counted colour pixels as counts in the corner. Green where the condition held, red
// where it failed.

#include <QImage>
#include <QJsonObject>
#include <QWidget>
#include <vector>

namespace autoscene::ui {

class EvidenceView : public QWidget {
    Q_OBJECT
public:
    struct Shape {
        QRect rect;  // in frame pixels; null for a count, which has no place
        QString text;
        bool holds = false;
    };

    explicit EvidenceView(QWidget* parent = nullptr);

    // `frame` may be null (no frame recorded, or it failed to load: `missing` says why).
    void show(const QImage& frame, const QJsonObject& cycleLine, const QString& missing = {});
    const std::vector<Shape>& shapes() const { return shapes_; }

    QSize sizeHint() const override { return {640, 420}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage frame_;
    QString missing_;
    std::vector<Shape> shapes_;
};

}  // namespace autoscene::ui
