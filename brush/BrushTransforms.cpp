// Changes of the custom brush in place. Each keeps a copy of the four planes,
// remakes them at the new size through CreateEmptyBrush (under BrushRebuild, so
// the painting mode stays) and puts back the brush's mode afterwards. The
// brush has no undo.
#include "brush/BrushTransforms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "brush/CustomBrush.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "core/frame/MDIForm1.h"

int32_t PrevBrushWidth = 0, PrevBrushHeight = 0;

namespace {
using Planes = std::array<Plane, 4>;
std::array<Plane*, 4> BrushPlanesOf() { return {&BrushR, &BrushG, &BrushB, &BrushA}; }

// The brush's planes copied, with the size they had.
Planes CopyBrush() {
    Planes old;
    const auto planes = BrushPlanesOf();
    for (int k = 0; k < 4; ++k) old[static_cast<size_t>(k)].copyFrom(*planes[static_cast<size_t>(k)]);
    PrevBrushWidth = BrushWidth;
    PrevBrushHeight = BrushHeight;
    return old;
}

// New planes of w by h, keeping the brush's mode; false when they could not be made.
bool Remake(int w, int h) {
    const int16_t matte = BrushMatte;
    const bool colourMark = MDIForm1::Cust_Mode_Color.Checked, matteMark = MDIForm1::Cust_Mode_Matte.Checked;
    BrushRebuild = 255;
    const bool made = CreateEmptyBrush(w, h) == 0;
    BrushRebuild = 0;
    BrushMatte = matte;
    MDIForm1::Cust_Mode_Color.Checked = colourMark;
    MDIForm1::Cust_Mode_Matte.Checked = matteMark;
    return made;
}

// Each pixel (x, y) of the new planes from a pixel of the copy.
void MapPixels(const Planes& old, const std::function<std::pair<int, int>(int, int)>& from) {
    const auto planes = BrushPlanesOf();
    for (int y = 0; y < BrushHeight; ++y)
        for (int x = 0; x < BrushWidth; ++x) {
            const auto [u, v] = from(x, y);
            for (size_t k = 0; k < 4; ++k) (*planes[k])(x, y) = old[k](u, v);
        }
}

// The busy pointer on the canvas while a transform runs.
struct Busy {
    Busy() { Form1::form.MousePointer = Pointer::Busy; }
    ~Busy() { Form1::form.MousePointer = Pointer::Default; }
};

void QuarterTurn(bool clockwise) {
    if (!BrushExists()) return;
    Busy busy;
    const Planes old = CopyBrush();
    const int w = PrevBrushWidth, h = PrevBrushHeight;
    if (!Remake(h, w)) return;
    if (clockwise) MapPixels(old, [h](int x, int y) { return std::pair{y, h - 1 - x}; });
    else MapPixels(old, [w](int x, int y) { return std::pair{w - 1 - y, x}; });
    BrushChanged();
}

// Bilinear sample of a plane at (sx, sy), x first and then y.
double Bilinear(const Plane& p, int w, int h, double sx, double sy) {
    const int x0 = static_cast<int>(std::floor(sx)), y0 = static_cast<int>(std::floor(sy));
    const int x1 = std::min(x0 + 1, w - 1), y1 = std::min(y0 + 1, h - 1);
    const double fx = sx - x0, fy = sy - y0;
    const double top = p(x0, y0) * (1 - fx) + p(x1, y0) * fx;
    const double bottom = p(x0, y1) * (1 - fx) + p(x1, y1) * fx;
    return top * (1 - fy) + bottom * fy;
}

void SampleInto(const Planes& old, int x, int y, double sx, double sy) {
    const auto planes = BrushPlanesOf();
    for (size_t k = 0; k < 4; ++k)
        (*planes[k])(x, y) = static_cast<uint8_t>(std::clamp(vb::CLng(Bilinear(old[k], PrevBrushWidth, PrevBrushHeight, sx, sy)), 0, 255));
}
}  // namespace

void FlipBrushRows() {
    if (!BrushExists()) return;
    for (Plane* p : BrushPlanesOf())
        for (int y = 0; y < BrushHeight / 2; ++y) std::swap_ranges(p->row(y), p->row(y) + BrushWidth, p->row(BrushHeight - 1 - y));
    BrushChanged();
}

void RotateBrush(int Degrees) {
    if (!BrushExists()) return;
    Busy busy;
    const Planes old = CopyBrush();
    const int cx = vb::CInt(PrevBrushWidth / 2.0), cy = vb::CInt(PrevBrushHeight / 2.0);
    const double a = Degrees * 0.01745;
    const double c = std::cos(a), s = -std::sin(a);
    // The box round the turned rectangle: the largest turned corner each way.
    double mx = 0, my = 0;
    for (auto [px, py] : {std::pair{-cx, -cy}, std::pair{PrevBrushWidth - cx, -cy}, std::pair{-cx, PrevBrushHeight - cy},
                          std::pair{PrevBrushWidth - cx, PrevBrushHeight - cy}}) {
        mx = std::max(mx, std::abs(px * c - py * s));
        my = std::max(my, std::abs(px * s + py * c));
    }
    if (!Remake(std::max(1, vb::CLng(2 * mx)), std::max(1, vb::CLng(2 * my)))) return;
    const int hw = BrushWidth / 2, hh = BrushHeight / 2;
    for (int v = -hh; v <= hh; ++v)
        for (int u = -hw; u <= hw; ++u) {
            const int dx = u + hw, dy = v + hh;
            if (dx >= BrushWidth || dy >= BrushHeight) continue;
            const double sx = (u * c - v * s) + cx, sy = (v * c + u * s) + cy;
            if (sx >= 0 && sy >= 0 && sx <= PrevBrushWidth - 1 && sy <= PrevBrushHeight - 1) SampleInto(old, dx, dy, sx, sy);
            else BrushA(dx, dy) = 0;
        }
    BrushChanged();
}

void ResampleBrush(int Width, int Height) {
    if (!BrushExists()) return;
    if (Width <= 0) Width = 2;
    if (Height <= 0) Height = 2;
    Busy busy;
    const Planes old = CopyBrush();
    if (!Remake(Width, Height)) return;
    if (PrevBrushWidth == 1 || PrevBrushHeight == 1) return BrushChanged();
    const double fx = BrushWidth > 1 ? (PrevBrushWidth - 1.0) / (BrushWidth - 1) : 0;
    const double fy = BrushHeight > 1 ? (PrevBrushHeight - 1.0) / (BrushHeight - 1) : 0;
    for (int y = 0; y < BrushHeight; ++y)
        for (int x = 0; x < BrushWidth; ++x) SampleInto(old, x, y, x * fx, y * fy);
    BrushChanged();
}

namespace {
// The first `overlap` columns (or rows) take in, fading, those beyond `keep`:
// at 0 all of the far one, at `overlap` all of the near one.
void FadeEdge(const Planes& old, int keep, int overlap, bool columns) {
    const auto planes = BrushPlanesOf();
    for (int y = 0; y < BrushHeight; ++y)
        for (int x = 0; x < BrushWidth; ++x) {
            const int i = columns ? x : y;
            for (size_t k = 0; k < 4; ++k) {
                const int near = old[k](x, y);
                int value = near;
                if (i < overlap) {
                    const int far = columns ? old[k](keep + x, y) : old[k](x, keep + y);
                    const double t = static_cast<double>(i) / overlap;
                    value = vb::CInt(far * (1 - t) + near * t);
                }
                (*planes[k])(x, y) = static_cast<uint8_t>(value);
            }
        }
}
}  // namespace

bool MakeSeamless(int TrimX, int TrimY) {
    if (!BrushExists()) return false;
    const int n = vb::CLng((100 - TrimX) * BrushWidth / 100.0), m = vb::CLng((100 - TrimY) * BrushHeight / 100.0);
    const int ox = BrushWidth - n, oy = BrushHeight - m;
    if (n < 1 || m < 1 || ox < 1 || oy < 1) return false;
    Busy busy;
    Planes old = CopyBrush();
    // Across first, at the full height, then down on the result.
    if (!Remake(n, PrevBrushHeight)) return false;
    FadeEdge(old, n, ox, true);
    old = CopyBrush();
    if (!Remake(n, m)) return false;
    FadeEdge(old, m, oy, false);
    BrushChanged();
    return true;
}

namespace MDIForm1 {
void Cust_flipx_Click() {
    if (!BrushExists()) return;
    Busy busy;
    for (Plane* p : BrushPlanesOf())
        for (int y = 0; y < BrushHeight; ++y) std::reverse(p->row(y), p->row(y) + BrushWidth);
    BrushChanged();
}
void Cust_Flipy_Click() {
    Busy busy;
    FlipBrushRows();
}
void Cust_Rotate_Click() { QuarterTurn(true); }
void Cust_RotateCC_Click() { QuarterTurn(false); }
void Cust_RotateArbitrary_Click() {
    if (!BrushExists()) return;
    RotateBrush_Options::Hscroll1_Change();
    Show(RotateBrush_Options::form);
}
void Cust_Scale_Click() {
    if (!BrushExists()) return;
    Show(BrushResample::form);
}
void brush_Seamless_Click() {
    if (!BrushExists()) {
        Kelpwick_MsgBox("No custom brush");
        return;
    }
    Show(Seamless::form);
}
}  // namespace MDIForm1
