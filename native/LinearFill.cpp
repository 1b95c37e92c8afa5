// The linear tool family's kernels: the walk that gives each pixel its
// gradient step, eight rows at a time, and the colour passes over a row of steps.
#include "native/LinearFill.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "native/Rounding.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kwlinear {
namespace {
using kwround::RoundF;
constexpr int Lanes = 8;

uint8_t* Row(uint8_t* p, size_t stride, int y) { return p + static_cast<size_t>(y) * stride; }

bool Opaque(const GradientSteps& g) {
    for (int i = 0; i < 256; ++i)
        if (g.a[i] != 255) return false;
    return true;
}

// An opaque gradient without alpha: the steps come in runs (the ends of the
// drag, the pixels between two steps of a ramp), and each run is written as
// sixteen bytes of its colour; the next run's store overwrites what lay beyond
// it. Stores never pass the row's last pixel: the tail is written pixel by pixel.
void OpaqueRow(uint8_t* const out[3], const uint8_t* const colour[3], const uint8_t* idx, int W) {
    int x = 0;
#if defined(__SSE2__)
    while (x + 16 <= W) {
        const uint8_t i = idx[x];
        const __m128i steps = _mm_loadu_si128(reinterpret_cast<const __m128i*>(idx + x));
        const unsigned same = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(steps, _mm_set1_epi8(static_cast<char>(i)))));
        for (int k = 0; k < 3; ++k)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out[k] + x), _mm_set1_epi8(static_cast<char>(colour[k][i])));
        x += same == 0xFFFFu ? 16 : __builtin_ctz(~same);
    }
#endif
    for (; x < W; ++x) {
        const unsigned i = idx[x];
        out[0][x] = colour[0][i], out[1][x] = colour[1][i], out[2][x] = colour[2][i];
    }
}

#if defined(__SSE2__)
// (a * w + b * (255 - w)) / 255 for sixteen bytes, exactly: every sum is at
// most 65025, for which x / 255 is (x + 1 + (x >> 8)) >> 8.
__m128i Mix16(__m128i a, __m128i b, __m128i w) {
    const __m128i zero = _mm_setzero_si128(), full = _mm_set1_epi16(255), one = _mm_set1_epi16(1);
    auto half = [&](__m128i av, __m128i bv, __m128i wv) {
        const __m128i x = _mm_add_epi16(_mm_mullo_epi16(av, wv), _mm_mullo_epi16(bv, _mm_sub_epi16(full, wv)));
        return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(x, one), _mm_srli_epi16(x, 8)), 8);
    };
    const __m128i lo = half(_mm_unpacklo_epi8(a, zero), _mm_unpacklo_epi8(b, zero), _mm_unpacklo_epi8(w, zero));
    const __m128i hi = half(_mm_unpackhi_epi8(a, zero), _mm_unpackhi_epi8(b, zero), _mm_unpackhi_epi8(w, zero));
    return _mm_packus_epi16(lo, hi);
}
#endif

// One row of steps into colour: the gradient's opacity over the old colour,
// then alpha. An opaque gradient without alpha is three table reads a pixel.
void ColourRow(const Planes& p, int y, const uint8_t* idx, int W, const GradientSteps& grad, bool opaque) {
    uint8_t* out[3] = {Row(p.r, p.stride, y), Row(p.g, p.stride, y), Row(p.b, p.stride, y)};
    const uint8_t* colour[3] = {grad.r, grad.g, grad.b};
    const bool alpha = p.alphaOff != 255;
    if (opaque && !alpha) {
        OpaqueRow(out, colour, idx, W);
        return;
    }
    const uint8_t* a = alpha ? p.a + static_cast<size_t>(y) * p.stride : nullptr;
    int x = 0;
#if defined(__SSE2__)
    // Sixteen pixels at a time: their steps' colours and opacities gathered,
    // both mixes in sixteen-bit lanes.
    for (; x + 16 <= W; x += 16) {
        alignas(16) uint8_t c[3][16], g[16];
        for (int i = 0; i < 16; ++i) {
            const unsigned s = idx[x + i];
            g[i] = grad.a[s], c[0][i] = colour[0][s], c[1][i] = colour[1][s], c[2][i] = colour[2][s];
        }
        const __m128i ga = _mm_load_si128(reinterpret_cast<const __m128i*>(g));
        const __m128i al = alpha ? _mm_or_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a + x)),
                                                _mm_set1_epi8(static_cast<char>(p.alphaOff)))
                                 : _mm_set1_epi8(static_cast<char>(-1));
        for (int k = 0; k < 3; ++k) {
            const __m128i old = _mm_loadu_si128(reinterpret_cast<const __m128i*>(out[k] + x));
            const __m128i n = Mix16(_mm_load_si128(reinterpret_cast<const __m128i*>(c[k])), old, ga);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out[k] + x), Mix16(n, old, al));
        }
    }
#endif
    for (; x < W; ++x) {
        const unsigned i = idx[x], ga = grad.a[i];
        const unsigned al = alpha ? (a[x] | p.alphaOff) : 255u;
        for (int k = 0; k < 3; ++k) {
            const unsigned old = out[k][x];
            unsigned n = (colour[k][i] * ga + old * (255 - ga)) / 255;
            if (al < 255) n = (n * al + old * (255 - al)) / 255;
            out[k][x] = static_cast<uint8_t>(n);
        }
    }
}

// The walk of bands of eight rows, each band's steps handed to `row`.
template <typename RowFn>
void WalkBands(int W, int H, float start, float cx, float cy, RowFn row) {
    std::vector<uint8_t> idx(static_cast<size_t>(Lanes) * static_cast<size_t>(W));
    float rowAcc = start;
    for (int y0 = 0; y0 < H; y0 += Lanes) {
        const int rows = std::min(Lanes, H - y0);
        LinearSteps(rowAcc, cx, cy, W, rows, idx.data());
        for (int j = 0; j < rows; ++j) row(y0 + j, idx.data() + static_cast<size_t>(j) * static_cast<size_t>(W));
    }
}
}  // namespace

namespace {
#if defined(__SSE2__)
// Sixteen columns of eight rows' steps (a byte per row, in the low half of
// each vector) turned into eight rows of sixteen bytes.
void Transpose16x8(const __m128i c[16], __m128i rows[8]) {
    __m128i t[8], u[8], v[8];
    for (int i = 0; i < 8; ++i) t[i] = _mm_unpacklo_epi8(c[2 * i], c[2 * i + 1]);  // rows 0..7 of two columns
    for (int i = 0; i < 4; ++i) {
        u[2 * i] = _mm_unpacklo_epi16(t[2 * i], t[2 * i + 1]);      // rows 0..3 of four columns
        u[2 * i + 1] = _mm_unpackhi_epi16(t[2 * i], t[2 * i + 1]);  // rows 4..7
    }
    for (int i = 0; i < 2; ++i)
        for (int h = 0; h < 2; ++h) {
            v[4 * i + 2 * h] = _mm_unpacklo_epi32(u[4 * i + h], u[4 * i + 2 + h]);      // two rows of eight columns
            v[4 * i + 2 * h + 1] = _mm_unpackhi_epi32(u[4 * i + h], u[4 * i + 2 + h]);  // the next two rows
        }
    for (int j = 0; j < 4; ++j) {
        rows[2 * j] = _mm_unpacklo_epi64(v[j], v[4 + j]);
        rows[2 * j + 1] = _mm_unpackhi_epi64(v[j], v[4 + j]);
    }
}
#endif
}  // namespace

void LinearSteps(float& rowAcc, float cx, float cy, int W, int rows, uint8_t* idx) {
    float acc[Lanes];
    for (int j = 0; j < Lanes; ++j) {
        if (j < rows) rowAcc += cy;
        acc[j] = rowAcc;  // lanes past the last row repeat it and are not stored
    }
    int x = 0;
#if defined(__SSE2__)
    __m128 a0 = _mm_loadu_ps(acc), a1 = _mm_loadu_ps(acc + 4);
    const __m128 step = _mm_set1_ps(cx), lo = _mm_set1_ps(-300.0f), hi = _mm_set1_ps(300.0f);
    const __m128i zero = _mm_setzero_si128();
    // One column: both halves of the lanes step on, and their steps as bytes.
    auto column = [&]() {
        a0 = _mm_add_ps(a0, step);
        a1 = _mm_add_ps(a1, step);
        // Held well beyond the table first, so that the conversion cannot overflow;
        // the negative of a rounded value is the rounded negative (ties to even).
        const __m128i i0 = _mm_sub_epi32(zero, _mm_cvtps_epi32(_mm_min_ps(_mm_max_ps(a0, lo), hi)));
        const __m128i i1 = _mm_sub_epi32(zero, _mm_cvtps_epi32(_mm_min_ps(_mm_max_ps(a1, lo), hi)));
        const __m128i words = _mm_packs_epi32(i0, i1);
        return _mm_packus_epi16(words, words);
    };
    for (; x + 16 <= W; x += 16) {
        __m128i cols[16], out[8];
        for (auto& c : cols) c = column();
        Transpose16x8(cols, out);
        for (int j = 0; j < rows; ++j)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(idx + static_cast<size_t>(j) * static_cast<size_t>(W) + x), out[j]);
    }
    alignas(16) uint8_t lane[16];
    for (; x < W; ++x) {
        _mm_store_si128(reinterpret_cast<__m128i*>(lane), column());
        for (int j = 0; j < rows; ++j) idx[static_cast<size_t>(j) * static_cast<size_t>(W) + static_cast<size_t>(x)] = lane[j];
    }
#endif
    for (int j = 0; j < rows && x < W; ++j) {
        float a = acc[j];
        for (int c = 0; c < W; ++c) {
            a += cx;
            const int i = -RoundF(std::clamp(a, -300.0f, 300.0f));
            idx[static_cast<size_t>(j) * static_cast<size_t>(W) + static_cast<size_t>(c)] = static_cast<uint8_t>(std::clamp(i, 0, 255));
        }
    }
}

void LinearGradient(const Planes& p, int W, int H, float start, float cx, float cy, const GradientSteps& grad) {
    if (W <= 0 || H <= 0) return;
    const bool opaque = Opaque(grad);
    WalkBands(W, H, start, cx, cy, [&](int y, const uint8_t* idx) { ColourRow(p, y, idx, W, grad, opaque); });
}

void LinearAlphaFade(uint8_t* alpha, size_t stride, int W, int H, float start, float cx, float cy) {
    if (W <= 0 || H <= 0) return;
    WalkBands(W, H, start, cx, cy, [&](int y, const uint8_t* idx) {
        uint8_t* a = Row(alpha, stride, y);
        for (int x = 0; x < W; ++x) a[x] = static_cast<uint8_t>(a[x] * (255u - idx[x]) / 255u);
    });
}

void CircularGradient(const Planes& p, int W, int H, float CX, float CY, float Radius, float Power,
                      const GradientSteps& grad) {
    if (W <= 0 || H <= 0 || Radius == 0) return;
    const bool opaque = Opaque(grad);
    const float inverse = 1.0f / Radius;
    std::vector<uint8_t> idx(static_cast<size_t>(W));
    for (int y = 0; y < H; ++y) {
        const float dy = CY - static_cast<float>(y);
        for (int x = 0; x < W; ++x) {
            const float dx = CX - static_cast<float>(x);
            float t = std::sqrt(dx * dx + dy * dy) * inverse;
            if (Power != 1.0f) t = std::pow(t, Power);
            idx[static_cast<size_t>(x)] = static_cast<uint8_t>(RoundF(std::clamp(t * 255.0f, 0.0f, 255.0f)));
        }
        ColourRow(p, y, idx.data(), W, grad, opaque);
    }
}

namespace {
// The source of one warped pixel: bilinear over the four neighbours, or the nearest.
void WarpPixel(const Planes& dst, const uint8_t* const src[3], size_t at, float sx, float sy, bool antiAliased) {
    uint8_t* out[3] = {dst.r, dst.g, dst.b};
    if (!antiAliased) {
        const size_t from = static_cast<size_t>(RoundF(sy)) * dst.stride + static_cast<size_t>(RoundF(sx));
        for (int k = 0; k < 3; ++k) out[k][at] = src[k][from];
        return;
    }
    const int ix = static_cast<int>(sx), iy = static_cast<int>(sy);
    const float fx = sx - static_cast<float>(ix), fy = sy - static_cast<float>(iy);
    const size_t i00 = static_cast<size_t>(iy) * dst.stride + static_cast<size_t>(ix);
    const size_t i10 = i00 + 1, i01 = i00 + dst.stride, i11 = i01 + 1;
    for (int k = 0; k < 3; ++k) {
        const uint8_t* s = src[k];
        const float top = s[i00] * (1 - fx) + s[i10] * fx, bottom = s[i01] * (1 - fx) + s[i11] * fx;
        out[k][at] = static_cast<uint8_t>(std::clamp(RoundF(top * (1 - fy) + bottom * fy), 0, 255));
    }
}
}  // namespace

void LinearWarp(const Planes& dst, const uint8_t* const src[3], int W, int H, const WarpLine& line) {
    if (W <= 0 || H <= 0 || line.d < 1) return;
    const float k = 1.0f / line.d, dx = line.X1 - line.X2, dy = line.Y1 - line.Y2;
    int left = 0, top = 0, right = W - 1, bottom = H - 1;
    if (line.antiAliased) {
        // Only the drag's reach, and never the last column or row, whose right
        // and lower neighbours lie beyond the picture.
        left = std::clamp(RoundF(line.X2 - line.d), 0, std::max(W - 2, 0));
        right = std::clamp(RoundF(line.X2 + line.d), 0, std::max(W - 2, 0));
        top = std::clamp(RoundF(line.Y2 - line.d), 0, std::max(H - 2, 0));
        bottom = std::clamp(RoundF(line.Y2 + line.d), 0, std::max(H - 2, 0));
    }
    const float lastX = static_cast<float>(W - 1), lastY = static_cast<float>(H - 1);
    for (int y = top; y <= bottom; ++y) {
        const float ey = line.Y2 - static_cast<float>(y);
        for (int x = left; x <= right; ++x) {
            const float ex = line.X2 - static_cast<float>(x);
            float r = std::sqrt(ex * ex + ey * ey) * k;
            if (line.Power != 1.0f) r = std::pow(r, line.Power);
            const float t = 1 - r;
            if (t < 0) continue;
            const float sx = std::clamp(dx * t + static_cast<float>(x), 0.0f, lastX);
            const float sy = std::clamp(dy * t + static_cast<float>(y), 0.0f, lastY);
            WarpPixel(dst, src, static_cast<size_t>(y) * dst.stride + static_cast<size_t>(x), sx, sy, line.antiAliased);
        }
    }
}

void MapToGradient(const Planes& p, int W, int H, const GradientSteps& grad) {
    const bool alpha = p.alphaOff != 255;
    const uint8_t* colour[3] = {grad.r, grad.g, grad.b};
    for (int y = 0; y < H; ++y) {
        uint8_t* out[3] = {Row(p.r, p.stride, y), Row(p.g, p.stride, y), Row(p.b, p.stride, y)};
        const uint8_t* a = alpha ? p.a + static_cast<size_t>(y) * p.stride : nullptr;
        for (int x = 0; x < W; ++x) {
            // The mean of three bytes is never half-way: (sum + 1) / 3 rounds it.
            const unsigned v = (out[0][x] + out[1][x] + out[2][x] + 1u) / 3u;
            const unsigned al = alpha ? (a[x] | p.alphaOff) : 255u;
            for (int k = 0; k < 3; ++k) {
                unsigned c = colour[k][v];
                if (al < 255) c = (out[k][x] * (255 - al) + c * al) / 255;
                out[k][x] = static_cast<uint8_t>(c);
            }
        }
    }
}

}  // namespace kwlinear
