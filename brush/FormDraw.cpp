// The natural brush engine: preparation of a call, the stepping along the
// segment, the colour of each dab and the refresh of what changed.
#include "brush/FormDraw.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "brush/BrushMask.h"
#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "brush/CustomBrush.h"
#include "brush/Geometry.h"
#include "colour/Paper.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/MixTables.h"
#include "core/framework/vb.h"
#include "native/ColourSpace.h"

namespace {
using vb::CInt;
using vb::CLng;
using vb::Rnd;

namespace BO = BrushOptions;

// The panel values a call reads once at its start: the picture's extent, each
// slider setting as the settings table scales it, the pen angle and whether
// the mask is smoothed.
struct Panels {
    int W = 0, H = 0;
    float value[BO::SettingCount] = {};
    bool penAngle = false, smooth = false;
    float operator[](BO::Setting s) const { return value[s]; }
    // For the settings that are whole numbers (their scale is 1).
    int whole(BO::Setting s) const { return static_cast<int>(value[s]); }
};

Panels ReadPanels() {
    Panels p;
    p.W = std::min(BufferWidth(), BufR.ubX());
    p.H = std::min(BufferHeight(), BufR.ubY());
    for (int s = 0; s < BO::SettingCount; ++s) p.value[s] = BO::Scaled(static_cast<BO::Setting>(s));
    p.penAngle = BO::Check1.Value != 0;
    p.smooth = !BO::Option1.Value;
    return p;
}

// A press far outside the window would overflow the 16-bit positions.
float Hold16(float v) { return std::clamp(v, -32768.0f, 32767.0f); }

// The mask of this call, turned and scaled once when any setting asks for it.
bool TransformMask(const Panels& p, float X, float Y, int32_t d) {
    const float size = p[BO::RandomSize], turn = p[BO::RandomAngle], speed = p[BO::SpeedScale];
    const float pressure = BO::PressureFactor(BO::Check2);
    if (!(size > 0 || turn > 0 || p.penAngle || speed != 0 || pressure < 1)) return false;
    int32_t angle = 0;
    if (turn > 0) {
        const double r1 = Rnd(), r2 = Rnd();
        angle = CLng((r1 - r2) * turn);
    }
    float scale = 1;
    if (size > 0) scale = static_cast<float>(1 - Rnd() * size / 35);
    if (p.penAngle) angle = CLng(angle + CalculateAngle(LastX, LastY, X, Y) - 90);
    if (speed != 0) {
        double f = 1 / (d / (25.1 - std::abs(speed)) + 1);
        if (speed < 0) f = 1 - f;
        scale = static_cast<float>(scale * f);
    }
    if (pressure < 1) scale *= pressure;
    ScaleRotate(angle, scale, p.smooth ? 1 : 0);
    return true;
}

// The colour of one dab: primary, jittered in hue, saturation and value.
void JitterColour(const Panels& p) {
    const float hueF = p[BO::RandomHue], satF = p[BO::RandomSaturation], valF = p[BO::RandomValue];
    if (!(hueF > 0 || satF > 0 || valF > 0)) {
        DabR = PaintR;
        DabG = PaintG;
        DabB = PaintB;
        return;
    }
    float h, s, v;
    kwfilter::RGB_To_HSV(PaintR / 255.0f, PaintG / 255.0f, PaintB / 255.0f, h, s, v);
    h = static_cast<float>(h + (Rnd() - 0.5) * 2 * (hueF * 360));
    h = static_cast<float>(CLng(h) % 360);
    s = static_cast<float>(s + (0.5 - Rnd()) * 2 * satF);
    if (s == 0) h = -1;
    v = static_cast<float>(v + (0.5 - Rnd()) * 2 * valF);
    float r, g, b;
    kwfilter::HSV_To_RGB(r, g, b, h, s, v);
    DabR = std::clamp(CLng(r * 255.0), 0, 255);
    DabG = std::clamp(CLng(g * 255.0), 0, 255);
    DabB = std::clamp(CLng(b * 255.0), 0, 255);
}

// Bleed: the colour picked up at the segment's start, not at the dab.
void Bleed(const Panels& p) {
    const int bleed = p.whole(BO::BleedAmount);
    if (bleed <= 0) return;
    int cx = std::min<int>(LastX, p.W - 2), cy = std::min<int>(LastY, p.H - 2);
    if (cx < 0) cx = 2;
    if (cy < 0) cy = 2;
    if (cx > p.W || cy > p.H) return;  // a picture too small to sample
    if (BufA(cx, cy) > 128 || App.AlphaOff != 0) {
        PickR = BufR(cx, cy);
        PickG = BufG(cx, cy);
        PickB = BufB(cx, cy);
    }
    const int keep = 255 - bleed;
    DabR = (DabR * keep + PickR * bleed) / 255;
    DabG = (DabG * keep + PickG * bleed) / 255;
    DabB = (DabB * keep + PickB * bleed) / 255;
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
    s.mode = BrushMode;
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
    if (App.CustomBrushOn == -1 && StrokeRefreshOff == 255) return;
    // A custom brush reaches half its size beyond the line each way.
    const int r = App.CustomBrushOn == -1 ? std::max(BrushWidth, BrushHeight) / 2 + 1 : BrushRadius;
    const int sx = LastX <= CurX ? 1 : -1, sy = LastY <= CurY ? 1 : -1;
    int left = LastX - sx * r, right = CurX + sx * r, top = LastY - sy * r, bottom = CurY + sy * r;
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    // Jittered dabs may land up to the jitter beyond the line's box.
    const int jitter = p.whole(BO::RandomPosition);
    left = std::max(left - jitter, 0);
    top = std::max(top - jitter, 0);
    right = std::min(right + jitter, p.W - 1);
    bottom = std::min(bottom + jitter, p.H - 1);
    if (left <= right && top <= bottom) RefreshRect(left, top, right + 1, bottom + 1);
}

// The tool panel's step and primary colour, and the paper, read once a call.
void ReadPaperAndColour() {
    ReadPaperState();
    BrushStep = static_cast<int16_t>(Form2::slider1.Value);
    const uint32_t primary = Form2::Shape4.FillColor;
    PaintR = vb::RedOf(primary);
    PaintG = vb::GreenOf(primary);
    PaintB = vb::BlueOf(primary);
}

// Moving the mouse with no button down only places the brush and refills it.
void PlaceBrush(float x, float y) {
    LastX = CInt(x);
    LastY = CInt(y);
    App.BrushFlow = static_cast<float>(Form2::HScroll4.Value);
}

// The length of the segment from the last position to the current one, in
// whole pixels: the number of steps taken along it.
int32_t SegmentLength() {
    const int64_t dx = LastX - CurX, dy = LastY - CurY;
    return CLng(std::sqrt(static_cast<double>(dx * dx + dy * dy)));
}

// What every dab of one segment shares.
struct DabRun {
    const Panels& p;
    int16_t button;
    kwbrush::DabTarget target;
    kwbrush::DabSettings settings;
    uint32_t secondary;
    int base;  // the opacity before the paper's drybrush; dryout lowers it
};

// The segment starts at the last position with the call's mask, the full
// opacity of the tool panel and its painting mode.
DabRun StartSegment(const Panels& p, int16_t button, bool turned) {
    PrevDabX = LastX;
    PrevDabY = LastY;
    std::memcpy(DabMask, turned ? BrushMaskXform : BrushMask, sizeof DabMask);
    BrushOpacity = static_cast<int16_t>(Form2::HScroll4.Value);
    const float pressure = BO::PressureFactor(BO::Check3);
    if (pressure < 1) BrushOpacity = CInt(BrushOpacity * pressure);
    BrushMode = App.PaintMode;
    const kwbrush::DabTarget target{BufR.data(), BufG.data(), BufB.data(), BufA.data(), BufR.stride(), p.W, p.H};
    return DabRun{p, button, target, SegmentSettings(), Form2::Shape1.FillColor, BrushOpacity};
}

// A dab's offset from the line: two draws each way, so small offsets come
// more often than large ones. The draws are taken x first, then y.
std::pair<int, int> JitterPosition(const Panels& p) {
    const float jitter = p[BO::RandomPosition];
    const double a1 = Rnd() * jitter, a2 = Rnd() * jitter;
    const int jx = CInt(a1 - a2);
    const double b1 = Rnd() * jitter, b2 = Rnd() * jitter;
    const int jy = CInt(b1 - b2);
    return {jx, jy};
}

// Dryout: with the left button each dab carries less paint than the last, and
// the brush keeps what is left until it is placed again.
void Dryout(DabRun& run) {
    const float dry = run.p[BO::Dryout];
    if (run.button != MouseButton::Left || !(dry > 0)) return;
    App.BrushFlow = static_cast<float>(std::clamp((1 - dry / 384.0) * App.BrushFlow, 0.0, 255.0));
    BrushOpacity = CInt(App.BrushFlow);
    run.base = BrushOpacity;
}

// One dab at (px, py): its place and colour jittered, dried out, mixed with
// what it picked up, the secondary colour for the right button, then laid by
// the custom brush or the natural one. The random draws keep this order.
void PaintDab(DabRun& run, float px, float py) {
    const auto [jx, jy] = JitterPosition(run.p);
    JitterColour(run.p);
    Dryout(run);
    Bleed(run.p);
    if (run.button == MouseButton::Right) {
        DabR = vb::RedOf(run.secondary);
        DabG = vb::GreenOf(run.secondary);
        DabB = vb::BlueOf(run.secondary);
    }
    if (App.CustomBrushOn == -1) {
        int16_t button = run.button;
        float x = px + static_cast<float>(jx), y = py + static_cast<float>(jy);
        CustomBlit(button, x, y);
    } else {
        NaturalDab(run.target, run.settings, run.base, px, py, jx, jy);
    }
    PrevDabX = CInt(px);
    PrevDabY = CInt(py);
}

// Walks the segment a pixel of distance at a time and lays a dab every
// BrushStep pixels; the count carries over from segment to segment.
void PaintSegment(DabRun& run, int32_t d) {
    float px = LastX, py = LastY;
    const double stepX = static_cast<double>(CurX - LastX) / (d == 0 ? 1 : d);
    const double stepY = static_cast<double>(CurY - LastY) / (d == 0 ? 1 : d);
    for (int32_t i = 1; i <= d; ++i) {
        StepCounter = vb::Wrap16(StepCounter + 1);
        if (StepCounter > BrushStep) StepCounter = 1;
        if (StepCounter == 1) PaintDab(run, px, py);
        px = static_cast<float>(px + stepX);
        py = static_cast<float>(py + stepY);
    }
}
}  // namespace

namespace Form1 {
void Form_Draw(int16_t& Button, int16_t& Shift, float& X, float& Y) {
    (void)Shift;
    if (!DocumentExists()) return;
    const Panels p = ReadPanels();
    if (p.W <= 0 || p.H <= 0) return;
    ReadPaperAndColour();
    // The caller gets picture pixels back in X and Y.
    const float z = static_cast<float>(App.ZoomPercent) / 100.0f;
    X = X / z;
    Y = Y / z;
    const float x = Hold16(X), y = Hold16(Y);
    if (Button == MouseButton::None) PlaceBrush(x, y);
    if (Button != MouseButton::Left && Button != MouseButton::Right) return;
    CurX = CInt(x);
    CurY = CInt(y);
    const int32_t d = SegmentLength();
    // The dab's turn and scale are drawn once for the whole segment.
    const bool turned = TransformMask(p, x, y, d);
    DabRun run = StartSegment(p, Button, turned);
    PaintSegment(run, d);
    RefreshSegment(p);
    LastX = CurX;
    LastY = CurY;
}
}  // namespace Form1
