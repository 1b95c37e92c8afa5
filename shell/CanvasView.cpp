// The canvas view.
#include "shell/CanvasView.h"

#include <QImage>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <cmath>
#include <QMouseEvent>
#include <QPointingDevice>
#include <algorithm>

#include "brush/BrushState.h"
#include "canvas/CanvasInput.h"
#include "core/framework/AppState.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/framework/Codes.h"
#include "core/frame/Form2.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"

CanvasView::CanvasView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setObjectName("Form1");
    // The overlay models repaint the view when they change.
    QWidget* vp = viewport();
    for (Control* c : std::initializer_list<Control*>{&Form1::Brush_bounds, &Form1::Line1, &Form1::Line2,
                                                      &Form1::Line3, &Form1::Shape1, &Form1::CloneCross})
        FollowModel(*c, vp, [vp] { vp->update(); });
}

int16_t CanvasView::ButtonCode(Qt::MouseButtons b) {
    return static_cast<int16_t>(((b & Qt::LeftButton) ? MouseButton::Left : 0) |
                                ((b & Qt::RightButton) ? MouseButton::Right : 0) |
                                ((b & Qt::MiddleButton) ? MouseButton::Middle : 0));
}

QPointF CanvasView::windowPixel(const QPointF& pos) const {
    return pos + QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

namespace {
// A pen's pressure rides on the mouse events Qt makes of tablet events; a mouse
// (or a pen that reports none) presses fully.
float PressureOf(const QMouseEvent* e) {
    const QPointingDevice* d = e->pointingDevice();
    if (!d || d->type() == QInputDevice::DeviceType::Mouse || e->points().isEmpty()) return 1.0f;
    if (!d->capabilities().testFlag(QInputDevice::Capability::Pressure)) return 1.0f;
    return static_cast<float>(std::clamp(e->points().first().pressure(), 0.0, 1.0));
}
}  // namespace

// Tablets reach here as the mouse events Qt makes of them.
void CanvasView::mousePressEvent(QMouseEvent* e) {
    App.Pressure = PressureOf(e);
    QPointF w = windowPixel(e->position());
    // The buttons held now, the new one among them: a second button makes a combination.
    int16_t button = ButtonCode(e->buttons() | e->button()), shift = ShiftCodeOf(e->modifiers());
    Guarded([&] { Form1::Form_MouseDown(button, shift, static_cast<float>(w.x()), static_cast<float>(w.y())); });
}

void CanvasView::mouseMoveEvent(QMouseEvent* e) {
    App.Pressure = PressureOf(e);
    QPointF w = windowPixel(e->position());
    int16_t button = ButtonCode(e->buttons()), shift = ShiftCodeOf(e->modifiers());
    Guarded([&] { Form1::Form_MouseMove(button, shift, static_cast<float>(w.x()), static_cast<float>(w.y())); });
    moveBrushOutline(e->position().toPoint());
}

void CanvasView::mouseReleaseEvent(QMouseEvent* e) {
    QPointF w = windowPixel(e->position());
    int16_t button = ButtonCode(e->buttons() | e->button()), shift = ShiftCodeOf(e->modifiers());
    Guarded([&] { Form1::Form_MouseUp(button, shift, static_cast<float>(w.x()), static_cast<float>(w.y())); });
}

void CanvasView::leaveEvent(QEvent* e) {
    moveBrushOutline({-1, -1});
    QAbstractScrollArea::leaveEvent(e);
}

QRect CanvasView::brushOutline() const {
    if (cursor_.x() < 0 || !Form2::Option1.Value || App.CustomBrushOn != 0) return {};
    int r = static_cast<int>(std::ceil((BrushRadius + 0.5) * App.ZoomPercent / 100.0));
    return QRect(cursor_.x() - r, cursor_.y() - r, 2 * r + 1, 2 * r + 1);
}

void CanvasView::moveBrushOutline(const QPoint& to) {
    const QRect before = drawnOutline_;
    cursor_ = to;
    const QRect after = brushOutline();
    drawnOutline_ = after;
    if (before != after) viewport()->update(QRegion(before.adjusted(-1, -1, 1, 1)) + after.adjusted(-1, -1, 1, 1));
}

void CanvasView::paintOverlays(QPainter& p) {
    const QPointF origin(horizontalScrollBar()->value(), verticalScrollBar()->value());
    QPen dark(QColor(0, 0, 0), 1, Qt::DashLine), light(QColor(255, 255, 255), 1);
    auto both = [&](auto draw) {
        p.setPen(light);
        draw();
        p.setPen(dark);
        draw();
    };
    auto box = [&](const ::Shape& s) { return QRectF(s.Left - origin.x(), s.Top - origin.y(), s.Width, s.Height); };
    if (Form1::Brush_bounds.Visible) both([&] { p.drawRect(box(Form1::Brush_bounds)); });
    if (Form1::Shape1.Visible) both([&] { p.drawRect(box(Form1::Shape1)); });
    for (const LineControl* l : {&Form1::Line1, &Form1::Line2, &Form1::Line3})
        if (l->Visible)
            both([&] { p.drawLine(QPointF(l->X1, l->Y1) - origin, QPointF(l->X2, l->Y2) - origin); });
    if (Form1::CloneCross.Visible) {
        QPointF c = QPointF(Form1::CloneCross.Left, Form1::CloneCross.Top) - origin;
        both([&] {
            p.drawLine(c - QPointF(10, 0), c + QPointF(10, 0));
            p.drawLine(c - QPointF(0, 10), c + QPointF(0, 10));
        });
    }
    QRect outline = brushOutline();
    if (!outline.isEmpty()) {
        p.setRenderHint(QPainter::Antialiasing);
        both([&] { p.drawEllipse(outline); });
    }
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
    p.setClipRect(e->rect());
    paintOverlays(p);
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
