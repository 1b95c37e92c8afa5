// DeliverPixel: what a fill or shape tool puts at a pixel, after fill style,
// fill mode, noise, paper, opacity and alpha, in that order. It never writes;
// the caller stores the colour it returns.
//
// A loop over many pixels takes a snapshot of the settings once with
// DeliverBegin, calls the inline DeliverPixel per pixel, and hands the work
// values back with DeliverEnd. The classic entry further down does all three
// for a single pixel. The per-pixel function allocates nothing and calls out
// only for the random numbers of noise. Callers clip: X, Y must lie in the
// picture, and the box should contain the pixel (a gradient position outside
// 0..255 is clamped rather than read out of the table).
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "core/framework/vb.h"
#include "native/Rounding.h"

// The opacity work fields shared with the shape and fill tools.
extern int16_t OpacitySaved, OpacityInverse;
extern float OpacityFraction;  // Opacity / 255 as the caller set it

// The values DeliverPixel keeps from call to call: with FillStyle 5 or 6 and no
// custom brush the colour of the previous call is delivered again.
struct DeliverStatics {
    int32_t R = 0, G = 0, B = 0;
    float t = 0;
};
extern DeliverStatics DeliverKept;

struct DeliverContext {
    int fillStyle, fillMode, noiseAmount, noiseMode;
    const uint8_t *gradR, *gradG, *gradB, *gradA;
    int opacity;
    float opacityFraction;
    bool bump, dry, negative;
    float strength;
    const uint8_t* paperB;
    const float* paperF;
    size_t paperStride;
    int paperW, paperH;  // 0 when there is no paper
    const uint8_t *brushR, *brushG, *brushB;
    size_t brushStride;
    int brushW, brushH;  // 0 when there is no custom brush
    bool interpolate;
    const uint8_t* table;  // the mixing table of the fill mode, or null
    bool tableSwapped;     // subtract takes the picture first
    uint8_t *r, *g, *b;
    const uint8_t *a, *sr, *sg, *sb;
    size_t stride;
    uint8_t alphaOff;
    // Work values, handed back by DeliverEnd.
    int32_t R, G, B;
    float t;
    int16_t opacitySaved, opacityInverse;
};

DeliverContext DeliverBegin();
void DeliverEnd(const DeliverContext& c);

namespace deliver_detail {
using kwround::RoundD;
using kwround::RoundF;
inline int32_t Clamp255(int32_t v) { return v < 0 ? 0 : (v > 255 ? 255 : v); }

[[gnu::always_inline]] inline int LookUp(DeliverContext& c) {
    int p = RoundF(c.t);
    p = p < 0 ? 0 : (p > 255 ? 255 : p);
    c.R = c.gradR[p];
    c.G = c.gradG[p];
    c.B = c.gradB[p];
    return c.gradA[p];
}

[[gnu::always_inline]] inline void BrushStretched(DeliverContext& c, int X, int Y, int X1, int Y1, int X2, int Y2) {
    const float floor = c.interpolate ? 0.001f : 0.01f;
    float w = static_cast<float>(X2 - X1), h = static_cast<float>(Y2 - Y1);
    if (w <= 0) w = floor;
    if (h <= 0) h = floor;
    float fx = static_cast<float>(X - X1) * (255.0f / w), fy = static_cast<float>(Y - Y1) * (255.0f / h);
    float sx = static_cast<float>(c.brushW - 1) / 255.0f, sy = static_cast<float>(c.brushH - 1) / 255.0f;
    if (!c.interpolate) {
        int u = std::clamp(RoundF(sx * fx), 0, c.brushW - 1), v = std::clamp(RoundF(sy * fy), 0, c.brushH - 1);
        size_t i = static_cast<size_t>(v) * c.brushStride + static_cast<size_t>(u);
        c.R = c.brushR[i];
        c.G = c.brushG[i];
        c.B = c.brushB[i];
        return;
    }
    // A pixel outside the box would sample outside the brush: hold it to the edge.
    fx = std::clamp(fx * sx, 0.0f, static_cast<float>(c.brushW - 1));
    fy = std::clamp(fy * sy, 0.0f, static_cast<float>(c.brushH - 1));
    int u = static_cast<int>(fx), v = static_cast<int>(fy);
    float ax = fx - static_cast<float>(u), bx = 1 - ax, ay = fy - static_cast<float>(v), by = 1 - ay;
    // The planes run to BrushWidth and BrushHeight inclusive: u + 1 and v + 1 stay inside.
    size_t i00 = static_cast<size_t>(v) * c.brushStride + static_cast<size_t>(u), i10 = i00 + 1;
    size_t i01 = i00 + c.brushStride, i11 = i01 + 1;
    auto mix = [&](const uint8_t* p) {
        float top = p[i00] * bx + p[i10] * ax;
        float bottom = p[i01] * bx + p[i11] * ax;
        return RoundF(top * by + bottom * ay);
    };
    c.R = mix(c.brushR);
    c.G = mix(c.brushG);
    c.B = mix(c.brushB);
}

[[gnu::always_inline]] inline void Noise(DeliverContext& c) {
    const double n = c.noiseAmount;
    if (c.noiseMode == 1) {
        c.R = Clamp255(RoundD(c.R + (vb::Rnd() - 0.5) * n));
        c.G = Clamp255(RoundD(c.G + (vb::Rnd() - 0.5) * (n * 1.1)));
        c.B = Clamp255(RoundD(c.B + (vb::Rnd() - 0.5) * n));
        return;
    }
    int v = RoundD((vb::Rnd() - 0.5) * n);
    int m = std::max(c.R, std::max(c.G, c.B));
    int k = m > 0 ? RoundD(255.0 / m) : 255;
    c.R = Clamp255(RoundD(c.R + v * (static_cast<double>(c.R) * k) / 255.0));
    c.G = Clamp255(RoundD(c.G + v * (static_cast<double>(c.G) * k) / 255.0));
    c.B = Clamp255(RoundD(c.B + v * (static_cast<double>(c.B) * k) / 255.0));
}
}  // namespace deliver_detail

// The steps a setting can need. A loop over many pixels may be compiled for the
// steps its snapshot needs (DeliverSteps), leaving out the tests of the others;
// with every step the result is the same.
enum : unsigned { DpStyle = 1, DpMode = 2, DpNoise = 4, DpPaper = 8, DpAlpha = 16, DpAll = 31 };
inline unsigned DeliverSteps(const DeliverContext& c) {
    unsigned steps = 0;
    if (c.fillStyle >= 1 && c.fillStyle <= 6) steps |= DpStyle;
    if (c.table || c.fillMode == 7) steps |= DpMode;
    if (c.noiseAmount > 0) steps |= DpNoise;
    if (c.paperW > 0 && (c.bump || c.dry)) steps |= DpPaper;
    if (c.alphaOff != 255) steps |= DpAlpha;
    return steps;
}

// Inlined into each loop, so that the settings stay in registers across pixels.
template <unsigned Steps>
[[gnu::always_inline]] inline uint32_t DeliverPixelIn(DeliverContext& c, uint32_t colour, int X, int Y, int X1, int Y1,
                                                      int X2, int Y2) {
    using namespace deliver_detail;
    int ga = 255;
    // 1, 2. The colour the fill style asks for.
    switch ((Steps & DpStyle) ? c.fillStyle : 0) {
        case 1:
        case 2:
        case 3: {  // across the box, or down it for 3
            const bool down = c.fillStyle == 3;
            float span = static_cast<float>(down ? Y2 - Y1 : X2 - X1);
            if (span <= 0) span = 0.01f;
            c.t = static_cast<float>(down ? Y - Y1 : X - X1) * (255.0f / span);
            ga = LookUp(c);
            break;
        }
        case 4: {
            float hx = static_cast<float>(X2 - X1) / 2, hy = static_cast<float>(Y2 - Y1) / 2;
            float w = static_cast<float>(X2 - X1), h = static_cast<float>(Y2 - Y1);
            if (w == 0) w = 1;
            if (h == 0) h = 1;
            float dx = (static_cast<float>(X - X1) - hx) * (255.0f / w);
            float dy = (static_cast<float>(Y - Y1) - hy) * (255.0f / h);
            c.t = (dx * dx + dy * dy) / 128.0f;
            ga = LookUp(c);
            break;
        }
        case 5:
            if (c.brushW > 0) {
                int u = X % c.brushW, v = Y % c.brushH;
                if (u < 0) u += c.brushW;
                if (v < 0) v += c.brushH;
                size_t i = static_cast<size_t>(v) * c.brushStride + static_cast<size_t>(u);
                c.R = c.brushR[i];
                c.G = c.brushG[i];
                c.B = c.brushB[i];
            }
            break;
        case 6:
            if (c.brushW > 0) BrushStretched(c, X, Y, X1, Y1, X2, Y2);
            break;
        default:
            c.R = static_cast<int32_t>(colour & 255);
            c.G = static_cast<int32_t>((colour & 65280) / 256);
            c.B = static_cast<int32_t>((colour & 16711680) / 65536);
            break;
    }
    // 3. The gradient's own opacity scales the caller's.
    int opacity = c.opacity;
    if (ga != 255) opacity = RoundF(static_cast<float>(opacity * ga) / 255.0f);
    c.opacitySaved = static_cast<int16_t>(opacity);
    // 4. The fill mode, against the picture as it is.
    const size_t at = static_cast<size_t>(Y) * c.stride + static_cast<size_t>(X);
    const int oldR = c.r[at], oldG = c.g[at], oldB = c.b[at];
    if (!(Steps & DpMode)) {
    } else if (c.table) {
        if (c.tableSwapped) {
            c.R = c.table[oldR + 256 * c.R];
            c.G = c.table[oldG + 256 * c.G];
            c.B = c.table[oldB + 256 * c.B];
        } else {
            c.R = c.table[c.R + 256 * oldR];
            c.G = c.table[c.G + 256 * oldG];
            c.B = c.table[c.B + 256 * oldB];
        }
    } else if (c.fillMode == 7) {
        c.R = c.sr[at];
        c.G = c.sg[at];
        c.B = c.sb[at];
    }
    // 5. Noise on the colour.
    if ((Steps & DpNoise) && c.noiseAmount > 0) Noise(c);
    // 6, 7. Paper: the bump on the colour, drybrush on the opacity.
    if ((Steps & DpPaper) && c.paperW > 0 && (c.bump || c.dry)) {
        int u = X % c.paperW, v = Y % c.paperH;
        size_t pi = static_cast<size_t>(v) * c.paperStride + static_cast<size_t>(u);
        if (c.bump) {
            float e = c.paperF[pi] * 255.0f;
            c.R = Clamp255(RoundF(static_cast<float>(c.R) + e));
            c.G = Clamp255(RoundF(static_cast<float>(c.G) + e));
            c.B = Clamp255(RoundF(static_cast<float>(c.B) + e));
        }
        if (c.dry) {
            int p = c.paperB[pi];
            float height = static_cast<float>(c.negative ? p : 255 - p);
            opacity = RoundF(static_cast<float>(c.opacitySaved) - height * c.opacityFraction * c.strength);
        }
    }
    // 8, 9. How much of the colour lands.
    if (opacity < 0) opacity = 0;
    const int inverse = 255 - opacity;
    c.opacityInverse = static_cast<int16_t>(inverse);
    // Every term is 0..255 here: unsigned division by 255 is a multiply and a shift.
    const unsigned op = static_cast<unsigned>(opacity), inv = static_cast<unsigned>(inverse);
    unsigned R = (static_cast<unsigned>(c.R) * op + static_cast<unsigned>(oldR) * inv) / 255;
    unsigned G = (static_cast<unsigned>(c.G) * op + static_cast<unsigned>(oldG) * inv) / 255;
    unsigned B = (static_cast<unsigned>(c.B) * op + static_cast<unsigned>(oldB) * inv) / 255;
    // 10. The alpha plane, unless AlphaOff lets everything through.
    const unsigned a = (Steps & DpAlpha) ? (c.a[at] | c.alphaOff) : 255u;
    if (a < 255) {
        const unsigned na = 255 - a;
        R = (static_cast<unsigned>(oldR) * na + R * a) / 255;
        G = (static_cast<unsigned>(oldG) * na + G * a) / 255;
        B = (static_cast<unsigned>(oldB) * na + B * a) / 255;
    }
    return R | (G << 8) | (B << 16);
}

// One pixel with every step.
[[gnu::always_inline]] inline uint32_t DeliverPixel(DeliverContext& c, uint32_t colour, int X, int Y, int X1, int Y1,
                                                    int X2, int Y2) {
    return DeliverPixelIn<DpAll>(c, colour, X, Y, X1, Y1, X2, Y2);
}

// The classic entry: one pixel, settings read afresh. A pixel outside the
// picture gives Result = Colour and changes nothing.
void DeliverPixel(int32_t& Colour, int16_t& X, int16_t& Y, int16_t& X1, int16_t& Y1, int16_t& X2, int16_t& Y2,
                  int32_t& Result);

// The colour under the baster, 1, 9 or 25 pixels by the checked entry of TBaster.
void TurkeyColor(int32_t X, int32_t Y, int32_t& R, int32_t& G, int32_t& B);
// Single pixel readers of the main and the undo planes: 0 outside the picture.
void AlphaRPixel(int16_t& x, int16_t& y, uint8_t& out);
void AlphaGPixel(int16_t& x, int16_t& y, uint8_t& out);
void AlphaBPixel(int16_t& x, int16_t& y, uint8_t& out);
void uAlphaRPixel(int16_t& x, int16_t& y, uint8_t& out);
void uAlphaGPixel(int16_t& x, int16_t& y, uint8_t& out);
void uAlphaBPixel(int16_t& x, int16_t& y, uint8_t& out);

// The whole-buffer fill, key q.
void Buffer_Fill_Click();
// Its pixel loop: every pixel of the picture through DeliverPixel with the
// picture as the box; the opacity and paper fields must be loaded.
void DeliverFill(uint32_t colour);
// Loads Opacity and its work fields from the tool panel, and the paper state.
void LoadFillOpacity();
