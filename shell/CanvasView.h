// The canvas: shows the screen image of the visible part of the picture and
// scrolls over the whole zoomed picture. Mouse and keys go to the canvas form.
#pragma once

#include <QAbstractScrollArea>

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

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void updateScrollBars();
    int contentW_ = 0, contentH_ = 0;
};
