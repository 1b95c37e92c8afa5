// The canvas: shows the screen image of the visible part of the picture and
// scrolls over the whole zoomed picture. Mouse and keys go to the canvas form.
#pragma once

#include <QAbstractScrollArea>
#include <QCursor>
#include <cstdint>

class CanvasView : public QAbstractScrollArea {
public:
    explicit CanvasView(QWidget* parent);
    void setContentSize(int w, int h);  // the whole zoomed picture, window pixels
    int contentWidth() const { return contentW_; }
    int contentHeight() const { return contentH_; }
    // The part of the picture the viewport shows.
    int visibleWidth() const;
    int visibleHeight() const;
    QSize sizeHint() const override;

    // Button and Shift codes of the canvas procedures for a Qt mouse state.
    static int16_t ButtonCode(Qt::MouseButtons buttons);

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;
    // The zoom key with the wheel zooms by the zoom panel's steps about the cursor.
    void wheelEvent(QWheelEvent* e) override;

private:
    void updateScrollBars();
    void makeTextBox();
    void placeTextBox();
    class QLineEdit* textBox_ = nullptr;
    void paintOverlays(QPainter& p);
    // The window pixel (in the zoomed picture) under a viewport position.
    QPointF windowPixel(const QPointF& viewportPos) const;
    // The outline of the natural brush around the cursor, in viewport pixels.
    QRect brushOutline() const;
    void moveBrushOutline(const QPoint& to);
    int contentW_ = 0, contentH_ = 0;
    QPoint cursor_{-1, -1};  // viewport position, or (-1, -1) when outside
    QRect drawnOutline_;     // where the outline was last asked to show: the size may change under it
    // The middle button drags the view: where the drag began, and the scroll then.
    bool panning_ = false;
    QPointF panFrom_;
    QPoint panScroll_;
    QCursor panCursor_;  // the pointer to put back after the drag
    int wheelAngle_ = 0; // eighths of a degree not yet turned into a zoom step
    bool pan(QMouseEvent* e);
};
