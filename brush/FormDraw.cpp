// The natural brush engine: preparation of a call, the stepping along the
// segment, the colour of each dab and the refresh of what changed.
#include "brush/FormDraw.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "brush/BrushMask.h"
#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "brush/Geometry.h"
#include "colour/Paper.h"
#include "core/AppState.h"
#include "core/Buffers.h"
#include "core/Display.h"
#include "core/Form2.h"
#include "core/MixTables.h"
#include "core/vb.h"
#include "native/ColourSpace.h"

namespace {
using vb::CInt;
using vb::CLng;
using vb::Rnd;

// The panel values a call reads once at its start.
struct Panels {
    int W = 0, H = 0;
    int P = 0, Z = 0, A = 0, bleed = 0, D = 0, speed = 0;
    float hueF = 0, satF = 0, valF = 0;
    bool penAngle = false, smooth = false;
};

Panels ReadPanels() {
    Panels p;
    p.W = std::min(BufferWidth(), BufR.ubX());
    p.H = std::min(BufferHeight(), BufR.ubY());
    p.P = BrushOptions::Hscroll1.Value;
    p.Z = BrushOptions::Hscroll4.Value;
    p.A = BrushOptions::Hscroll3.Value;
    p.bleed = BrushOptions::Hscroll5.Value;
    p.D = BrushOptions::Hscroll8.Value;
    p.speed = BrushOptions::hscroll9.Value;
    p.hueF = static_cast<float>(BrushOptions::Hscroll2.Value) / 360.0f;
    p.satF = static_cast<float>(BrushOptions::hscroll6.Value) / 100.0f;
    p.valF = static_cast<float>(BrushOptions::Hscroll7.Value) / 100.0f;
    p.penAngle = BrushOptions::Check1.Value != 0;
    p.smooth = !BrushOptions::Option1.Value;
    return p;
}

// A press far outside the window would overflow the 16-bit positions.
float Hold16(float v) { return std::clamp(v, -32768.0f, 32767.0f); }

// The mask of this call, turned and scaled once when any setting asks for it.
bool TransformMask(const Panels& p, float X, float Y, int32_t d) {
    if (!(p.Z > 0 || p.A > 0 || p.penAngle || p.speed != 0)) return false;
    int32_t angle = 0;
    if (p.A > 0) {
        const double r1 = Rnd(), r2 = Rnd();
        angle = CLng((r1 - r2) * p.A);
    }
    float scale = 1;
    if (p.Z > 0) scale = static_cast<float>(1 - Rnd() * p.Z / 35);
    if (p.penAngle) angle = CLng(angle + CalculateAngle(LastX, LastY, X, Y) - 90);
    if (p.speed != 0) {
        double f = 1 / (d / (25.1 - std::abs(p.speed)) + 1);
        if (p.speed < 0) f = 1 - f;
        scale = static_cast<float>(scale * f);
    }
    ScaleRotate(angle, scale, p.smooth ? 1 : 0);
    return true;
}

// The colour of one dab: primary, jittered in hue, saturation and value.
void JitterColour(const Panels& p) {
    if (!(p.hueF > 0 || p.satF > 0 || p.valF > 0)) {
        DabR = PaintR;
        DabG = PaintG;
        DabB = PaintB;
        return;
    }
    float h, s, v;
    kwfilter::RGB_To_HSV(PaintR / 255.0f, PaintG / 255.0f, PaintB / 255.0f, h, s, v);
    h = static_cast<float>(h + (Rnd() - 0.5) * 2 * (p.hueF * 360));
    h = static_cast<float>(CLng(h) % 360);
    s = static_cast<float>(s + (0.5 - Rnd()) * 2 * p.satF);
    if (s == 0) h = -1;
    v = static_cast<float>(v + (0.5 - Rnd()) * 2 * p.valF);
    float r, g, b;
    kwfilter::HSV_To_RGB(r, g, b, h, s, v);
    DabR = std::clamp(CLng(r * 255.0), 0, 255);
    DabG = std::clamp(CLng(g * 255.0), 0, 255);
    DabB = std::clamp(CLng(b * 255.0), 0, 255);
}

// Bleed: the colour picked up at the segment's start, not at the dab.
void Bleed(const Panels& p) {
    if (p.bleed <= 0) return;
    int cx = std::min<int>(LastX, p.W - 2), cy = std::min<int>(LastY, p.H - 2);
    if (cx < 0) cx = 2;
    if (cy < 0) cy = 2;
    if (cx > p.W || cy > p.H) return;  // a picture too small to sample
    if (BufA(cx, cy) > 128 || App.AlphaOff != 0) {
        PickR = BufR(cx, cy);
        PickG = BufG(cx, cy);
        PickB = BufB(cx, cy);
    }
    const int keep = 255 - p.bleed;
    DabR = (DabR * keep + PickR * p.bleed) / 255;
    DabG = (DabG * keep + PickG * p.bleed) / 255;
    DabB = (DabB * keep + PickB * p.bleed) / 255;
}

// The mixing table of a painting mode's blend; the brush works multiply out itself.
const uint8_t* ModeTable(kwmode::PaintMode mode) {
    switch (kwmode::BlendOf(mode)) {
        case kwmode::Blend::Add: return MixAdd;
        case kwmode::Blend::Subtract: return MixSub;
        case kwmode::Blend::Divide: return MixDiv;
        case kwmode::Blend::Screen: return MixScreen;
        case kwmode::Blend::AroundGrey: return MixAroundGrey;
        default: return nullptr;
    }
}

template <typename A, typename B>
bool SamePlaneShape(const A& a, const B& b) {
    return a.ubX() == b.ubX() && a.ubY() == b.ubY();
}

// What the general case reads that does not change from dab to dab.
kwbrush::DabSettings SegmentSettings() {
    kwbrush::DabSettings s;
    s.mode = static_cast<kwmode::PaintMode>(BrushMode);
    s.table = ModeTable(s.mode);
    s.bump = BumpinessOn != 0;
    s.dry = DrybrushOn != 0;
    s.negative = NegativeOn != 0;
    s.strength = PaperStrength;
    if (PaperUsable()) {
        s.paperF = PaperF.data();
        s.paperB = PaperB.data();
        s.paperStride = PaperB.stride();
        s.paperW = PaperWidth;
        s.paperH = PaperHeight;
    }
    s.alphaOff = App.AlphaOff;
    if (!SwapR.empty() && SamePlaneShape(SwapR, BufR) && SamePlaneShape(SwapG, BufR) && SamePlaneShape(SwapB, BufR)) {
        s.sr = SwapR.data();
        s.sg = SwapG.data();
        s.sb = SwapB.data();
    }
    s.pantoX = PantoX;
    s.pantoY = PantoY;
    if (CustomBrushUsable()) {
        s.br = BrushR.data();
        s.bg = BrushG.data();
        s.bb = BrushB.data();
        s.brushStride = BrushR.stride();
        s.brushW = BrushWidth;
        s.brushH = BrushHeight;
    }
    s.patX = PatOrgX;
    s.patY = PatOrgY;
    return s;
}

// One dab of the natural brush at (px + jx, py + jy).
void NaturalDab(const kwbrush::DabTarget& target, kwbrush::DabSettings& s, int base, float px, float py, int jx,
                int jy) {
    const int r = BrushRadius;
    kwbrush::DabBox box{CLng(px - r + jx), CLng(px + r + jx), CLng(py - r + jy), CLng(py + r + jy),
                        kwbrush::MaskCentre - r};
    const bool fast = s.mode == kwmode::PaintMode::Default && BumpinessOn == 0 && DrybrushOn == 0 && MarqueeAtDown == 0;
    if (fast) {
        kwbrush::DabFast(target, DabMask, box, DabR, DabG, DabB, BrushOpacity);
        return;
    }
    s.cR = DabR / 256.0f;
    s.cG = DabG / 256.0f;
    s.cB = DabB / 256.0f;
    s.baseOpacity = base;
    s.opacity = BrushOpacity;
    // Smear reads the picture where the last dab lay, so it scans against the stroke.
    s.smearDX = px - PrevDabX;
    s.smearDY = py - PrevDabY;
    s.reverseRows = s.mode == kwmode::PaintMode::Smear && PrevDabY < py;
    s.reverseCols = s.mode == kwmode::PaintMode::Smear && PrevDabX < px;
    // Drybrush leaves the opacity of the last pixel it painted.
    BrushOpacity = static_cast<int16_t>(kwbrush::DabGeneral(target, DabMask, box, s));
}

// Hands the changed rectangle of the segment to the display.
void RefreshSegment(const Panels& p) {
    if (App.CustomBrushOn == -1) {
        if (StrokeRefreshOff != 255) RedisplayWindow();
        return;
    }
    const int r = BrushRadius;
    const int sx = LastX <= CurX ? 1 : -1, sy = LastY <= CurY ? 1 : -1;
    int left = LastX - sx * r, right = CurX + sx * r, top = LastY - sy * r, bottom = CurY + sy * r;
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    left = std::max(left - p.P, 0);
    top = std::max(top - p.P, 0);
    right = std::min(right + p.P, p.W - 1);
    bottom = std::min(bottom + p.P, p.H - 1);
    if (left <= right && top <= bottom) RefreshRect(left, top, right + 1, bottom + 1);
}
}  // namespace

namespace Form1 {
void Form_Draw(int16_t& Button, int16_t& Shift, float& X, float& Y) {
    (void)Shift;
    if (!DocumentExists()) return;
    // 1. The panels, the paper and the colour, read once.
    const Panels p = ReadPanels();
    if (p.W <= 0 || p.H <= 0) return;
    ReadPaperState();
    BrushStep = static_cast<int16_t>(Form2::slider1.Value);
    const uint32_t primary = Form2::Shape4.FillColor;
    PaintR = vb::RedOf(primary);
    PaintG = vb::GreenOf(primary);
    PaintB = vb::BlueOf(primary);
    // 2. Picture pixels.
    const float z = static_cast<float>(App.ZoomPercent) / 100.0f;
    X = X / z;
    Y = Y / z;
    const float x = Hold16(X), y = Hold16(Y);
    // 3. Button 0 only places the brush.
    if (Button == 0) {
        LastX = CInt(x);
        LastY = CInt(y);
        App.BrushFlow = static_cast<float>(Form2::HScroll4.Value);
    }
    if (Button != 1 && Button != 2) return;
    // 5. The segment from the last position to this one.
    CurX = CInt(x);
    CurY = CInt(y);
    const int64_t dx = LastX - CurX, dy = LastY - CurY;
    const int32_t d = CLng(std::sqrt(static_cast<double>(dx * dx + dy * dy)));
    // 4. The dab's turn and scale, once for the whole segment.
    const bool turned = TransformMask(p, x, y, d);
    // 6, 7.
    float px = LastX, py = LastY;
    PrevDabX = LastX;
    PrevDabY = LastY;
    std::memcpy(DabMask, turned ? BrushMaskXform : BrushMask, sizeof DabMask);
    BrushOpacity = static_cast<int16_t>(Form2::HScroll4.Value);
    int base = BrushOpacity;
    BrushMode = App.PaintMode;

    const kwbrush::DabTarget target{BufR.data(), BufG.data(), BufB.data(), BufA.data(), BufR.stride(), p.W, p.H};
    kwbrush::DabSettings settings = SegmentSettings();
    const uint32_t secondary = Form2::Shape1.FillColor;
    const double stepX = static_cast<double>(CurX - LastX) / (d == 0 ? 1 : d);
    const double stepY = static_cast<double>(CurY - LastY) / (d == 0 ? 1 : d);
    for (int32_t i = 1; i <= d; ++i) {
        // A dab every BrushStep pixels of distance; the count carries over between segments.
        StepCounter = vb::Wrap16(StepCounter + 1);
        if (StepCounter > BrushStep) StepCounter = 1;
        if (StepCounter == 1) {
            const double a1 = Rnd() * p.P, a2 = Rnd() * p.P;
            const int jx = CInt(a1 - a2);
            const double b1 = Rnd() * p.P, b2 = Rnd() * p.P;
            const int jy = CInt(b1 - b2);
            JitterColour(p);
            if (Button == 1 && p.D > 0) {
                App.BrushFlow = static_cast<float>(std::clamp((1 - p.D / 384.0) * App.BrushFlow, 0.0, 255.0));
                BrushOpacity = CInt(App.BrushFlow);
                base = BrushOpacity;
            }
            Bleed(p);
            if (Button == 2) {
                DabR = vb::RedOf(secondary);
                DabG = vb::GreenOf(secondary);
                DabB = vb::BlueOf(secondary);
            }
            if (App.CustomBrushOn == -1) {
                if (CustomBlit) CustomBlit(Button, px + static_cast<float>(jx), py + static_cast<float>(jy));
            } else {
                NaturalDab(target, settings, base, px, py, jx, jy);
            }
            PrevDabX = CInt(px);
            PrevDabY = CInt(py);
        }
        px = static_cast<float>(px + stepX);
        py = static_cast<float>(py + stepY);
    }
    RefreshSegment(p);
    LastX = CurX;
    LastY = CurY;
}
}  // namespace Form1
