// The fill pipeline a row at a time: the same pixels as DeliverPixelIn, with
// what does not change along a row or down a column worked out once.
//
// Conventions:
//
//  * A FillPlan is made once per fill for its settings, box and column span
//    (PlanFill); DeliverRow then writes columns x0..x1 - 1 of one row.
//  * A plain colour (no style, noise or paper, and a table mode or none) makes
//    each channel's result a function of the old value alone: the plan holds
//    that function as a 256-entry table per channel, and at opacity 255 with
//    no table the row is one value per channel.
//  * The gradients keep their position per column (across), per row (down) or
//    both halves of the ellipse's sum; the paper keeps its row and walks its
//    column without a division. Brush styles go through the single-pixel
//    kernel.
//  * Noise draws come in as one array for the row, NoiseDrawCount of them per
//    pixel in pixel order, exactly as the single-pixel kernel takes them.
//  * The last pixel of every row goes through the single-pixel kernel itself,
//    so that the kept values (DeliverState) end exactly as it leaves them.
//  * The output rows may be the picture rows the settings read (in place).
#pragma once

#include <cstring>
#include <vector>

#include "native/Deliver.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kwfill {

struct FillPlan {
    int x0 = 0, x1 = 0;  // the columns a row covers
    // A plain colour: the result of each channel by its old value.
    bool byTable = false;
    bool flat = false;     // every old value gives the same result: flatValue
    bool blend = false;    // the tables are (colour * opacity + old * (255 - opacity)) / 255
    uint8_t flatValue[3] = {0, 0, 0};
    uint8_t colourValue[3] = {0, 0, 0};
    int opacity = 255;
    uint8_t lut[3][256] = {};
    // The gradients: the opacity each gradient alpha gives, and the positions.
    int opacityOfGa[256] = {};
    std::vector<int> columnStep;      // across: the table step of each column
    std::vector<float> columnOffset;  // ellipse: the scaled distance of each column from the centre
};

namespace detail {
// The table step of a position along a gradient, held to the table.
inline int GradientStep(float t) {
    const int p = RoundF(t);
    return p < 0 ? 0 : (p > 255 ? 255 : p);
}
inline float SpanOrFloor(int span, float floor) {
    const float v = static_cast<float>(span);
    return v <= 0 ? floor : v;
}
inline float EllipseScale(int span) {
    const float v = static_cast<float>(span);
    return 255.0f / (v == 0 ? 1.0f : v);
}
inline float EllipseOffset(int at, int lo, int hi) {
    const float half = static_cast<float>(hi - lo) / 2;
    return (static_cast<float>(at - lo) - half) * EllipseScale(hi - lo);
}

inline void PlanPlainColour(const DeliverSettings& s, uint32_t colour, FillPlan& plan) {
    const int c[3] = {static_cast<int>(colour & 255), static_cast<int>((colour >> 8) & 255),
                      static_cast<int>((colour >> 16) & 255)};
    const unsigned op = static_cast<unsigned>(s.opacity < 0 ? 0 : s.opacity);
    for (int k = 0; k < 3; ++k) {
        plan.colourValue[k] = static_cast<uint8_t>(c[k]);
        for (unsigned old = 0; old < 256; ++old) {
            unsigned paint = static_cast<unsigned>(c[k]);
            if (s.table) paint = s.tableSwapped ? s.table[old + 256 * paint] : s.table[paint + 256 * old];
            plan.lut[k][old] = static_cast<uint8_t>((paint * op + old * (255 - op)) / 255);
        }
    }
    plan.opacity = static_cast<int>(op);
    plan.flat = !s.table && op == 255;
    plan.blend = !s.table;
    for (int k = 0; k < 3; ++k) plan.flatValue[k] = plan.lut[k][0];
}
}  // namespace detail

// Works out what a fill of the box X1..X2 by Y1..Y2 over columns x0..x1 - 1
// keeps from row to row.
inline FillPlan PlanFill(const DeliverSettings& s, uint32_t colour, int X1, int X2, int x0, int x1) {
    using kwmode::FillStyle;
    FillPlan plan;
    plan.x0 = x0;
    plan.x1 = x1;
    const unsigned steps = DeliverSteps(s);
    plan.byTable = (steps & (DpStyle | DpNoise | DpPaper)) == 0 && s.mode != kwmode::FillMode::Rubthrough;
    if (plan.byTable) detail::PlanPlainColour(s, colour, plan);
    for (int ga = 0; ga < 256; ++ga)
        plan.opacityOfGa[ga] = ga == 255 ? s.opacity : detail::RoundF(static_cast<float>(s.opacity * ga) / 255.0f);
    const int n = x1 > x0 ? x1 - x0 : 0;
    if (s.style == FillStyle::Horizontal || s.style == FillStyle::FitHorizontal) {
        const float scale = 255.0f / detail::SpanOrFloor(X2 - X1, 0.01f);
        plan.columnStep.resize(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) plan.columnStep[static_cast<size_t>(i)] =
            detail::GradientStep(static_cast<float>(x0 + i - X1) * scale);
    } else if (s.style == FillStyle::Circular) {
        plan.columnOffset.resize(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) plan.columnOffset[static_cast<size_t>(i)] = detail::EllipseOffset(x0 + i, X1, X2);
    }
    return plan;
}

namespace detail {

// Colour * opacity + old * inverse, over 255, sixteen pixels at a time.
inline void BlendRowConstant(uint8_t* row, int n, uint8_t colour, int opacity) {
    int i = 0;
#if defined(__SSE2__)
    const __m128i paint = _mm_set1_epi16(static_cast<short>(colour * opacity));
    const __m128i inv = _mm_set1_epi16(static_cast<short>(255 - opacity));
    const __m128i one = _mm_set1_epi16(1), zero = _mm_setzero_si128();
    auto half = [&](__m128i old) {
        // x / 255 for x <= 65025 is (x + 1 + (x >> 8)) >> 8.
        const __m128i x = _mm_add_epi16(_mm_mullo_epi16(old, inv), paint);
        return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(x, one), _mm_srli_epi16(x, 8)), 8);
    };
    for (; i + 16 <= n; i += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + i));
        const __m128i lo = half(_mm_unpacklo_epi8(v, zero)), hi = half(_mm_unpackhi_epi8(v, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(row + i), _mm_packus_epi16(lo, hi));
    }
#endif
    const unsigned p = static_cast<unsigned>(colour) * static_cast<unsigned>(opacity), q = 255u - opacity;
    for (; i < n; ++i) row[i] = static_cast<uint8_t>((p + row[i] * q) / 255);
}

inline void TableRow(uint8_t* row, int n, const uint8_t* lut) {
    for (int i = 0; i < n; ++i) row[i] = lut[row[i]];
}

// The plain colour: each channel through its table, then the alpha plane.
template <unsigned Steps>
inline void PlainRow(const DeliverSettings& s, const FillPlan& plan, size_t rowAt, uint8_t* out[3], int n) {
    const uint8_t* const in[3] = {s.r + rowAt, s.g + rowAt, s.b + rowAt};
    if constexpr ((Steps & DpAlpha) != 0) {
        const uint8_t* a = s.a + rowAt;
        for (int i = 0; i < n; ++i) {
            const unsigned alpha = static_cast<unsigned>(a[i] | s.alphaOff);
            for (int k = 0; k < 3; ++k) {
                const unsigned old = in[k][i];
                unsigned v = plan.lut[k][old];
                if (alpha < 255) v = (old * (255 - alpha) + v * alpha) / 255;
                out[k][i] = static_cast<uint8_t>(v);
            }
        }
        return;
    }
    for (int k = 0; k < 3; ++k) {
        if (plan.flat) {
            std::memset(out[k], plan.flatValue[k], static_cast<size_t>(n));
            continue;
        }
        if (out[k] != in[k]) std::memcpy(out[k], in[k], static_cast<size_t>(n));
        if (plan.blend && plan.opacity == 0) continue;
        if (plan.blend) BlendRowConstant(out[k], n, plan.colourValue[k], plan.opacity);
        else TableRow(out[k], n, plan.lut[k]);
    }
}

// Every other setting: the steps of the single-pixel kernel with the row's
// and the columns' values looked up instead of worked out.
template <unsigned Steps>
inline void GeneralRow(const DeliverSettings& s, const FillPlan& plan, const double* draws,
                       uint32_t colour, int y, int n, int Y1, int Y2, uint8_t* out[3]) {
    using kwmode::FillStyle;
    const FillStyle style = (Steps & DpStyle) ? s.style : FillStyle::Colour;
    const bool across = style == FillStyle::Horizontal || style == FillStyle::FitHorizontal;
    const bool ellipse = style == FillStyle::Circular;
    const int rowStep = style == FillStyle::Vertical
                            ? GradientStep(static_cast<float>(y - Y1) * (255.0f / SpanOrFloor(Y2 - Y1, 0.01f)))
                            : 0;
    const float dy = ellipse ? EllipseOffset(y, Y1, Y2) : 0.0f;
    const bool gradient = across || ellipse || style == FillStyle::Vertical;
    const int c[3] = {static_cast<int>(colour & 255), static_cast<int>((colour & 65280) / 256),
                      static_cast<int>((colour & 16711680) / 65536)};
    const size_t rowAt = static_cast<size_t>(y) * s.stride + static_cast<size_t>(plan.x0);
    const bool paper = (Steps & DpPaper) && s.paperW > 0 && (s.bump || s.dry);
    const int pv = paper ? y % s.paperH : 0;
    int pu = paper ? plan.x0 % s.paperW : 0;
    const float* paperF = paper ? s.paperF + static_cast<size_t>(pv) * s.paperStride : nullptr;
    const uint8_t* paperB = paper ? s.paperB + static_cast<size_t>(pv) * s.paperStride : nullptr;
    const int drawsPer = (Steps & DpNoise) ? NoiseDrawCount(s) : 0;
    for (int i = 0; i < n; ++i) {
        const size_t at = rowAt + static_cast<size_t>(i);
        int32_t R = c[0], G = c[1], B = c[2];
        int opacity = s.opacity;
        if (gradient) {
            int p = rowStep;
            if (across) p = plan.columnStep[static_cast<size_t>(i)];
            else if (ellipse) {
                const float dx = plan.columnOffset[static_cast<size_t>(i)];
                p = GradientStep((dx * dx + dy * dy) / 128.0f);
            }
            R = s.gradR[p];
            G = s.gradG[p];
            B = s.gradB[p];
            opacity = plan.opacityOfGa[s.gradA[p]];
        }
        const int opacitySaved = opacity;
        const int oldR = s.r[at], oldG = s.g[at], oldB = s.b[at];
        if ((Steps & DpMode) && s.table) {
            if (s.tableSwapped) {
                R = s.table[oldR + 256 * R];
                G = s.table[oldG + 256 * G];
                B = s.table[oldB + 256 * B];
            } else {
                R = s.table[R + 256 * oldR];
                G = s.table[G + 256 * oldG];
                B = s.table[B + 256 * oldB];
            }
        } else if ((Steps & DpMode) && s.mode == kwmode::FillMode::Rubthrough) {
            R = s.sr[at];
            G = s.sg[at];
            B = s.sb[at];
        }
        if (drawsPer > 0) {
            DeliverState noisy;
            noisy.R = R, noisy.G = G, noisy.B = B;
            NoiseDraws d;
            for (int k = 0; k < drawsPer; ++k) d.u[k] = draws[static_cast<size_t>(i) * drawsPer + k];
            Noise(s, noisy, d);
            R = noisy.R, G = noisy.G, B = noisy.B;
        }
        if (paper) {
            if (s.bump) {
                const float e = paperF[pu] * 255.0f;
                R = Clamp255(RoundF(static_cast<float>(R) + e));
                G = Clamp255(RoundF(static_cast<float>(G) + e));
                B = Clamp255(RoundF(static_cast<float>(B) + e));
            }
            if (s.dry) {
                const int p = paperB[pu];
                const float height = static_cast<float>(s.negative ? p : 255 - p);
                opacity = RoundF(static_cast<float>(opacitySaved) - height * s.opacityFraction * s.strength);
            }
            if (++pu == s.paperW) pu = 0;
        }
        if (opacity < 0) opacity = 0;
        const unsigned op = static_cast<unsigned>(opacity), inv = 255u - op;
        unsigned r = (static_cast<unsigned>(R) * op + static_cast<unsigned>(oldR) * inv) / 255;
        unsigned g = (static_cast<unsigned>(G) * op + static_cast<unsigned>(oldG) * inv) / 255;
        unsigned b = (static_cast<unsigned>(B) * op + static_cast<unsigned>(oldB) * inv) / 255;
        const unsigned a = (Steps & DpAlpha) ? (s.a[at] | s.alphaOff) : 255u;
        if (a < 255) {
            const unsigned na = 255 - a;
            r = (static_cast<unsigned>(oldR) * na + r * a) / 255;
            g = (static_cast<unsigned>(oldG) * na + g * a) / 255;
            b = (static_cast<unsigned>(oldB) * na + b * a) / 255;
        }
        out[0][i] = static_cast<uint8_t>(r);
        out[1][i] = static_cast<uint8_t>(g);
        out[2][i] = static_cast<uint8_t>(b);
    }
}
}  // namespace detail

// Columns plan.x0..plan.x1 - 1 of row y, into outR, outG, outB (each pointing
// at column plan.x0 of its row). draws holds the row's noise draws.
template <unsigned Steps>
inline void DeliverRow(const DeliverSettings& s, const FillPlan& plan, DeliverState& st, const double* draws,
                       uint32_t colour, int y, int X1, int Y1, int X2, int Y2, uint8_t* outR, uint8_t* outG,
                       uint8_t* outB) {
    using kwmode::FillStyle;
    const int n = plan.x1 - plan.x0;
    if (n <= 0) return;
    uint8_t* out[3] = {outR, outG, outB};
    const FillStyle style = (Steps & DpStyle) ? s.style : FillStyle::Colour;
    const bool brush = style == FillStyle::TileBrush || style == FillStyle::FitBrush;
    // All but the last pixel the quick way; brush styles pixel by pixel.
    const int quick = brush ? 0 : n - 1;
    if (quick > 0) {
        const size_t rowAt = static_cast<size_t>(y) * s.stride + static_cast<size_t>(plan.x0);
        if (plan.byTable) detail::PlainRow<Steps>(s, plan, rowAt, out, quick);
        else detail::GeneralRow<Steps>(s, plan, draws, colour, y, quick, Y1, Y2, out);
    }
    const int per = (Steps & DpNoise) ? NoiseDrawCount(s) : 0;
    for (int i = quick; i < n; ++i) {
        NoiseDraws d;
        for (int k = 0; k < per; ++k) d.u[k] = draws[static_cast<size_t>(i) * per + k];
        const uint32_t v = DeliverPixelIn<Steps>(s, st, d, colour, plan.x0 + i, y, X1, Y1, X2, Y2);
        out[0][i] = static_cast<uint8_t>(v);
        out[1][i] = static_cast<uint8_t>(v >> 8);
        out[2][i] = static_cast<uint8_t>(v >> 16);
    }
}

}  // namespace kwfill
