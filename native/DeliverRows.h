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
//  * Noise draws come in for the row as the single-pixel kernel takes them,
//    pixel by pixel (SpanDraws): value noise as one array of draws, noise per
//    channel as a row of centred 16-bit draws per channel.
//  * The kept values (DeliverState) after a row are those the single-pixel
//    kernel leaves after the row's last pixel: it is run on that pixel first,
//    before the row writes it.
//  * The output rows may be the picture rows the settings read (in place).
#pragma once

#include <algorithm>
#include <cstring>
#include <vector>

#include "native/Deliver.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kwfill {

// What the finishing steps of a row read: the colour after style, mode and
// one-draw noise, the opacity before paper, and the optional steps' inputs
// (null when the step is off).
struct FinishRowArgs {
    int n = 0;
    const int16_t *r = nullptr, *g = nullptr, *b = nullptr;
    const int32_t* opacity = nullptr;
    const float* gf = nullptr;  // green as singles, or null
    const int16_t *nr = nullptr, *ng = nullptr, *nb = nullptr;  // a centred draw per channel, or null
    float noiseR = 0, noiseG = 0;  // ChannelNoiseScale for red and blue, for green
    // The paper under the row: the bump adds bump = slope * 255 to each channel;
    // drybrush takes (negative ? height : 255 - height) * fraction * strength
    // off the opacity. When every pixel's opacity before paper is the same,
    // the opacity after drybrush may come worked out per texel (dryOpacity, in
    // place of opacity and height). Each is a row of texels read from paperU
    // on, wrapping at paperW, that goes on PaperPad texels past paperW with the
    // row's start, so that sixteen reads from any texel stay in it.
    const float* bump = nullptr;
    const uint8_t* height = nullptr;
    const uint8_t* dryOpacity = nullptr;
    int paperU = 0, paperW = 1;
    bool negative = false;
    float fraction = 0, strength = 0;
    const uint8_t *oldR = nullptr, *oldG = nullptr, *oldB = nullptr;
    // Not 0: the old pixels this many bytes on are asked into the cache as
    // the row goes (a fill's next band of rows, read while this one computes).
    ptrdiff_t warmAhead = 0;
    const uint8_t* alpha = nullptr;  // null: every pixel lands whole
    uint8_t alphaOff = 255;
    uint8_t *outR = nullptr, *outG = nullptr, *outB = nullptr;
};
using FinishRowFn = void (*)(const FinishRowArgs&);
// The plain form, and an AVX2 form for opacities that stay within 0..255
// (call it only when HaveAvx2Finish() says so); both give the same bytes.
void FinishRowScalar(const FinishRowArgs& f);
void FinishRowAvx2(const FinishRowArgs& f);
bool HaveAvx2Finish();

// Rows a plan's loop writes and reads again, one entry per column.
struct RowScratch {
    std::vector<int16_t> r, g, b;
    std::vector<int32_t> opacity;
};

// The texels past the paper's width that its rows repeat (FinishRowArgs).
constexpr int PaperPad = 16;
// The paper as the finishing steps read it, made when a row first needs it:
// rows of paperW + PaperPad texels; the bump (slope * 255), and drybrush's height or,
// for a fill whose pixels all have one opacity before paper, the opacity
// after drybrush.
struct PaperPlan {
    bool made = false;
    std::vector<float> bump;
    std::vector<uint8_t> height, dryOpacity;
};

// The noise draws of a span, pixel by pixel: value noise's one draw a pixel
// (all), or noise per channel's centred draws, a row per channel (channel).
struct SpanDraws {
    const double* all = nullptr;
    const int16_t* channel[3] = {nullptr, nullptr, nullptr};
    // The draws from pixel i of the span on.
    SpanDraws At(size_t i) const {
        SpanDraws d;
        if (all) d.all = all + i;
        for (int k = 0; k < 3; ++k)
            if (channel[k]) d.channel[k] = channel[k] + i;
        return d;
    }
};

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
    std::vector<int16_t> columnR, columnG, columnB;  // across: each column's step of the gradient
    std::vector<int32_t> columnOpacity;
    std::vector<float> columnGreen;  // green as singles, for noise per channel
    // Across at full opacity in every column: the finished bytes of every row.
    bool columnsOpaque = false;
    std::vector<uint8_t> columnBytes[3];
    std::vector<float> columnOffset;  // ellipse: the scaled distance of each column from the centre
    // The finishing steps: AVX2 where the processor has it and the opacity
    // cannot leave 0..255, the plain form otherwise.
    FinishRowFn finish = FinishRowScalar;
    // The opacity of every pixel before paper, when it is one value; else -1.
    int oneOpacity = -1;
    ptrdiff_t warmAhead = 0;  // see FinishRowArgs
    mutable RowScratch scratch;
    mutable PaperPlan paper;
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
    // Drybrush only ever takes opacity away when what it takes is never below 0.
    bool inRange = s.opacity >= 0 && s.opacity <= 255;
    for (int p = 0; p < 256; ++p)
        inRange = inRange && !(static_cast<float>(s.negative ? p : 255 - p) * s.opacityFraction * s.strength < 0);
    plan.finish = inRange && HaveAvx2Finish() ? FinishRowAvx2 : FinishRowScalar;
    if (s.style == FillStyle::Colour) plan.oneOpacity = s.opacity;
    RowScratch& w = plan.scratch;
    for (auto* v : {&w.r, &w.g, &w.b}) v->resize(static_cast<size_t>(n));
    w.opacity.resize(static_cast<size_t>(n));
    if (s.style == FillStyle::Horizontal || s.style == FillStyle::FitHorizontal) {
        const float scale = 255.0f / detail::SpanOrFloor(X2 - X1, 0.01f);
        for (int i = 0; i < n; ++i) {
            const int p = detail::GradientStep(static_cast<float>(x0 + i - X1) * scale);
            plan.columnR.push_back(s.gradR[p]);
            plan.columnG.push_back(s.gradG[p]);
            plan.columnB.push_back(s.gradB[p]);
            plan.columnOpacity.push_back(plan.opacityOfGa[s.gradA[p]]);
        }
        if (s.noiseAmount > 0 && s.noisePerChannel)
            plan.columnGreen.assign(plan.columnG.begin(), plan.columnG.end());
        plan.columnsOpaque = std::all_of(plan.columnOpacity.begin(), plan.columnOpacity.end(), [](int32_t o) { return o == 255; });
        const auto [least, most] = std::minmax_element(plan.columnOpacity.begin(), plan.columnOpacity.end());
        if (n > 0 && *least == *most) plan.oneOpacity = *least;
        if (plan.columnsOpaque)
            for (const auto& [bytes, from] : {std::pair{&plan.columnBytes[0], &plan.columnR},
                                              std::pair{&plan.columnBytes[1], &plan.columnG},
                                              std::pair{&plan.columnBytes[2], &plan.columnB}})
                bytes->assign(from->begin(), from->end());
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

// The colour and opacity (before paper) of each pixel from the fill style:
// the plan's column rows for a gradient across, one value for the row down or
// for a plain colour, the ellipse pixel by pixel. The row starts k columns
// into the plan's.
template <unsigned Steps>
inline void StyleRow(const DeliverSettings& s, const FillPlan& plan, uint32_t colour, int y, int k, int n, int Y1,
                     int Y2) {
    using kwmode::FillStyle;
    RowScratch& w = plan.scratch;
    int16_t* __restrict R = w.r.data();
    int16_t* __restrict G = w.g.data();
    int16_t* __restrict B = w.b.data();
    int32_t* __restrict O = w.opacity.data();
    const FillStyle style = (Steps & DpStyle) ? s.style : FillStyle::Colour;
    auto step = [&](int i, int p) {
        R[i] = s.gradR[p], G[i] = s.gradG[p], B[i] = s.gradB[p], O[i] = plan.opacityOfGa[s.gradA[p]];
    };
    if (style == FillStyle::Horizontal || style == FillStyle::FitHorizontal) {
        const size_t words = static_cast<size_t>(n) * sizeof(int16_t);
        std::memcpy(R, plan.columnR.data() + k, words);
        std::memcpy(G, plan.columnG.data() + k, words);
        std::memcpy(B, plan.columnB.data() + k, words);
        std::memcpy(O, plan.columnOpacity.data() + k, static_cast<size_t>(n) * sizeof(int32_t));
    } else if (style == FillStyle::Circular) {
        const float dy = EllipseOffset(y, Y1, Y2);
        for (int i = 0; i < n; ++i) {
            const float dx = plan.columnOffset[static_cast<size_t>(k + i)];
            step(i, GradientStep((dx * dx + dy * dy) / 128.0f));
        }
    } else {
        int32_t c[4] = {static_cast<int32_t>(colour & 255), static_cast<int32_t>((colour & 65280) / 256),
                        static_cast<int32_t>((colour & 16711680) / 65536), s.opacity};
        if (style == FillStyle::Vertical) {
            const int p = GradientStep(static_cast<float>(y - Y1) * (255.0f / SpanOrFloor(Y2 - Y1, 0.01f)));
            c[0] = s.gradR[p], c[1] = s.gradG[p], c[2] = s.gradB[p], c[3] = plan.opacityOfGa[s.gradA[p]];
        }
        std::fill_n(R, n, static_cast<int16_t>(c[0]));
        std::fill_n(G, n, static_cast<int16_t>(c[1]));
        std::fill_n(B, n, static_cast<int16_t>(c[2]));
        std::fill_n(O, n, c[3]);
    }
}

// The fill mode over the row's colours: a mixing table or the swap layer.
template <unsigned Steps>
inline void ModeRow(const DeliverSettings& s, const FillPlan& plan, size_t rowAt, int n) {
    if (!(Steps & DpMode)) return;
    RowScratch& w = plan.scratch;
    int16_t* const c[3] = {w.r.data(), w.g.data(), w.b.data()};
    const uint8_t* const old[3] = {s.r + rowAt, s.g + rowAt, s.b + rowAt};
    const uint8_t* const swap[3] = {s.sr + rowAt, s.sg + rowAt, s.sb + rowAt};
    for (int k = 0; k < 3; ++k) {
        int16_t* __restrict v = c[k];
        const uint8_t* o = old[k];
        if (s.table && s.tableSwapped) {
            for (int i = 0; i < n; ++i) v[i] = s.table[o[i] + 256 * v[i]];
        } else if (s.table) {
            for (int i = 0; i < n; ++i) v[i] = s.table[v[i] + 256 * o[i]];
        } else if (s.mode == kwmode::FillMode::Rubthrough) {
            for (int i = 0; i < n; ++i) v[i] = swap[k][i];
        }
    }
}

// Makes the plan's paper (see PaperPlan).
inline void MakePaperPlan(const DeliverSettings& s, const FillPlan& plan) {
    PaperPlan& p = plan.paper;
    p.made = true;
    const size_t w = static_cast<size_t>(s.paperW), h = static_cast<size_t>(s.paperH), row = w + PaperPad;
    auto lay = [&](auto& to, const auto* from, auto texel) {
        to.resize(row * h);
        for (size_t v = 0; v < h; ++v)
            for (size_t u = 0; u < row; ++u) to[v * row + u] = texel(from[v * s.paperStride + u % w]);
    };
    if (s.bump) lay(p.bump, s.paperF, [](float slope) { return slope * 255.0f; });
    if (!s.dry) return;
    uint8_t after[256];
    bool bytes = plan.oneOpacity >= 0;
    for (int q = 0; q < 256 && bytes; ++q) {
        const float dry = static_cast<float>(s.negative ? q : 255 - q) * s.opacityFraction * s.strength;
        const int o = std::max(RoundF(static_cast<float>(plan.oneOpacity) - dry), 0);
        bytes = o <= 255;
        after[q] = static_cast<uint8_t>(o);
    }
    if (bytes) lay(p.dryOpacity, s.paperB, [&after](uint8_t q) { return after[q]; });
    else lay(p.height, s.paperB, [](uint8_t q) { return q; });
}

// The finishing steps over the row, reading the paper row (y's) from column
// `first` on.
inline void FinishOverPaper(const DeliverSettings& s, const FillPlan& plan, FinishRowArgs f, int y, int first) {
    const PaperPlan& p = plan.paper;
    if (!p.made) MakePaperPlan(s, plan);
    const size_t at = static_cast<size_t>(y % s.paperH) * static_cast<size_t>(s.paperW + PaperPad);
    auto row = [at](const auto& v) { return v.empty() ? nullptr : v.data() + at; };
    f.bump = row(p.bump);
    f.height = row(p.height);
    f.dryOpacity = row(p.dryOpacity);
    f.paperU = first % s.paperW;
    f.paperW = s.paperW;
    plan.finish(f);
}

// Value noise: one draw a pixel, scaled by the colour. Noise per channel is
// left to the finishing steps.
inline void ValueNoiseRow(const DeliverSettings& s, const FillPlan& plan, const double* draws, int n) {
    RowScratch& w = plan.scratch;
    for (int i = 0; i < n; ++i) {
        DeliverState noisy;
        noisy.R = w.r[static_cast<size_t>(i)], noisy.G = w.g[static_cast<size_t>(i)], noisy.B = w.b[static_cast<size_t>(i)];
        NoiseDraws d;
        d.u = draws[i];
        Noise(s, noisy, d);
        w.r[static_cast<size_t>(i)] = static_cast<int16_t>(noisy.R);
        w.g[static_cast<size_t>(i)] = static_cast<int16_t>(noisy.G);
        w.b[static_cast<size_t>(i)] = static_cast<int16_t>(noisy.B);
    }
}

// Every other setting: style, mode, noise and paper step by step over the
// row, then the finishing steps (noise per channel, bump, drybrush, opacity,
// alpha) over the whole row at once.
template <unsigned Steps>
inline void GeneralRow(const DeliverSettings& s, const FillPlan& plan, const SpanDraws& draws, uint32_t colour, int y,
                       int first, int n, int Y1, int Y2, uint8_t* out[3]) {
    using kwmode::FillStyle;
    const size_t rowAt = static_cast<size_t>(y) * s.stride + static_cast<size_t>(first);
    const int k = first - plan.x0;
    const bool noise = (Steps & DpNoise) && NoiseDrawCount(s) > 0;
    const bool mode = (Steps & DpMode) && (s.table || s.mode == kwmode::FillMode::Rubthrough);
    const FillStyle style = (Steps & DpStyle) ? s.style : FillStyle::Colour;
    // A gradient across that nothing before the finishing steps changes is read
    // from the plan's column rows themselves.
    const bool columns = (style == FillStyle::Horizontal || style == FillStyle::FitHorizontal) && !mode &&
                         !(noise && NoiseDrawCount(s) == 1);
    if (!columns) {
        StyleRow<Steps>(s, plan, colour, y, k, n, Y1, Y2);
        ModeRow<Steps>(s, plan, rowAt, n);
    }
    const bool paper = (Steps & DpPaper) && s.paperW > 0 && (s.bump || s.dry);
    const bool masked = (Steps & DpAlpha) && s.alphaOff != 255;
    // A gradient across at full opacity with nothing after it: colour over
    // old * 0 is the colour, so every row is the plan's own bytes.
    if (columns && plan.columnsOpaque && !noise && !paper && !masked) {
        for (int c = 0; c < 3; ++c) std::memcpy(out[c], plan.columnBytes[c].data() + k, static_cast<size_t>(n));
        return;
    }
    if (noise && NoiseDrawCount(s) == 1) ValueNoiseRow(s, plan, draws.all, n);
    const RowScratch& w = plan.scratch;
    FinishRowArgs f;
    f.n = n;
    f.r = w.r.data(), f.g = w.g.data(), f.b = w.b.data(), f.opacity = w.opacity.data();
    if (columns) {
        f.r = plan.columnR.data() + k, f.g = plan.columnG.data() + k, f.b = plan.columnB.data() + k;
        f.opacity = plan.columnOpacity.data() + k;
        if (!plan.columnGreen.empty()) f.gf = plan.columnGreen.data() + k;
    }
    if (noise && NoiseDrawCount(s) == 3) {
        f.nr = draws.channel[0], f.ng = draws.channel[1], f.nb = draws.channel[2];
        f.noiseR = ChannelNoiseScale(s.noiseAmount, false);
        f.noiseG = ChannelNoiseScale(s.noiseAmount, true);
    }
    f.oldR = s.r + rowAt, f.oldG = s.g + rowAt, f.oldB = s.b + rowAt;
    f.warmAhead = plan.warmAhead;
    if (masked) f.alpha = s.a + rowAt;
    f.alphaOff = s.alphaOff;
    f.outR = out[0], f.outG = out[1], f.outB = out[2];
    if (!paper) {
        plan.finish(f);
        return;
    }
    f.negative = s.negative, f.fraction = s.opacityFraction, f.strength = s.strength;
    FinishOverPaper(s, plan, f, y, first);
}
}  // namespace detail

// Columns first..first + n - 1 of row y, within the plan's columns, into outR,
// outG, outB (each pointing at column `first` of its row). draws holds the
// span's noise draws. The span goes a row at a time (brush styles pixel by
// pixel), and the kept values are left as the pixel kernel would leave them.
template <unsigned Steps>
inline void DeliverSpan(const DeliverSettings& s, const FillPlan& plan, DeliverState& st, const SpanDraws& draws,
                        uint32_t colour, int y, int first, int n, int X1, int Y1, int X2, int Y2, uint8_t* outR,
                        uint8_t* outG, uint8_t* outB) {
    using kwmode::FillStyle;
    if (n <= 0) return;
    uint8_t* out[3] = {outR, outG, outB};
    const FillStyle style = (Steps & DpStyle) ? s.style : FillStyle::Colour;
    const bool brush = style == FillStyle::TileBrush || style == FillStyle::FitBrush;
    const int per = (Steps & DpNoise) ? NoiseDrawCount(s) : 0;
    auto drawsAt = [&](int i) {
        NoiseDraws d;
        if (per == 1) d.u = draws.all[i];
        if (per == 3)
            for (int k = 0; k < 3; ++k) d.c[k] = draws.channel[k][i];
        return d;
    };
    if (!brush) {
        auto row = [&](int from, int count) {
            if (count <= 0) return;
            uint8_t* at[3] = {out[0] + from, out[1] + from, out[2] + from};
            const size_t rowAt = static_cast<size_t>(y) * s.stride + static_cast<size_t>(first + from);
            if (plan.byTable) detail::PlainRow<Steps>(s, plan, rowAt, at, count);
            else detail::GeneralRow<Steps>(s, plan, draws.At(static_cast<size_t>(from)), colour, y, first + from, count,
                                           Y1, Y2, at);
        };
        // Whole blocks of sixteen up to the last pixel first, which brings the
        // last pixel into the cache; then the kept values, those the single-
        // pixel kernel leaves after the last pixel, worked out from it before
        // the rest of the row writes it.
        const int blocks = (n - 1) / 16 * 16;
        row(0, blocks);
        DeliverPixelIn<Steps>(s, st, drawsAt(n - 1), colour, first + n - 1, y, X1, Y1, X2, Y2);
        row(blocks, n - blocks);
        return;
    }
    // Brush styles pixel by pixel.
    for (int i = 0; i < n; ++i) {
        const uint32_t v = DeliverPixelIn<Steps>(s, st, drawsAt(i), colour, first + i, y, X1, Y1, X2, Y2);
        out[0][i] = static_cast<uint8_t>(v);
        out[1][i] = static_cast<uint8_t>(v >> 8);
        out[2][i] = static_cast<uint8_t>(v >> 16);
    }
}

// The plan's columns plan.x0..plan.x1 - 1 of row y.
template <unsigned Steps>
inline void DeliverRow(const DeliverSettings& s, const FillPlan& plan, DeliverState& st, const SpanDraws& draws,
                       uint32_t colour, int y, int X1, int Y1, int X2, int Y2, uint8_t* outR, uint8_t* outG,
                       uint8_t* outB) {
    DeliverSpan<Steps>(s, plan, st, draws, colour, y, plan.x0, plan.x1 - plan.x0, X1, Y1, X2, Y2, outR, outG, outB);
}

}  // namespace kwfill
