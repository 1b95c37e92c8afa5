// The canvas view.
#include "shell/CanvasView.h"

#include <QImage>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>

#include "core/Display.h"
#include "core/Form1.h"
#include "core/Guard.h"
#include "shell/Convert.h"

CanvasView::CanvasView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setObjectName("Form1");
}

QSize CanvasView::sizeHint() const { return {std::min(contentW_, 1200) + 4, std::min(contentH_, 900) + 4}; }

void CanvasView::setContentSize(int w, int h) {
    contentW_ = w;
    contentH_ = h;
    updateScrollBars();
}

int CanvasView::visibleWidth() const { return std::max(0, std::min(viewport()->width(), contentW_)); }
int CanvasView::visibleHeight() const { return std::max(0, std::min(viewport()->height(), contentH_)); }

void CanvasView::updateScrollBars() {
    horizontalScrollBar()->setRange(0, std::max(0, contentW_ - viewport()->width()));
    verticalScrollBar()->setRange(0, std::max(0, contentH_ - viewport()->height()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    verticalScrollBar()->setPageStep(viewport()->height());
    horizontalScrollBar()->setSingleStep(16);
    verticalScrollBar()->setSingleStep(16);
}

void CanvasView::paintEvent(QPaintEvent* e) {
    QPainter p(viewport());
    int w = std::min(ScreenBitmap.Width, RefreshStride32), h = std::min(ScreenBitmap.Height, RefreshRows32);
    if (DisplayBits == 32 && w > 0 && h > 0 && !RefreshBuff32.empty()) {
        // The screen image is drawn where it lies, without a copy.
        QImage img(reinterpret_cast<const uchar*>(RefreshBuff32.data()), w, h, RefreshStride32 * 4,
                   QImage::Format_RGB32);
        p.drawImage(e->rect().topLeft(), img, e->rect());
    }
    QRegion outside = QRegion(e->rect()) - QRegion(0, 0, w, h);
    for (const QRect& r : outside) p.fillRect(r, QColor(80, 80, 80));
}

void CanvasView::resizeEvent(QResizeEvent* e) {
    QAbstractScrollArea::resizeEvent(e);
    updateScrollBars();
    Guarded([] { Form1::ViewportChanged(); });
}

void CanvasView::scrollContentsBy(int, int) {
    Guarded([] {
        if (DisplayBroken != 255) RedisplayWindow();
    });
    viewport()->update();
}
