// Picker arithmetic and painting. The pickers keep their own hue, saturation and
// value, so that a grey or black primary does not lose the hue the user chose.
#include "colour/Pickers.h"

#include <algorithm>
#include <cmath>

#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

namespace {
constexpr double Pi = 3.14159265358979323846;
constexpr int HueStripWidth = 20, HueStripGap = 6;

Hsv Current{0, 0, 0};
uint32_t LastPicked = 0xFFFFFFFFu;
bool Picking = false;
PickZone Dragging = PickZone::None;

double Clamp01(double v) { return std::clamp(v, 0.0, 1.0); }

struct WheelGeometry {
    double cx, cy, outer, inner;
    int sq0, sqSide;  // the inner square, same on both axes
};
WheelGeometry WheelOf(int width, int height) {
    WheelGeometry g;
    g.cx = (width - 1) / 2.0;
    g.cy = (height - 1) / 2.0;
    g.outer = std::min(width, height) / 2.0 - 1;
    g.inner = g.outer * 0.8;
    g.sqSide = static_cast<int>(g.inner * std::sqrt(2.0)) - 4;
    g.sq0 = static_cast<int>(std::lround(g.cx - (g.sqSide - 1) / 2.0));
    return g;
}

Hsv SatValInSquare(float x, float y, int x0, int y0, int side, double hue) {
    double s = Clamp01((x - x0) / std::max(1.0, side - 1.0));
    double v = Clamp01(1.0 - (y - y0) / std::max(1.0, side - 1.0));
    return {hue, s, v};
}
}  // namespace

uint32_t HsvToColour(const Hsv& c) {
    double h = std::fmod(c.h, 360.0);
    if (h < 0) h += 360.0;
    double s = Clamp01(c.s), v = Clamp01(c.v);
    double chroma = v * s, hp = h / 60.0, x = chroma * (1 - std::fabs(std::fmod(hp, 2.0) - 1));
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(hp) % 6) {
        case 0: r = chroma, g = x; break;
        case 1: r = x, g = chroma; break;
        case 2: g = chroma, b = x; break;
        case 3: g = x, b = chroma; break;
        case 4: r = x, b = chroma; break;
        default: r = chroma, b = x; break;
    }
    double m = v - chroma;
    return vb::RGB(vb::CInt((r + m) * 255), vb::CInt((g + m) * 255), vb::CInt((b + m) * 255));
}

Hsv ColourToHsv(uint32_t colour) {
    double r = vb::RedOf(colour) / 255.0, g = vb::GreenOf(colour) / 255.0, b = vb::BlueOf(colour) / 255.0;
    double mx = std::max({r, g, b}), mn = std::min({r, g, b}), d = mx - mn;
    Hsv out;
    out.v = mx;
    out.s = mx > 0 ? d / mx : 0;
    if (d > 0) {
        if (mx == r) out.h = 60 * std::fmod((g - b) / d, 6.0);
        else if (mx == g) out.h = 60 * ((b - r) / d + 2);
        else out.h = 60 * ((r - g) / d + 4);
        if (out.h < 0) out.h += 360;
    }
    return out;
}

PickResult SpectrumAt(float x, float y, int width, int height) {
    double h = Clamp01(x / std::max(1.0, width - 1.0)) * 360.0;
    double f = Clamp01(y / std::max(1.0, height - 1.0));
    // The top half whitens the hue, the bottom half darkens it.
    if (f < 0.5) return {PickZone::Spectrum, {h, f * 2, 1.0}};
    return {PickZone::Spectrum, {h, 1.0, 1.0 - (f - 0.5) * 2}};
}

PickResult SvSquareAt(float x, float y, int width, int height, double hue, PickZone keep) {
    int stripLeft = width - HueStripWidth, side = std::min(stripLeft - HueStripGap, height);
    PickZone zone = keep != PickZone::None ? keep : (x >= stripLeft - HueStripGap / 2.0 ? PickZone::Hue : PickZone::SatVal);
    if (zone == PickZone::Hue) return {zone, {Clamp01(y / std::max(1.0, height - 1.0)) * 360.0, 0, 0}};
    return {zone, SatValInSquare(x, y, 0, 0, side, hue)};
}

PickResult WheelAt(float x, float y, int width, int height, const Hsv& current, PickZone keep) {
    WheelGeometry g = WheelOf(width, height);
    double dx = x - g.cx, dy = g.cy - y, r = std::hypot(dx, dy);
    PickZone zone = keep;
    if (zone == PickZone::None) {
        if (r >= g.inner && r <= g.outer + 2) zone = PickZone::Hue;
        else if (x >= g.sq0 && y >= g.sq0 && x < g.sq0 + g.sqSide && y < g.sq0 + g.sqSide) zone = PickZone::SatVal;
        else return {};
    }
    if (zone == PickZone::Hue) {
        double h = std::atan2(dy, dx) * 180 / Pi;
        if (h < 0) h += 360;
        return {zone, {h, current.s, current.v}};
    }
    return {zone, SatValInSquare(x, y, g.sq0, g.sq0, g.sqSide, current.h)};
}

const Hsv& PickerHsv() { return Current; }

namespace {
void PutOnSliders(uint32_t colour) {
    Picking = true;
    Form2::HScroll1.Value = vb::RedOf(colour);
    Form2::hscroll2.Value = vb::GreenOf(colour);
    Form2::hscroll3.Value = vb::BlueOf(colour);
    Picking = false;
    LastPicked = colour;
    PaintPickers();
}
}  // namespace

void SetPrimaryColour(uint32_t colour) {
    Hsv h = ColourToHsv(colour);
    if (h.s == 0) h.h = Current.h;  // a grey keeps the hue the pickers had
    Current = h;
    PutOnSliders(colour);
}

void PrimaryChanged() {
    if (Picking) return;
    uint32_t c = Form2::Shape4.FillColor;
    if (c != LastPicked) {
        Hsv h = ColourToHsv(c);
        // A grey has no hue of its own: keep the one the pickers had.
        if (h.s == 0) h.h = Current.h;
        if (h.v == 0) h.s = Current.s;
        Current = h;
        LastPicked = c;
    }
    PaintPickers();
}

namespace {
void Pick(const Hsv& h) {
    Current = h;
    PutOnSliders(HsvToColour(h));
}

void Mark(PictureBox& p, int x, int y) {
    for (int d = -3; d <= 3; ++d) {
        uint32_t ink = (d == -3 || d == 3) ? 0x000000 : 0xFFFFFF;
        p.PSet(x + d, y - 3, 0x000000);
        p.PSet(x + d, y + 3, 0x000000);
        p.PSet(x - 3, y + d, 0x000000);
        p.PSet(x + 3, y + d, 0x000000);
        p.PSet(x + d, y - 2, ink);
        p.PSet(x + d, y + 2, ink);
        p.PSet(x - 2, y + d, ink);
        p.PSet(x + 2, y + d, ink);
    }
}

void PaintSpectrum() {
    PictureBox& p = Form2::Picture54;
    for (int y = 0; y < p.Height; ++y)
        for (int x = 0; x < p.Width; ++x)
            p.PSet(x, y, HsvToColour(SpectrumAt(static_cast<float>(x), static_cast<float>(y), p.Width, p.Height).hsv));
    double fy = Current.s < 1 ? Current.s / 2 : 0.5 + (1 - Current.v) / 2;
    Mark(p, static_cast<int>(std::lround(Current.h / 360 * (p.Width - 1))), static_cast<int>(std::lround(fy * (p.Height - 1))));
    p.Refresh();
}

void PaintSvSquare() {
    PictureBox& p = Form2::Picture56;
    int stripLeft = p.Width - HueStripWidth, side = std::min(stripLeft - HueStripGap, p.Height);
    p.Cls(0xE0E0E0);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) p.PSet(x, y, HsvToColour(SatValInSquare(x, y, 0, 0, side, Current.h)));
    for (int y = 0; y < p.Height; ++y) {
        uint32_t c = HsvToColour({y * 360.0 / std::max(1, p.Height - 1), 1, 1});
        for (int x = stripLeft; x < p.Width; ++x) p.PSet(x, y, c);
    }
    Mark(p, static_cast<int>(std::lround(Current.s * (side - 1))), static_cast<int>(std::lround((1 - Current.v) * (side - 1))));
    int hy = static_cast<int>(std::lround(Current.h / 360 * (p.Height - 1)));
    for (int x = stripLeft; x < p.Width; ++x) p.PSet(x, hy, 0x000000);
    p.Refresh();
}

void PaintWheel() {
    PictureBox& p = Form2::Picture43;
    WheelGeometry g = WheelOf(p.Width, p.Height);
    p.Cls(0xE0E0E0);
    for (int y = 0; y < p.Height; ++y)
        for (int x = 0; x < p.Width; ++x) {
            double dx = x - g.cx, dy = g.cy - y, r = std::hypot(dx, dy);
            if (r >= g.inner && r <= g.outer) {
                double h = std::atan2(dy, dx) * 180 / Pi;
                p.PSet(x, y, HsvToColour({h < 0 ? h + 360 : h, 1, 1}));
            } else if (x >= g.sq0 && y >= g.sq0 && x < g.sq0 + g.sqSide && y < g.sq0 + g.sqSide) {
                p.PSet(x, y, HsvToColour(SatValInSquare(x, y, g.sq0, g.sq0, g.sqSide, Current.h)));
            }
        }
    double a = Current.h * Pi / 180, mid = (g.inner + g.outer) / 2;
    Mark(p, static_cast<int>(std::lround(g.cx + std::cos(a) * mid)), static_cast<int>(std::lround(g.cy - std::sin(a) * mid)));
    Mark(p, g.sq0 + static_cast<int>(std::lround(Current.s * (g.sqSide - 1))),
         g.sq0 + static_cast<int>(std::lround((1 - Current.v) * (g.sqSide - 1))));
    p.Refresh();
}
}  // namespace

void PaintPickers() {
    switch (Form2::TabBox.ListIndex) {
        case 1: PaintSpectrum(); break;
        case 2: PaintSvSquare(); break;
        case 3: PaintWheel(); break;
        default: break;  // the sliders show themselves
    }
}

void WPickColor_Click() {
    if (auto c = host().ChooseColor(Form2::Shape4.FillColor)) SetPrimaryColour(*c & 0xFFFFFF);
}

namespace Form2 {
void TabBox_Click() { PaintPickers(); }

void Picture54_MouseDown(int button, int shift, float x, float y) {
    Dragging = PickZone::Spectrum;
    Picture54_MouseMove(button, shift, x, y);
}
void Picture54_MouseMove(int button, int, float x, float y) {
    if (button == MouseButton::None) return;
    Pick(SpectrumAt(x, y, Picture54.Width, Picture54.Height).hsv);
}

void Picture56_MouseDown(int button, int shift, float x, float y) {
    Dragging = SvSquareAt(x, y, Picture56.Width, Picture56.Height, Current.h).zone;
    Picture56_MouseMove(button, shift, x, y);
}
void Picture56_MouseMove(int button, int, float x, float y) {
    if (button == MouseButton::None) return;
    PickResult r = SvSquareAt(x, y, Picture56.Width, Picture56.Height, Current.h, Dragging);
    if (r.zone == PickZone::Hue) Pick({r.hsv.h, Current.s, Current.v});
    else Pick(r.hsv);
}

void Picture43_MouseDown(int button, int shift, float x, float y) {
    Dragging = WheelAt(x, y, Picture43.Width, Picture43.Height, Current).zone;
    Picture43_MouseMove(button, shift, x, y);
}
void Picture43_MouseMove(int button, int, float x, float y) {
    if (button == MouseButton::None || Dragging == PickZone::None) return;
    PickResult r = WheelAt(x, y, Picture43.Width, Picture43.Height, Current, Dragging);
    if (r.zone != PickZone::None) Pick(r.hsv);
}
}  // namespace Form2
