#include "ui/playback/TimelineView.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace autoscene::ui {

namespace {

constexpr int kRowHeight = 22;
constexpr int kLabelWidth = 56;

}  // namespace

TimelineView::TimelineView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("playback_timeline"));
    setAccessibleName(tr("时间轴"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TimelineView::setMarks(const CycleMarks* marks) {
    marks_ = marks;
    current_ = {};
    updateGeometry();
    update();
}

void TimelineView::setCurrent(CycleMarks::Position at) {
    current_ = at;
    update();
}

QSize TimelineView::sizeHint() const {
    const int rows = marks_ ? std::max<int>(1, int(marks_->targets().size())) : 1;
    return {400, rows * kRowHeight + 4};
}

QRect TimelineView::rowRect(int target) const {
    return {kLabelWidth, 2 + target * kRowHeight, width() - kLabelWidth - 4, kRowHeight - 4};
}

void TimelineView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (!marks_) {
        return;
    }
    for (int target = 0; target < int(marks_->targets().size()); ++target) {
        const QRect row = rowRect(target);
        painter.setPen(palette().text().color());
        painter.drawText(QRect(4, row.y(), kLabelWidth - 8, row.height()),
                         Qt::AlignVCenter | Qt::AlignLeft,
                         tr("目标%1").arg(marks_->targets()[size_t(target)]));
        painter.fillRect(row, palette().alternateBase());
        const int count = marks_->cycleCount(target);
        const double column = double(row.width()) / std::max(1, count);
        // Each mark has a stripe of its own, so that none hides another where many cycles
        // share a pixel column.
        const int stripe = row.height() / 3;
        const std::pair<CycleMarks::Mark, QColor> stripes[] = {
            {CycleMarks::kSceneChange, QColor(40, 90, 220)},
            {CycleMarks::kDiffers, QColor(220, 40, 40)},
            {CycleMarks::kFired, QColor(40, 160, 60)}};
        for (int index = 0; index < count; ++index) {
            const unsigned marks = marks_->marks({target, index});
            const int left = row.x() + int(index * column);
            const int right = std::max(left + 1, row.x() + int((index + 1) * column) - 1);
            for (int place = 0; place < 3; ++place) {
                if (marks & stripes[place].first) {
                    painter.fillRect(QRect(left, row.y() + place * stripe, right - left, stripe),
                                     stripes[place].second);
                }
            }
        }
        if (current_.target == target && count > 0) {
            const int left = row.x() + int(current_.index * column);
            painter.setPen(QPen(palette().text().color(), 2));
            painter.drawRect(
                QRect(left - 1, row.y() - 1, std::max(3, int(column) + 1), row.height() + 2));
        }
    }
}

void TimelineView::mousePressEvent(QMouseEvent* event) {
    if (!marks_) {
        return;
    }
    const QPoint point = event->position().toPoint();
    for (int target = 0; target < int(marks_->targets().size()); ++target) {
        const QRect row = rowRect(target).adjusted(0, -2, 0, 2);
        const int count = marks_->cycleCount(target);
        if (row.contains(point) && count > 0) {
            const int index = std::clamp(
                int(double(point.x() - row.x()) * count / std::max(1, row.width())), 0, count - 1);
            emit cyclePicked({target, index});
            return;
        }
    }
}

}  // namespace autoscene::ui
