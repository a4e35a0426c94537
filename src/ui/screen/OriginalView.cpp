#include "screen/OriginalView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace autoscene::ui {

namespace {

// Half the side of a handle square, and how near the pointer must come to take it.
constexpr int kHandleRadius = 4;
constexpr int kGrabDistance = 6;
// From this zoom on, the pixel grid is drawn.
constexpr double kGridZoom = 8;

int clampTo(int value, int low, int high) {
    return std::max(low, std::min(value, high));
}

}  // namespace

OriginalView::OriginalView(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("originalView"));
    setAccessibleName(tr("原图"));
    viewport()->setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void OriginalView::setImage(const QImage& image) {
    image_ = image;
    tint_ = QImage();
    overlays_.clear();
    setSelection(selection_);
    updateScrollBars();
    viewport()->update();
}

void OriginalView::setTool(Tool tool) {
    tool_ = tool;
    viewport()->setCursor(tool == Tool::Eyedropper ? Qt::CrossCursor : Qt::ArrowCursor);
}

QRect OriginalView::limits() const {
    return bounds_.isEmpty() ? image_.rect() : bounds_.intersected(image_.rect());
}

void OriginalView::setSelection(const QRect& rect) {
    const QRect clipped = rect.intersected(limits());
    if (clipped == selection_) {
        return;
    }
    selection_ = clipped;
    viewport()->update();
    emit selectionChanged(selection_);
}

void OriginalView::setBounds(const QRect& bounds) {
    bounds_ = bounds;
    // A selection cut down to the bounds would fill them and leave no room to draw anew.
    setSelection(limits().contains(selection_) ? selection_ : QRect());
    viewport()->update();
}

void OriginalView::setOverlays(std::vector<Overlay> overlays) {
    overlays_ = std::move(overlays);
    viewport()->update();
}

void OriginalView::setMask(const QImage& mask, QColor tint) {
    tint_ = QImage();
    if (!mask.isNull() && mask.size() == image_.size()) {
        // The tint's alpha scaled by the mask: clear where the mask is 0.
        tint_ = QImage(mask.size(), QImage::Format_ARGB32_Premultiplied);
        tint_.fill(tint);
        tint_.setAlphaChannel(mask.convertToFormat(QImage::Format_Grayscale8));
    }
    viewport()->update();
}

void OriginalView::setZoom(double zoom) {
    setZoom(zoom, viewport()->rect().center());
}

void OriginalView::setZoom(double zoom, QPoint anchor) {
    zoom = std::clamp(zoom, kMinZoom, kMaxZoom);
    if (zoom == zoom_) {
        return;
    }
    const QPointF origin = viewportRectOf(QRect(0, 0, 1, 1)).topLeft();
    const QPointF picturePoint = (QPointF(anchor) - origin) / zoom_;
    zoom_ = zoom;
    updateScrollBars();
    const QPointF moved = QPointF(viewportRectOf(QRect(0, 0, 1, 1)).topLeft()) +
                          picturePoint * zoom_ - QPointF(anchor);
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + int(std::lround(moved.x())));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + int(std::lround(moved.y())));
    viewport()->update();
    emit zoomChanged(zoom_);
}

void OriginalView::zoomIn() {
    setZoom(std::exp2(std::floor(std::log2(zoom_)) + 1));
}

void OriginalView::zoomOut() {
    setZoom(std::exp2(std::ceil(std::log2(zoom_)) - 1));
}

void OriginalView::zoomToFit() {
    if (image_.isNull()) {
        return;
    }
    const double fit = std::min(double(viewport()->width()) / image_.width(),
                                double(viewport()->height()) / image_.height());
    setZoom(std::exp2(std::floor(std::log2(std::max(fit, kMinZoom)))));
}

QPoint OriginalView::pixelAt(QPoint viewportPoint) const {
    const QPoint origin = viewportRectOf(QRect(0, 0, 1, 1)).topLeft();
    return {int(std::floor((viewportPoint.x() - origin.x()) / zoom_)),
            int(std::floor((viewportPoint.y() - origin.y()) / zoom_))};
}

QRect OriginalView::viewportRectOf(const QRect& pixels) const {
    // A picture smaller than the viewport sits in its middle.
    const double width = image_.width() * zoom_;
    const double height = image_.height() * zoom_;
    const double x =
        std::max(0.0, (viewport()->width() - width) / 2) - horizontalScrollBar()->value();
    const double y =
        std::max(0.0, (viewport()->height() - height) / 2) - verticalScrollBar()->value();
    const auto at = [](double value) { return int(std::lround(value)); };
    return QRect(QPoint(at(x + pixels.left() * zoom_), at(y + pixels.top() * zoom_)),
                 QPoint(at(x + (pixels.right() + 1) * zoom_) - 1,
                        at(y + (pixels.bottom() + 1) * zoom_) - 1));
}

void OriginalView::updateScrollBars() {
    const QSize content(int(std::ceil(image_.width() * zoom_)),
                        int(std::ceil(image_.height() * zoom_)));
    const QSize shown = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, content.width() - shown.width()));
    verticalScrollBar()->setRange(0, std::max(0, content.height() - shown.height()));
    horizontalScrollBar()->setPageStep(shown.width());
    verticalScrollBar()->setPageStep(shown.height());
    horizontalScrollBar()->setSingleStep(std::max(1, int(zoom_) * 4));
    verticalScrollBar()->setSingleStep(std::max(1, int(zoom_) * 4));
}

void OriginalView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

int OriginalView::edgesAt(QPoint point) const {
    if (selection_.isEmpty()) {
        return 0;
    }
    const QRect shown = viewportRectOf(selection_);
    const auto near = [](int a, int b) { return std::abs(a - b) <= kGrabDistance; };
    const bool inX =
        point.x() >= shown.left() - kGrabDistance && point.x() <= shown.right() + 1 + kGrabDistance;
    const bool inY =
        point.y() >= shown.top() - kGrabDistance && point.y() <= shown.bottom() + 1 + kGrabDistance;
    int edges = 0;
    if (inY && near(point.x(), shown.left())) {
        edges |= kLeft;
    } else if (inY && near(point.x(), shown.right() + 1)) {
        edges |= kRight;
    }
    if (inX && near(point.y(), shown.top())) {
        edges |= kTop;
    } else if (inX && near(point.y(), shown.bottom() + 1)) {
        edges |= kBottom;
    }
    return edges;
}

void OriginalView::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (event->button() == Qt::MiddleButton) {
        panning_ = true;
        panFrom_ = point;
        viewport()->setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() != Qt::LeftButton || image_.isNull()) {
        return;
    }
    const QPoint pixel = pixelAt(point);
    if (tool_ == Tool::Eyedropper) {
        if (image_.rect().contains(pixel)) {
            emit pixelPicked(pixel);
        }
        return;
    }
    dragStart_ = selection_;
    dragEdges_ = edgesAt(point);
    creating_ = false;
    if (dragEdges_ == 0 && selection_.contains(pixel)) {
        dragEdges_ = kAll;
        anchor_ = pixel - selection_.topLeft();
    } else if (dragEdges_ == 0) {
        const QRect area = limits();
        creating_ = true;
        anchor_ = {clampTo(pixel.x(), area.left(), area.right()),
                   clampTo(pixel.y(), area.top(), area.bottom())};
        setSelection(QRect(anchor_, QSize(1, 1)));
    }
}

void OriginalView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (panning_) {
        const QPoint step = point - panFrom_;
        panFrom_ = point;
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - step.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - step.y());
        return;
    }
    if (event->buttons() & Qt::LeftButton && (creating_ || dragEdges_ != 0)) {
        dragTo(pixelAt(point));
        return;
    }
    if (tool_ == Tool::Rectangle) {
        static const Qt::CursorShape shapes[16] = {
            Qt::ArrowCursor,   Qt::SizeHorCursor,   Qt::SizeHorCursor,   Qt::ArrowCursor,
            Qt::SizeVerCursor, Qt::SizeFDiagCursor, Qt::SizeBDiagCursor, Qt::ArrowCursor,
            Qt::SizeVerCursor, Qt::SizeBDiagCursor, Qt::SizeFDiagCursor, Qt::ArrowCursor,
            Qt::ArrowCursor,   Qt::ArrowCursor,     Qt::ArrowCursor,     Qt::ArrowCursor};
        viewport()->setCursor(shapes[edgesAt(point)]);
    }
}

void OriginalView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        panning_ = false;
        setTool(tool_);
        return;
    }
    if (event->button() == Qt::LeftButton) {
        creating_ = false;
        dragEdges_ = 0;
    }
}

void OriginalView::dragTo(QPoint pixel) {
    const QRect area = limits();
    if (area.isEmpty()) {
        return;
    }
    pixel = {clampTo(pixel.x(), area.left(), area.right()),
             clampTo(pixel.y(), area.top(), area.bottom())};
    if (creating_) {
        setSelection(QRect(anchor_, pixel).normalized());
        return;
    }
    QRect moved = dragStart_;
    if (dragEdges_ == kAll) {
        moved.moveTopLeft(pixel - anchor_);
        moved.moveLeft(clampTo(moved.left(), area.left(), area.right() - moved.width() + 1));
        moved.moveTop(clampTo(moved.top(), area.top(), area.bottom() - moved.height() + 1));
        setSelection(moved);
        return;
    }
    if (dragEdges_ & kLeft) {
        moved.setLeft(std::min(pixel.x(), dragStart_.right()));
    }
    if (dragEdges_ & kRight) {
        moved.setRight(std::max(pixel.x(), dragStart_.left()));
    }
    if (dragEdges_ & kTop) {
        moved.setTop(std::min(pixel.y(), dragStart_.bottom()));
    }
    if (dragEdges_ & kBottom) {
        moved.setBottom(std::max(pixel.y(), dragStart_.top()));
    }
    setSelection(moved);
}

void OriginalView::keyPressEvent(QKeyEvent* event) {
    // Arrows move the selection one pixel; with Shift they change its size.
    QPoint step;
    switch (event->key()) {
        case Qt::Key_Left:
            step = {-1, 0};
            break;
        case Qt::Key_Right:
            step = {1, 0};
            break;
        case Qt::Key_Up:
            step = {0, -1};
            break;
        case Qt::Key_Down:
            step = {0, 1};
            break;
        default:
            QAbstractScrollArea::keyPressEvent(event);
            return;
    }
    if (selection_.isEmpty()) {
        return;
    }
    QRect changed = selection_;
    if (event->modifiers() & Qt::ShiftModifier) {
        changed.setSize((changed.size() + QSize(step.x(), step.y())).expandedTo(QSize(1, 1)));
    } else if (limits().contains(changed.translated(step))) {
        changed.translate(step);
    }
    setSelection(changed);
}

void OriginalView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const QPoint anchor = event->position().toPoint();
    setZoom(event->angleDelta().y() > 0 ? zoom_ * 2 : zoom_ / 2, anchor);
}

void OriginalView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), QColor(60, 60, 60));
    if (image_.isNull()) {
        return;
    }
    // Only the pixels in sight are drawn: at 32 times a whole 1080p frame would not fit in memory.
    const QRect visible =
        QRect(pixelAt({0, 0}), pixelAt({viewport()->width(), viewport()->height()}))
            .intersected(image_.rect());
    if (!visible.isEmpty()) {
        const QRect target = viewportRectOf(visible);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom_ < 1);
        painter.drawImage(
            QRectF(target.topLeft(), QSizeF(visible.width() * zoom_, visible.height() * zoom_)),
            image_, visible);
        if (!tint_.isNull()) {
            painter.drawImage(
                QRectF(target.topLeft(), QSizeF(visible.width() * zoom_, visible.height() * zoom_)),
                tint_, visible);
        }
        if (zoom_ >= kGridZoom) {
            painter.setPen(QColor(0, 0, 0, 50));
            for (int x = visible.left(); x <= visible.right() + 1; ++x) {
                const int at = viewportRectOf(QRect(x, 0, 1, 1)).left();
                painter.drawLine(at, target.top(), at, target.bottom());
            }
            for (int y = visible.top(); y <= visible.bottom() + 1; ++y) {
                const int at = viewportRectOf(QRect(0, y, 1, 1)).top();
                painter.drawLine(target.left(), at, target.right(), at);
            }
        }
    }
    if (!bounds_.isEmpty()) {
        painter.setPen(QPen(QColor(255, 200, 0), 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(viewportRectOf(bounds_).adjusted(-1, -1, 0, 0));
    }
    paintOverlays(painter);
    paintSelection(painter);
}

void OriginalView::paintOverlays(QPainter& painter) const {
    const QFontMetrics metrics = painter.fontMetrics();
    for (const Overlay& overlay : overlays_) {
        const QRect shown = viewportRectOf(overlay.rect);
        painter.setPen(QPen(overlay.color, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(shown.adjusted(-1, -1, 0, 0));
        if (overlay.label.isEmpty()) {
            continue;
        }
        QRect label = metrics.boundingRect(overlay.label).adjusted(-3, -1, 3, 1);
        label.moveBottomLeft(shown.topLeft() - QPoint(1, 2));
        if (label.top() < 0) {
            label.moveTopLeft(shown.topLeft() + QPoint(1, 2));
        }
        painter.fillRect(label, overlay.color);
        painter.setPen(overlay.color.lightness() > 140 ? Qt::black : Qt::white);
        painter.drawText(label, Qt::AlignCenter, overlay.label);
    }
}

void OriginalView::paintSelection(QPainter& painter) const {
    if (selection_.isEmpty()) {
        return;
    }
    const QRect shown = viewportRectOf(selection_).adjusted(-1, -1, 0, 0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawRect(shown);
    painter.setPen(QPen(Qt::black, 1, Qt::DashLine));
    painter.drawRect(shown);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::white);
    const int xs[] = {shown.left(), shown.center().x(), shown.right() + 1};
    const int ys[] = {shown.top(), shown.center().y(), shown.bottom() + 1};
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < 3; ++row) {
            if (column != 1 || row != 1) {
                painter.drawRect(xs[column] - kHandleRadius, ys[row] - kHandleRadius,
                                 2 * kHandleRadius, 2 * kHandleRadius);
            }
        }
    }
}

}  // namespace autoscene::ui
