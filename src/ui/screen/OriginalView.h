#pragma once
// An original screenshot at any zoom down to single pixels, with one rectangle to cut (eight
// pixel-exact handles), an eyedropper, a tinted mask and labelled frames drawn on top.
// Every coordinate it takes and gives is in the picture's pixels; other tools (the condition
// test, for one) draw their results with setOverlays().

#include <QAbstractScrollArea>
#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <vector>

namespace autoscene::ui {

class OriginalView : public QAbstractScrollArea {
    Q_OBJECT
public:
    enum class Tool { Rectangle, Eyedropper };

    // A frame drawn over the picture, its label above its top-left corner.
    struct Overlay {
        QRect rect;
        QColor color;
        QString label;
    };

    static constexpr double kMinZoom = 1.0 / 16;
    static constexpr double kMaxZoom = 32;

    explicit OriginalView(QWidget* parent = nullptr);

    // Keeps the zoom, the overlays go; the selection is clipped to the new picture.
    void setImage(const QImage& image);
    const QImage& image() const { return image_; }
    void setTool(Tool tool);
    Tool tool() const { return tool_; }

    // The rectangle being cut; empty when there is none.
    QRect selection() const { return selection_; }
    // Clipped to the bounds.
    void setSelection(const QRect& rect);
    // Where the selection may lie: the whole picture when empty. A selection outside goes.
    void setBounds(const QRect& bounds);

    void setOverlays(std::vector<Overlay> overlays);
    const std::vector<Overlay>& overlays() const { return overlays_; }
    // Tints the pixels where `mask` (a Grayscale8 image of the picture's size) is not 0;
    // a null mask removes the tint.
    void setMask(const QImage& mask, QColor tint = QColor(255, 0, 255, 170));

    double zoom() const { return zoom_; }
    // Clamped to [kMinZoom, kMaxZoom]; the picture point under `anchor` (a viewport point,
    // the centre when omitted) stays where it is.
    void setZoom(double zoom);
    void setZoom(double zoom, QPoint anchor);
    void zoomIn();
    void zoomOut();
    // The largest power of two at which the whole picture shows.
    void zoomToFit();

    // The picture pixel under a viewport point; may lie outside the picture.
    QPoint pixelAt(QPoint viewportPoint) const;
    // The viewport rectangle that covers these picture pixels.
    QRect viewportRectOf(const QRect& pixels) const;

signals:
    void selectionChanged(const QRect& rect);
    void pixelPicked(const QPoint& pixel);
    void zoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Which edges a drag moves; all four move the whole rectangle.
    enum Edge { kLeft = 1, kRight = 2, kTop = 4, kBottom = 8, kAll = 15 };

    QRect limits() const;
    void updateScrollBars();
    int edgesAt(QPoint viewportPoint) const;
    void dragTo(QPoint pixel);
    void paintSelection(QPainter& painter) const;
    void paintOverlays(QPainter& painter) const;

    QImage image_;
    QImage tint_;
    Tool tool_ = Tool::Rectangle;
    QRect selection_;
    QRect bounds_;
    std::vector<Overlay> overlays_;
    double zoom_ = 1;

    int dragEdges_ = 0;
    bool creating_ = false;
    QPoint anchor_;    // the fixed corner while creating, the grab offset while moving
    QRect dragStart_;  // the selection when the drag began
    QPoint panFrom_;   // viewport point of the last pan step
    bool panning_ = false;
};

}  // namespace autoscene::ui
