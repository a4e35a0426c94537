#pragma once
// A frame scaled to fit, with what a probe saw drawn over it: the search area, each
// candidate with its score, and the point an action would click. Kept apart from the
// panel so that the original view's overlay can take its place.

#include <QImage>
#include <QWidget>

#include "probe/ProbeResult.h"

namespace autoscene::ui {

// The score and the name or text of a candidate, as shown beside it.
QString candidateLabel(const probe::ProbeCandidate& candidate);

class ProbeFrameView : public QWidget {
    Q_OBJECT
public:
    explicit ProbeFrameView(QWidget* parent = nullptr);

    void show(QImage frame, probe::ProbeResult result);
    const QImage& frame() const { return frame_; }

    QSize sizeHint() const override { return {640, 400}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage frame_;
    probe::ProbeResult result_;
};

}  // namespace autoscene::ui
