// The fill pipeline: what a fill or shape tool puts at one pixel, after fill
// style, fill mode, noise, paper, opacity and alpha, in that order.
//
// Conventions:
//
//  * Settings, state, draws. The kernel reads a DeliverSettings, which it never
//    writes, and a DeliverState, the values kept from pixel to pixel, which it
//    updates. The draws of colour noise come in from the caller (NoiseDraws),
//    so the kernel itself is deterministic.
//  * Planes. The picture planes r, g, b, the alpha plane a and the swap planes
//    sr, sg, sb share one stride; the paper and the brush have their own. The
//    kernel reads them and writes nothing: it returns the colour, 0x00BBGGRR,
//    and the caller stores it.
//  * Clipping. None: the caller keeps X, Y inside the picture. The box
//    X1..X2 by Y1..Y2 should contain the pixel; a gradient position outside
//    0..255 is held at the ends of the table rather than read out of it, and
//    the stretched brush holds its sample to the brush's edge.
//  * Arithmetic. Rounding to nearest even, single precision where the
//    formulas are single and for noise per channel, double for value noise,
//    in the order of the steps.
//  * Inline and allocation-free: a loop over many pixels compiles it in, and
//    may leave out the steps its settings cannot need (DeliverSteps).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "native/Modes.h"
#include "native/Rounding.h"

namespace kwfill {

struct DeliverSettings {
    kwmode::FillStyle style = kwmode::FillStyle::Colour;
    kwmode::FillMode mode = kwmode::FillMode::Default;
    int noiseAmount = 0;           // 0: no noise
    bool noisePerChannel = false;  // a draw per channel; otherwise one draw scaled by the colour
    const uint8_t *gradR = nullptr, *gradG = nullptr, *gradB = nullptr, *gradA = nullptr;  // 256 steps each
    int opacity = 255;             // the caller's opacity, 0..255
    float opacityFraction = 1.0f;  // the share of it the paper's height may take away
    bool bump = false, dry = false, negative = false;
    float strength = 0;            // PaperStrength
    const uint8_t* paperB = nullptr;  // height
    const float* paperF = nullptr;    // slope
    size_t paperStride = 0;
    int paperW = 0, paperH = 0;  // 0 when there is no paper
    const uint8_t *brushR = nullptr, *brushG = nullptr, *brushB = nullptr;
    size_t brushStride = 0;
    int brushW = 0, brushH = 0;  // 0 when there is no custom brush
    bool interpolate = false;    // the stretched brush samples bilinearly
    const uint8_t* table = nullptr;  // the mixing table of the fill mode, or null
    bool tableSwapped = false;       // the table takes the picture first (subtract)
    const uint8_t *r = nullptr, *g = nullptr, *b = nullptr, *a = nullptr;
    const uint8_t *sr = nullptr, *sg = nullptr, *sb = nullptr;  // read by rubthrough only
    size_t stride = 0;
    uint8_t alphaOff = 255;  // 255 lets every pixel through whatever the alpha plane says
};

// What the pipeline keeps from pixel to pixel. R, G, B are the colour of the
// last pixel after its fill mode, noise and bump: a brush style without a brush
// delivers it again. t is the last gradient position; the opacity values are
// the last pixel's, before paper (saved) and after it (inverse = 255 - opacity).
struct DeliverState {
    int32_t R = 0, G = 0, B = 0;
    float t = 0;
    int16_t opacitySaved = 0, opacityInverse = 0;
};

// One pixel's noise draws: value noise takes one uniform draw u in [0, 1);
// noise per channel takes a 16-bit draw per channel, centred: c[k] is the draw
// less a half, times 2^16.
struct NoiseDraws {
    double u = 0;
    int16_t c[3] = {0, 0, 0};
};
// One draw per channel (red, green, blue in that order), one for all, or none.
inline int NoiseDrawCount(const DeliverSettings& s) { return s.noiseAmount <= 0 ? 0 : (s.noisePerChannel ? 3 : 1); }

// The steps a setting can need. A loop may be compiled for the steps its
// settings need (DeliverSteps), leaving out the tests of the others; with
// every step the result is the same.
enum : unsigned { DpStyle = 1, DpMode = 2, DpNoise = 4, DpPaper = 8, DpAlpha = 16, DpAll = 31 };
inline unsigned DeliverSteps(const DeliverSettings& s) {
    unsigned steps = 0;
    if (s.style != kwmode::FillStyle::Colour) steps |= DpStyle;
    if (s.table || s.mode == kwmode::FillMode::Rubthrough) steps |= DpMode;
    if (s.noiseAmount > 0) steps |= DpNoise;
    if (s.paperW > 0 && (s.bump || s.dry)) steps |= DpPaper;
    if (s.alphaOff != 255) steps |= DpAlpha;
    return steps;
}

namespace detail {
using kwround::RoundD;
using kwround::RoundF;
inline int32_t Clamp255(int32_t v) { return v < 0 ? 0 : (v > 255 ? 255 : v); }

// The gradient step at t: its colour into the state, its opacity returned.
[[gnu::always_inline]] inline int LookUp(const DeliverSettings& s, DeliverState& st) {
    int p = RoundF(st.t);
    p = p < 0 ? 0 : (p > 255 ? 255 : p);
    st.R = s.gradR[p];
    st.G = s.gradG[p];
    st.B = s.gradB[p];
    return s.gradA[p];
}

[[gnu::always_inline]] inline void BrushStretched(const DeliverSettings& s, DeliverState& st, int X, int Y, int X1,
                                                  int Y1, int X2, int Y2) {
    const float floor = s.interpolate ? 0.001f : 0.01f;
    float w = static_cast<float>(X2 - X1), h = static_cast<float>(Y2 - Y1);
    if (w <= 0) w = floor;
    if (h <= 0) h = floor;
    float fx = static_cast<float>(X - X1) * (255.0f / w), fy = static_cast<float>(Y - Y1) * (255.0f / h);
    float sx = static_cast<float>(s.brushW - 1) / 255.0f, sy = static_cast<float>(s.brushH - 1) / 255.0f;
    if (!s.interpolate) {
        int u = std::clamp(RoundF(sx * fx), 0, s.brushW - 1), v = std::clamp(RoundF(sy * fy), 0, s.brushH - 1);
        size_t i = static_cast<size_t>(v) * s.brushStride + static_cast<size_t>(u);
        st.R = s.brushR[i];
        st.G = s.brushG[i];
        st.B = s.brushB[i];
        return;
    }
    // A pixel outside the box would sample outside the brush: hold it to the edge.
    fx = std::clamp(fx * sx, 0.0f, static_cast<float>(s.brushW - 1));
    fy = std::clamp(fy * sy, 0.0f, static_cast<float>(s.brushH - 1));
    int u = static_cast<int>(fx), v = static_cast<int>(fy);
    float ax = fx - static_cast<float>(u), bx = 1 - ax, ay = fy - static_cast<float>(v), by = 1 - ay;
    // The planes run to brushW and brushH inclusive: u + 1 and v + 1 stay inside.
    size_t i00 = static_cast<size_t>(v) * s.brushStride + static_cast<size_t>(u), i10 = i00 + 1;
    size_t i01 = i00 + s.brushStride, i11 = i01 + 1;
    auto mix = [&](const uint8_t* p) {
        float top = p[i00] * bx + p[i10] * ax;
        float bottom = p[i01] * bx + p[i11] * ax;
        return RoundF(top * by + bottom * ay);
    };
    st.R = mix(s.brushR);
    st.G = mix(s.brushG);
    st.B = mix(s.brushB);
}

// The colour the fill style asks for, into the state; the gradient's opacity returned.
[[gnu::always_inline]] inline int StyleColour(const DeliverSettings& s, DeliverState& st, kwmode::FillStyle style,
                                              uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    using kwmode::FillStyle;
    switch (style) {
        case FillStyle::Horizontal:
        case FillStyle::FitHorizontal:
        case FillStyle::Vertical: {
            const bool down = style == FillStyle::Vertical;
            float span = static_cast<float>(down ? Y2 - Y1 : X2 - X1);
            if (span <= 0) span = 0.01f;
            st.t = static_cast<float>(down ? Y - Y1 : X - X1) * (255.0f / span);
            return LookUp(s, st);
        }
        case FillStyle::Circular: {
            float hx = static_cast<float>(X2 - X1) / 2, hy = static_cast<float>(Y2 - Y1) / 2;
            float w = static_cast<float>(X2 - X1), h = static_cast<float>(Y2 - Y1);
            if (w == 0) w = 1;
            if (h == 0) h = 1;
            float dx = (static_cast<float>(X - X1) - hx) * (255.0f / w);
            float dy = (static_cast<float>(Y - Y1) - hy) * (255.0f / h);
            st.t = (dx * dx + dy * dy) / 128.0f;
            return LookUp(s, st);
        }
        case FillStyle::TileBrush:
            if (s.brushW > 0) {
                int u = X % s.brushW, v = Y % s.brushH;
                if (u < 0) u += s.brushW;
                if (v < 0) v += s.brushH;
                size_t i = static_cast<size_t>(v) * s.brushStride + static_cast<size_t>(u);
                st.R = s.brushR[i];
                st.G = s.brushG[i];
                st.B = s.brushB[i];
            }
            return 255;
        case FillStyle::FitBrush:
            if (s.brushW > 0) BrushStretched(s, st, X, Y, X1, Y1, X2, Y2);
            return 255;
        default:
            st.R = static_cast<int32_t>(colour & 255);
            st.G = static_cast<int32_t>((colour & 65280) / 256);
            st.B = static_cast<int32_t>((colour & 16711680) / 65536);
            return 255;
    }
}

// What a centred draw of noise per channel is multiplied by: the amount over
// 2^16, and for green the amount times 1.1, a single. Red and blue come out
// exact: the draw times the amount has at most 23 bits, and the colour plus
// it fits a single's 24 wherever it is not clamped to 255 anyway.
inline float ChannelNoiseScale(int amount, bool green) {
    return (green ? static_cast<float>(amount * 1.1) : static_cast<float>(amount)) * 0x1.0p-16f;
}
inline int32_t ChannelNoise(int32_t c, int16_t draw, float scale) {
    return Clamp255(RoundF(static_cast<float>(c) + static_cast<float>(draw) * scale));
}

[[gnu::always_inline]] inline void Noise(const DeliverSettings& s, DeliverState& st, const NoiseDraws& d) {
    if (s.noisePerChannel) {
        const float rb = ChannelNoiseScale(s.noiseAmount, false), g = ChannelNoiseScale(s.noiseAmount, true);
        st.R = ChannelNoise(st.R, d.c[0], rb);
        st.G = ChannelNoise(st.G, d.c[1], g);
        st.B = ChannelNoise(st.B, d.c[2], rb);
        return;
    }
    const double n = s.noiseAmount;
    int v = RoundD((d.u - 0.5) * n);
    int m = std::max(st.R, std::max(st.G, st.B));
    int k = m > 0 ? RoundD(255.0 / m) : 255;
    st.R = Clamp255(RoundD(st.R + v * (static_cast<double>(st.R) * k) / 255.0));
    st.G = Clamp255(RoundD(st.G + v * (static_cast<double>(st.G) * k) / 255.0));
    st.B = Clamp255(RoundD(st.B + v * (static_cast<double>(st.B) * k) / 255.0));
}
}  // namespace detail

// One pixel through the steps in Steps (DpAll for every step).
template <unsigned Steps>
[[gnu::always_inline]] inline uint32_t DeliverPixelIn(const DeliverSettings& s, DeliverState& st,
                                                      const NoiseDraws& noise, uint32_t colour, int X, int Y, int X1,
                                                      int Y1, int X2, int Y2) {
    using namespace detail;
    // The colour the fill style asks for; the gradient's own opacity scales the caller's.
    const kwmode::FillStyle style = (Steps & DpStyle) ? s.style : kwmode::FillStyle::Colour;
    const int ga = StyleColour(s, st, style, colour, X, Y, X1, Y1, X2, Y2);
    int opacity = s.opacity;
    if (ga != 255) opacity = RoundF(static_cast<float>(opacity * ga) / 255.0f);
    st.opacitySaved = static_cast<int16_t>(opacity);
    // The fill mode, against the picture as it is.
    const size_t at = static_cast<size_t>(Y) * s.stride + static_cast<size_t>(X);
    const int oldR = s.r[at], oldG = s.g[at], oldB = s.b[at];
    if (!(Steps & DpMode)) {
    } else if (s.table) {
        if (s.tableSwapped) {
            st.R = s.table[oldR + 256 * st.R];
            st.G = s.table[oldG + 256 * st.G];
            st.B = s.table[oldB + 256 * st.B];
        } else {
            st.R = s.table[st.R + 256 * oldR];
            st.G = s.table[st.G + 256 * oldG];
            st.B = s.table[st.B + 256 * oldB];
        }
    } else if (s.mode == kwmode::FillMode::Rubthrough) {
        st.R = s.sr[at];
        st.G = s.sg[at];
        st.B = s.sb[at];
    }
    // Noise on the colour.
    if ((Steps & DpNoise) && s.noiseAmount > 0) Noise(s, st, noise);
    // Paper: the bump on the colour, drybrush on the opacity.
    if ((Steps & DpPaper) && s.paperW > 0 && (s.bump || s.dry)) {
        int u = X % s.paperW, v = Y % s.paperH;
        size_t pi = static_cast<size_t>(v) * s.paperStride + static_cast<size_t>(u);
        if (s.bump) {
            float e = s.paperF[pi] * 255.0f;
            st.R = Clamp255(RoundF(static_cast<float>(st.R) + e));
            st.G = Clamp255(RoundF(static_cast<float>(st.G) + e));
            st.B = Clamp255(RoundF(static_cast<float>(st.B) + e));
        }
        if (s.dry) {
            int p = s.paperB[pi];
            float height = static_cast<float>(s.negative ? p : 255 - p);
            opacity = RoundF(static_cast<float>(st.opacitySaved) - height * s.opacityFraction * s.strength);
        }
    }
    // How much of the colour lands.
    if (opacity < 0) opacity = 0;
    const int inverse = 255 - opacity;
    st.opacityInverse = static_cast<int16_t>(inverse);
    // Every term is 0..255 here: unsigned division by 255 is a multiply and a shift.
    const unsigned op = static_cast<unsigned>(opacity), inv = static_cast<unsigned>(inverse);
    unsigned R = (static_cast<unsigned>(st.R) * op + static_cast<unsigned>(oldR) * inv) / 255;
    unsigned G = (static_cast<unsigned>(st.G) * op + static_cast<unsigned>(oldG) * inv) / 255;
    unsigned B = (static_cast<unsigned>(st.B) * op + static_cast<unsigned>(oldB) * inv) / 255;
    // The alpha plane, unless alphaOff lets everything through.
    const unsigned a = (Steps & DpAlpha) ? (s.a[at] | s.alphaOff) : 255u;
    if (a < 255) {
        const unsigned na = 255 - a;
        R = (static_cast<unsigned>(oldR) * na + R * a) / 255;
        G = (static_cast<unsigned>(oldG) * na + G * a) / 255;
        B = (static_cast<unsigned>(oldB) * na + B * a) / 255;
    }
    return R | (G << 8) | (B << 16);
}

// One pixel with every step.
[[gnu::always_inline]] inline uint32_t DeliverPixel(const DeliverSettings& s, DeliverState& st, const NoiseDraws& noise,
                                                    uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    return DeliverPixelIn<DpAll>(s, st, noise, colour, X, Y, X1, Y1, X2, Y2);
}

}  // namespace kwfill
