// Filled and outlined rectangles and ellipses, the selection tools' fills of
// alpha, clearing the selection to a colour and the bounds of the selection.
#include "canvas/Shapes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "canvas/CanvasState.h"
#include "colour/DeliverPixel.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "core/framework/Codes.h"
#include "native/DeliverRows.h"
#include "native/Shapes.h"

int16_t SelLeft = 0, SelRight = 0, SelTop = 0, SelBottom = 0;

namespace {
float Zoom() { return static_cast<float>(App.ZoomPercent) / 100.0f; }
// Int of a position, held where no picture reaches, so that far drags cannot overflow.
int IntOf(float v) { return static_cast<int>(std::floor(std::clamp(v, -1e8f, 1e8f))); }
int W() { return PictureWidth({&BufR, &BufG, &BufB, &BufA}); }
int H() { return PictureHeight({&BufR, &BufG, &BufB, &BufA}); }
uint32_t ColourOf(int16_t Button) {
    return Button == MouseButton::Right ? Form2::Shape1.FillColor.get() : Form2::Shape4.FillColor.get();
}

struct BusyPointer {
    int old = Form1::form.MousePointer;
    BusyPointer() { Form1::form.MousePointer = Pointer::Busy; }
    ~BusyPointer() { Form1::form.MousePointer = old; }
};

// The box the fill style fits to, in picture pixels.
struct Box {
    int left, top, right, bottom;
};
// The pixels of a row that the shape covers, already clipped to the picture.
struct Span {
    int first, last;
};

// Each span a row at a time through the fill's row pipeline (tables for a plain
// colour, gradient positions per column, a row of noise draws), as the
// whole-buffer fill does; the draws are taken in the order single pixels take them.
template <unsigned Steps, typename SpanOf>
void DeliverSpans(const kwfill::DeliverSettings& settings, kwfill::DeliverState& state, uint32_t colour, const Box& b,
                  int y0, int y1, SpanOf spanOf) {
    const kwfill::DeliverSettings s = settings;  // kept in registers: the stores cannot alias it
    kwfill::DeliverState st = state;
    const int x0 = std::max(b.left, 0), x1 = std::min(b.right, W() - 1);
    if (x0 > x1) return;
    const kwfill::FillPlan plan = kwfill::PlanFill(s, colour, b.left, b.right, x0, x1 + 1);
    SpanNoise noise(s, Steps, static_cast<size_t>(x1 - x0 + 1));
    for (int y = y0; y <= y1; ++y) {
        Span sp{};
        if (!spanOf(y, sp)) continue;
        const int n = sp.last - sp.first + 1;
        const kwfill::SpanDraws draws = noise.Draw(static_cast<size_t>(n));
        kwfill::DeliverSpan<Steps>(s, plan, st, draws, colour, y, sp.first, n, b.left, b.top, b.right, b.bottom,
                                   BufR.row(y) + sp.first, BufG.row(y) + sp.first, BufB.row(y) + sp.first);
    }
    state = st;
}

// Into alpha: each pixel's colour through the pixel kernel, its average the coverage.
template <typename SpanOf>
void DeliverSpansToAlpha(kwfill::DeliverState& state, const kwfill::DeliverSettings& s, uint32_t colour, const Box& b,
                         int y0, int y1, SpanOf spanOf) {
    kwfill::DeliverState st = state;
    for (int y = y0; y <= y1; ++y) {
        Span sp{};
        if (!spanOf(y, sp)) continue;
        for (int x = sp.first; x <= sp.last; ++x) {
            const uint32_t v = DeliverPixel<kwfill::DpAll>(s, st, colour, x, y, b.left, b.top, b.right, b.bottom);
            const int sum = static_cast<int>(v & 255) + static_cast<int>((v >> 8) & 255) + static_cast<int>((v >> 16) & 255);
            BufA.row(y)[x] = static_cast<uint8_t>(vb::CInt(sum / 3.0));
        }
    }
    state = st;
}

// Every covered pixel through DeliverPixel into the picture, or into alpha in
// the alpha fill mode: coverage alone when the mask comes from the shape.
template <typename SpanOf>
void FillShape(uint32_t colour, const Box& b, int y0, int y1, SpanOf spanOf) {
    y0 = std::max(y0, 0);
    y1 = std::min(y1, H() - 1);
    const bool toAlpha = App.FillMode == kwmode::FillMode::Alpha;
    if (toAlpha && MaskFromShape != 0) {
        for (int y = y0; y <= y1; ++y)
            if (Span sp{}; spanOf(y, sp)) std::memset(BufA.row(y) + sp.first, 255, static_cast<size_t>(sp.last - sp.first + 1));
    } else {
        DeliverRun run = DeliverBegin();
        // Compiled for the steps the settings need and for the plane written, as the whole-buffer fill is.
        const bool plain = kwfill::DeliverSteps(run.settings) == 0;
        if (toAlpha) DeliverSpansToAlpha(run.state, run.settings, colour, b, y0, y1, spanOf);
        else if (plain) DeliverSpans<0>(run.settings, run.state, colour, b, y0, y1, spanOf);
        else DeliverSpans<kwfill::DpAll>(run.settings, run.state, colour, b, y0, y1, spanOf);
        DeliverEnd(run.state);
    }
    if (toAlpha) ShowNewSelection();
}

// The brush engine changes its arguments: each call gets copies.
void BrushTo(int16_t button, int16_t shift, float x, float y) { Form1::Form_Draw(button, shift, x, y); }

// The ellipse of the ellipse tools in picture pixels: the press is the centre,
// a release above or left of it mirrored through it.
struct Ellipse {
    float cx, cy, left, top, right, bottom, w, h;
};
Ellipse EllipseOf(float X, float Y) {
    if (Y < DragStartY) Y = (DragStartY - Y) + DragStartY;
    if (X < DragStartX) X = (DragStartX - X) + DragStartX;
    const float z = Zoom();
    Ellipse e{};
    e.cx = DragStartX / z;
    e.cy = DragStartY / z;
    const float rx = (X - DragStartX) / z, ry = (Y - DragStartY) / z;
    e.left = e.cx - rx;
    e.right = e.cx + rx;
    e.top = e.cy - ry;
    e.bottom = e.cy + ry;
    e.w = e.right - e.left;
    e.h = e.bottom - e.top;
    if (!(e.w > 0)) e.w = 0.01f;
    if (!(e.h > 0)) e.h = 0.01f;
    return e;
}

auto EllipseSpans(const Ellipse& e) {
    const int x0 = std::max(IntOf(e.left), 0), x1 = std::min(IntOf(e.right), W() - 1);
    return [e, x0, x1](int y, Span& sp) { return kwshape::EllipseRowSpan(e.cx, e.cy, e.w, e.h, y, x0, x1, sp.first, sp.last); };
}

void OutlineRectangle(int16_t Button, int16_t Shift, float sx, float sy, float X, float Y) {
    BrushTo(0, Shift, sx, sy);
    BrushTo(Button, Shift, sx, sy);
    BrushTo(Button, Shift, X, sy);
    BrushTo(Button, Shift, X, Y);
    BrushTo(Button, Shift, sx, Y);
    BrushTo(Button, Shift, sx, sy);
}

// The outline as one stroke round the ellipse; the per-step refresh is held back.
void OutlineEllipse(int16_t Button, int16_t Shift, float X, float Y) {
    const float rx = X - DragStartX, ry = Y - DragStartY;
    BrushTo(0, Shift, DragStartX + rx, DragStartY);
    const float d = static_cast<float>(BrushStep + 1);
    float p = 3.1415f * (rx + ry);
    if (p == 0) p = 1;
    const float step = std::max(d * (360.0f / p), 1e-3f);
    for (float angle = 0; angle <= 361; angle += step) {
        StrokeRefreshOff = 255;
        BrushTo(Button, Shift, DragStartX + rx * std::cos(0.0174f * angle), DragStartY + ry * std::sin(0.0174f * angle));
        StrokeRefreshOff = 0;
    }
    RedisplayWindow();
}

void FinishFilled() {
    RedisplayWindow();
    Form2::Picture27_Paint();
}
}  // namespace

void ShowNewSelection() {
    SetAlphaOn(true);
    App.MarqueeWasOn = 255;
    InitMarquee();
    RedisplayWindow();
}

void DrawRectangle(int16_t Button, int16_t Shift, float X, float Y) {
    if (!DocumentExists()) return;
    float sx = DragStartX, sy = DragStartY;
    if (Y < sy) std::swap(Y, sy);
    if (X < sx) std::swap(X, sx);
    if (Form2::Option2.Tag == "unfilled") {
        OutlineRectangle(Button, Shift, sx, sy, X, Y);
        return;
    }
    BusyPointer busy;
    LoadFillOpacity();
    const float z = Zoom();
    const Box b{IntOf(sx / z), IntOf(sy / z), IntOf(X / z), IntOf(Y / z)};
    const int x0 = std::max(b.left, 0), x1 = std::min(b.right, W() - 1);
    FillShape(ColourOf(Button), b, b.top, b.bottom, [x0, x1](int, Span& sp) {
        sp = {x0, x1};
        return x0 <= x1;
    });
    FinishFilled();
}

void DrawCircle(int16_t Button, int16_t Shift, float X, float Y) {
    if (!DocumentExists()) return;
    if (Y < DragStartY) Y = (DragStartY - Y) + DragStartY;
    if (X < DragStartX) X = (DragStartX - X) + DragStartX;
    if (Form2::Option3.Tag == "unfilled") {
        OutlineEllipse(Button, Shift, X, Y);
        return;
    }
    BusyPointer busy;
    LoadFillOpacity();
    const Ellipse e = EllipseOf(X, Y);
    auto clamp16 = [](float v) { return static_cast<int>(vb::CInt(std::clamp(v, -32768.0f, 32767.0f))); };
    const Box b{clamp16(e.left), clamp16(e.top), clamp16(e.right), clamp16(e.bottom)};
    FillShape(ColourOf(Button), b, IntOf(e.top), IntOf(e.bottom), EllipseSpans(e));
    FinishFilled();
}

void RectToAlpha(float X, float Y, uint8_t Value) {
    if (!DocumentExists()) return;
    const int w = W(), h = H();
    X = std::clamp(X, 0.0f, static_cast<float>(w));
    Y = std::clamp(Y, 0.0f, static_cast<float>(h));
    // The press is held to the plane too: a drag from outside the canvas fills up to its edge.
    const int x0 = std::clamp(static_cast<int>(vb::CInt(std::clamp(DragStartX, -1e4f, 4e4f))), 0, w);
    const int y0 = std::clamp(static_cast<int>(vb::CInt(std::clamp(DragStartY, -1e4f, 4e4f))), 0, h);
    // Counting down when the end lies before the start, as far as the end allows.
    const int x1 = X >= x0 ? IntOf(X) : static_cast<int>(std::ceil(X));
    const int y1 = Y >= y0 ? IntOf(Y) : static_cast<int>(std::ceil(Y));
    for (int y = std::min(y0, y1); y <= std::max(y0, y1); ++y)
        std::memset(BufA.row(y) + std::min(x0, x1), Value, static_cast<size_t>(std::abs(x1 - x0) + 1));
}

void CircleToAlpha(float X, float Y, uint8_t Value) {
    if (!DocumentExists()) return;
    BusyPointer busy;
    const Ellipse e = EllipseOf(X, Y);
    auto spanOf = EllipseSpans(e);
    const int y0 = std::max(IntOf(e.top), 0), y1 = std::min(IntOf(e.bottom), H() - 1);
    for (int y = y0; y <= y1; ++y)
        if (Span sp{}; spanOf(y, sp)) std::memset(BufA.row(y) + sp.first, Value, static_cast<size_t>(sp.last - sp.first + 1));
}

void PolyToAlpha(int Mode) {
    if (LassoCount < 2 || !DocumentExists()) return;
    BusyPointer busy;
    const int n = std::min<int>(LassoCount, canvasstate::LassoMax + 1);
    std::vector<int32_t> xy(static_cast<size_t>(2 * n));
    int left = 8000, top = 8000, right = 0, bottom = 0;
    for (int i = 0; i < n; ++i) {
        xy[2 * static_cast<size_t>(i)] = LassoPoints[i][0];
        xy[2 * static_cast<size_t>(i) + 1] = LassoPoints[i][1];
        left = std::min<int>(left, LassoPoints[i][0]);
        right = std::max<int>(right, LassoPoints[i][0]);
        top = std::min<int>(top, LassoPoints[i][1]);
        bottom = std::max<int>(bottom, LassoPoints[i][1]);
    }
    const int w = W(), h = H();
    left = std::clamp(left, 0, w - 1);
    right = std::clamp(right, 0, w - 1);
    top = std::clamp(top, 0, h - 1);
    bottom = std::clamp(bottom, 0, h - 1);
    if (Mode == polymode::Replace) BufA.fill(0);
    const uint8_t value = Mode == polymode::Subtract ? 0 : 255;
    kwshape::PolygonEvenOdd(xy.data(), n, BufA.data(), BufA.stride(), left, top, right, bottom, value);
    ShowNewSelection();
}

void ClearSelected(int Which) {
    if (!DocumentExists()) return;
    const uint32_t c = Which == 0 ? Form2::Shape4.FillColor.get() : Form2::Shape1.FillColor.get();
    const int colour[3] = {vb::RedOf(c), vb::GreenOf(c), vb::BlueOf(c)};
    Plane* planes[3] = {&BufR, &BufG, &BufB};
    const int w = W(), h = H();
    for (int y = 0; y < h; ++y) {
        const uint8_t* a = BufA.row(y);
        for (int k = 0; k < 3; ++k) {
            uint8_t* p = planes[k]->row(y);
            for (int x = 0; x < w; ++x) {
                const int al = a[x] | App.AlphaOff;
                p[x] = static_cast<uint8_t>((p[x] * (255 - al) + colour[k] * al) / 255);
            }
        }
    }
    RedisplayWindow();
}

void AlphaToBlack() {
    if (!BufA.empty()) BufA.fill(0);
}

void FindSelection() {
    int left, top, right, bottom;
    if (FindSelection(left, top, right, bottom)) {
        SelLeft = static_cast<int16_t>(left), SelTop = static_cast<int16_t>(top);
        SelRight = static_cast<int16_t>(right), SelBottom = static_cast<int16_t>(bottom);
    } else {  // no alpha: a box no loop enters
        SelLeft = static_cast<int16_t>(W() - 1), SelTop = static_cast<int16_t>(H() - 1);
        SelRight = SelBottom = 0;
    }
}
