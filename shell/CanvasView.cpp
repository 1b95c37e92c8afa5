// The canvas view.
#include "shell/CanvasView.h"

#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <cmath>
#include <vector>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QPointingDevice>
#include <algorithm>

#include "brush/BrushState.h"
#include "canvas/CanvasInput.h"
#include "canvas/TextTool.h"
#include "core/framework/AppState.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/framework/Codes.h"
#include "core/frame/Form2.h"
#include "core/frame/Nav.h"
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
                                                      &Form1::Line3, &Form1::Shape1, &Form1::CloneCross,
                                                      &Form1::PaintFill_Band})
        FollowModel(*c, vp, [vp] { vp->update(); });
    for (int i = 0; i < Form1::CurveSegments; ++i) FollowModel(Form1::CurveSegment(i), vp, [vp] { vp->update(); });
    makeTextBox();
}

// The text tool's box: a line editor over the viewport, where the model places it.
void CanvasView::makeTextBox() {
    textBox_ = new QLineEdit(viewport());
    textBox_->setObjectName("TextTool");
    textBox_->hide();
    for (Control* c : std::initializer_list<Control*>{&Form1::TextTool, &Form1::TextToolFrame})
        FollowModel(*c, textBox_, [this] { placeTextBox(); });
    connect(textBox_, &QLineEdit::textEdited, textBox_,
            [](const QString& t) { Guarded([&] { Form1::TextTool.Text = t.toStdString(); }); });
    connect(textBox_, &QLineEdit::returnPressed, textBox_, [] {
        Guarded([] {
            int16_t key = VirtualKey::Return;
            Form1::TextTool_KeyPress(key);
        });
    });
}

void CanvasView::placeTextBox() {
    const bool shown = Form1::TextTool.Visible && Form2::Option19.Value;
    if (!shown) {
        textBox_->hide();
        return;
    }
    const FontChoice f = TextToolFont();
    QFont font(QString::fromStdString(f.Name));
    font.setPointSize(f.Size);
    font.setBold(f.Bold);
    font.setItalic(f.Italic);
    font.setStyleStrategy(QFont::NoAntialias);
    textBox_->setFont(font);
    const QString text = QString::fromStdString(Form1::TextTool.Text);
    if (textBox_->text() != text) textBox_->setText(text);
    const ::Shape& frame = Form1::TextToolFrame;
    textBox_->setGeometry(frame.Left - horizontalScrollBar()->value(), frame.Top - verticalScrollBar()->value(),
                          std::max(frame.Width.get(), 16), std::max(frame.Height.get(), 12));
    // Typing goes to the box wherever it was placed last.
    textBox_->show();
    if (!textBox_->hasFocus()) textBox_->setFocus();
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

// The middle button alone moves the view and never reaches the tools.
bool CanvasView::pan(QMouseEvent* e) {
    const QPoint scroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    if (e->type() == QEvent::MouseButtonPress && e->button() == Qt::MiddleButton && e->buttons() == Qt::MiddleButton) {
        panning_ = true;
        panFrom_ = e->position();
        panScroll_ = scroll;
        panCursor_ = viewport()->cursor();
        viewport()->setCursor(Qt::ClosedHandCursor);
        return true;
    }
    if (!panning_) return false;
    const QPointF moved = e->position() - panFrom_;
    horizontalScrollBar()->setValue(panScroll_.x() - static_cast<int>(std::lround(moved.x())));
    verticalScrollBar()->setValue(panScroll_.y() - static_cast<int>(std::lround(moved.y())));
    if (e->type() == QEvent::MouseButtonRelease && e->button() == Qt::MiddleButton) {
        panning_ = false;
        viewport()->setCursor(panCursor_);
    }
    return true;
}

void CanvasView::wheelEvent(QWheelEvent* e) {
    if (!(e->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(e);
    e->accept();
    // A notch is 120; touch pads send less at a time, and it adds up.
    wheelAngle_ += e->angleDelta().y();
    const QPointF at = e->position();
    while (std::abs(wheelAngle_) >= 120) {
        const int direction = wheelAngle_ > 0 ? 1 : -1;
        wheelAngle_ -= direction * 120;
        Guarded([&] { Nav::WheelZoom(direction, at.x(), at.y()); });
    }
}

// Tablets reach here as the mouse events Qt makes of them.
void CanvasView::mousePressEvent(QMouseEvent* e) {
    if (pan(e)) return;
    App.Pressure = PressureOf(e);
    QPointF w = windowPixel(e->position());
    // The buttons held now, the new one among them: a second button makes a combination.
    int16_t button = ButtonCode(e->buttons() | e->button()), shift = ShiftCodeOf(e->modifiers());
    Guarded([&] { Form1::Form_MouseDown(button, shift, static_cast<float>(w.x()), static_cast<float>(w.y())); });
}

void CanvasView::mouseMoveEvent(QMouseEvent* e) {
    if (pan(e)) return;
    App.Pressure = PressureOf(e);
    QPointF w = windowPixel(e->position());
    int16_t button = ButtonCode(e->buttons()), shift = ShiftCodeOf(e->modifiers());
    Guarded([&] { Form1::Form_MouseMove(button, shift, static_cast<float>(w.x()), static_cast<float>(w.y())); });
    moveBrushOutline(e->position().toPoint());
}

void CanvasView::mouseReleaseEvent(QMouseEvent* e) {
    if (pan(e)) return;
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
    if (Form1::Shape1.Visible) {
        if (Form1::Shape1.Tag == Form1::OvalTag) both([&] { p.drawEllipse(box(Form1::Shape1)); });
        else both([&] { p.drawRect(box(Form1::Shape1)); });
    }
    std::vector<const LineControl*> lines = {&Form1::Line1, &Form1::Line2, &Form1::Line3, &Form1::PaintFill_Band};
    for (int i = 0; i < Form1::CurveSegments; ++i) lines.push_back(&Form1::CurveSegment(i));
    for (const LineControl* l : lines)
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
    placeTextBox();
    viewport()->update();
}
