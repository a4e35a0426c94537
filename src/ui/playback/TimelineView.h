#pragma once
// One row per recorded target: every cycle a column, scene changes, fired events and
// cycles that decide differently after an edit marked in colour, the chosen cycle framed.
// A click chooses the cycle under the pointer.

#include <QWidget>

#include "ui/playback/CycleMarks.h"

namespace autoscene::ui {

class TimelineView : public QWidget {
    Q_OBJECT
public:
    explicit TimelineView(QWidget* parent = nullptr);

    // Nothing shown while null; the marks must outlive their showing.
    void setMarks(const CycleMarks* marks);
    void setCurrent(CycleMarks::Position at);

    QSize sizeHint() const override;

signals:
    void cyclePicked(CycleMarks::Position at);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QRect rowRect(int target) const;

    const CycleMarks* marks_ = nullptr;
    CycleMarks::Position current_;
};

}  // namespace autoscene::ui
