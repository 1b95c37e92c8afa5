// The blur kernels: the two-pass raised-cosine window, the 2-D mask and the 3 x 3
// convolution. Edges are clamped: a row (or column) is first copied into a padded
// buffer, so the inner loops run over plain arrays that the compiler vectorises.
// The hot row loops are built twice, for AVX2 and for the baseline, chosen once
// at load; both do the same float operations in the same order (no contraction),
// so their bytes are the same.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "native/FilterThreads.h"
#include "native/kwfilter.h"

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define KW_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define KW_CLONES
#endif

namespace kwfilter {
namespace {
inline size_t Stride(int W) { return static_cast<size_t>(W) + 1; }
inline int Clamp(int v, int lo, int hi) { return v < lo ? lo : (v > hi ? hi : v); }

// Round half to even (the default rounding mode) and hold to 0..255; written
// with rint and integer compares so that the AVX2 build vectorises it.
inline uint8_t ToByte(float v) {
    int i = static_cast<int>(std::rint(v));
    i = i < 0 ? 0 : i;
    i = i > 255 ? 255 : i;
    return static_cast<uint8_t>(i);
}

// Eight floats in a register (two halves on the baseline build); loads and
// stores are unaligned copies. These helpers are inlined within this file, so the
// note that a 32-byte vector is passed differently without AVX does not apply.
#pragma GCC diagnostic ignored "-Wpsabi"
typedef float F8 __attribute__((vector_size(32)));
__attribute__((always_inline)) inline F8 Load(const float* p) {
    F8 v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
constexpr int Block = 32;  // four accumulators: the adds of one tap overlap

// acc := w0 * centre, then for k = 1..half acc += wk * (up[k] + down[k]), the
// accumulators held in registers over a block of 32 pixels; out := acc / wsum.
// The taps are a padded float row's shifts (the horizontal pass) or byte rows
// (the vertical one).
template <typename T>
__attribute__((always_inline)) inline void WindowBlocks(uint8_t* out, int W, const float* w, int half, float wsum,
                                                        const T* centre, const T* const* up, const T* const* down) {
    alignas(32) float acc[Block];
    int x = 0;
    for (; x + Block <= W; x += Block) {
        F8 a0 = w[0] * Load(centre + x), a1 = w[0] * Load(centre + x + 8), a2 = w[0] * Load(centre + x + 16),
           a3 = w[0] * Load(centre + x + 24);
        for (int k = 1; k <= half; ++k) {
            const float wk = w[k];
            const T* u = up[k] + x;
            const T* d = down[k] + x;
            a0 += wk * (Load(u) + Load(d));
            a1 += wk * (Load(u + 8) + Load(d + 8));
            a2 += wk * (Load(u + 16) + Load(d + 16));
            a3 += wk * (Load(u + 24) + Load(d + 24));
        }
        std::memcpy(acc, &a0, 32), std::memcpy(acc + 8, &a1, 32), std::memcpy(acc + 16, &a2, 32);
        std::memcpy(acc + 24, &a3, 32);
        for (int i = 0; i < Block; ++i) out[x + i] = ToByte(acc[i] / wsum);
    }
    for (; x < W; ++x) {
        float s = w[0] * static_cast<float>(centre[x]);
        for (int k = 1; k <= half; ++k) s += w[k] * (static_cast<float>(up[k][x]) + static_cast<float>(down[k][x]));
        out[x] = ToByte(s / wsum);
    }
}

KW_CLONES void WindowRow(uint8_t* out, const float* centre, const float* const* left, const float* const* right, int W,
                         const float* w, int half, float wsum) {
    WindowBlocks(out, W, w, half, wsum, centre, left, right);
}

// The same window down the columns: rows are the taps.
KW_CLONES void WindowColumn(uint8_t* out, const float* const* rowsUp, const float* const* rowsDown,
                            const float* centre, int W, const float* w, int half, float wsum) {
    WindowBlocks(out, W, w, half, wsum, centre, rowsUp, rowsDown);
}

float WindowSum(const float* w, int half) {
    float s = w[0];
    for (int k = 1; k <= half; ++k) s += 2.0f * w[k];
    return s;
}

void GaussH(uint8_t* dst, const uint8_t* src, int W, int H, const float* w, int half) {
    if (W <= 0 || H <= 0 || half < 0) return;
    const float wsum = WindowSum(w, half);
    if (!(wsum > 0)) return;
    kwthreads::ForRows(H, [&](int y0, int y1) {
        std::vector<float> pad(static_cast<size_t>(W) + 2 * static_cast<size_t>(half));
        std::vector<const float*> left(static_cast<size_t>(half) + 1), right(static_cast<size_t>(half) + 1);
        float* pd = pad.data() + half;
        for (int k = 0; k <= half; ++k) left[k] = pd - k, right[k] = pd + k;
        for (int y = y0; y < y1; ++y) {
            const uint8_t* s = src + static_cast<size_t>(y) * Stride(W);
            for (int i = -half; i < 0; ++i) pd[i] = s[0];
            for (int i = 0; i < W; ++i) pd[i] = s[i];
            for (int i = W; i < W + half; ++i) pd[i] = s[W - 1];
            WindowRow(dst + static_cast<size_t>(y) * Stride(W), pd, left.data(), right.data(), W, w, half, wsum);
        }
    });
}

// The vertical pass keeps the rows it reads as floats in a ring of 2 * half + 1
// rows, each row converted once: row v (clamped to the picture) lives in slot
// v mod the ring's size.
void GaussV(uint8_t* dst, const uint8_t* src, int W, int H, const float* w, int half) {
    if (W <= 0 || H <= 0 || half < 0) return;
    const float wsum = WindowSum(w, half);
    if (!(wsum > 0)) return;
    const int n = 2 * half + 1;
    kwthreads::ForRows(H, [&](int y0, int y1) {
        std::vector<float> ring(static_cast<size_t>(n) * static_cast<size_t>(W));
        std::vector<const float*> up(static_cast<size_t>(half) + 1), down(static_cast<size_t>(half) + 1);
        auto slot = [&](int v) { return ring.data() + static_cast<size_t>(((v % n) + n) % n) * W; };
        auto load = [&](int v) {
            const uint8_t* s = src + static_cast<size_t>(Clamp(v, 0, H - 1)) * Stride(W);
            float* d = slot(v);
            for (int x = 0; x < W; ++x) d[x] = s[x];
        };
        for (int v = y0 - half; v < y0 + half; ++v) load(v);
        for (int y = y0; y < y1; ++y) {
            load(y + half);
            for (int k = 1; k <= half; ++k) up[k] = slot(y - k), down[k] = slot(y + k);
            WindowColumn(dst + static_cast<size_t>(y) * Stride(W), up.data(), down.data(), slot(y), W, w, half, wsum);
        }
    });
}
}  // namespace

void xFastGauss8Pass1(uint8_t* dst, const uint8_t* src, int W, int H, const float* weights, int half) {
    GaussH(dst, src, W, H, weights, half);
}
void xFastGauss8Pass2(uint8_t* dst, const uint8_t* src, int W, int H, const float* weights, int half) {
    GaussV(dst, src, W, H, weights, half);
}
void xFastGaussPass1(uint8_t* dR, uint8_t* dG, uint8_t* dB, const uint8_t* sR, const uint8_t* sG, const uint8_t* sB,
                     int W, int H, const float* weights, int half) {
    GaussH(dR, sR, W, H, weights, half);
    GaussH(dG, sG, W, H, weights, half);
    GaussH(dB, sB, W, H, weights, half);
}
void xFastGaussPass2(uint8_t* dR, uint8_t* dG, uint8_t* dB, const uint8_t* sR, const uint8_t* sG, const uint8_t* sB,
                     int W, int H, const float* weights, int half) {
    GaussV(dR, sR, W, H, weights, half);
    GaussV(dG, sG, W, H, weights, half);
    GaussV(dB, sB, W, H, weights, half);
}

namespace {
// One output row of the 2-D mask: integer sums over the non-zero cells.
KW_CLONES void MaskRow(int32_t* acc, const int32_t* pad, int W, const uint8_t* krow, int n) {
    for (int i = 0; i < n; ++i) {
        const int32_t k = krow[i];
        if (k == 0) continue;
        const int32_t* p = pad + i;
        for (int x = 0; x < W; ++x) acc[x] += k * p[x];
    }
}

void MaskPlane(const uint8_t* src, uint8_t* dst, const uint8_t* A, uint8_t AlphaOff, bool mix, int W, int H,
               const uint8_t* kernel, int radius, int32_t sum, int y0, int y1) {
    const int n = 2 * radius + 1;
    std::vector<int32_t> pad(static_cast<size_t>(W) + 2 * static_cast<size_t>(radius)), acc(static_cast<size_t>(W));
    for (int y = y0; y < y1; ++y) {
        std::fill(acc.begin(), acc.end(), 0);
        for (int j = 0; j < n; ++j) {
            const uint8_t* s = src + static_cast<size_t>(Clamp(y + j - radius, 0, H - 1)) * Stride(W);
            for (int i = -radius; i < W + radius; ++i) pad[static_cast<size_t>(i + radius)] = s[Clamp(i, 0, W - 1)];
            MaskRow(acc.data(), pad.data(), W, kernel + static_cast<size_t>(j) * n, n);
        }
        const size_t o = static_cast<size_t>(y) * Stride(W);
        for (int x = 0; x < W; ++x) {
            const int v = std::min(255, (acc[x] + sum / 2) / sum);
            if (!mix) {
                dst[o + x] = static_cast<uint8_t>(v);
                continue;
            }
            const int a = A[o + x] | AlphaOff;
            dst[o + x] = static_cast<uint8_t>((src[o + x] * (255 - a) + v * a) / 255);
        }
    }
}

void Mask3(const uint8_t* const s[3], uint8_t* const d[3], const uint8_t* A, uint8_t AlphaOff, bool mix, int W, int H,
           const uint8_t* kernel, int radius, int32_t sum, int y0, int y1) {
    y0 = std::max(y0, 0);
    y1 = std::min(y1, H);
    if (W <= 0 || y1 <= y0 || radius < 0) return;
    for (int c = 0; c < 3; ++c) {
        if (sum < 1) {
            for (int y = y0; y < y1; ++y)
                std::copy_n(s[c] + static_cast<size_t>(y) * Stride(W), W, d[c] + static_cast<size_t>(y) * Stride(W));
            continue;
        }
        kwthreads::ForRows(y1 - y0, [&](int b0, int b1) {
            MaskPlane(s[c], d[c], A, AlphaOff, mix, W, H, kernel, radius, sum, y0 + b0, y0 + b1);
        }, 2);
    }
}
}  // namespace

void xBlur(const uint8_t* sR, const uint8_t* sG, const uint8_t* sB, uint8_t* dR, uint8_t* dG, uint8_t* dB, int W, int H,
           const uint8_t* kernel, int radius, int32_t kernelSum, int y0, int y1) {
    const uint8_t* s[3] = {sR, sG, sB};
    uint8_t* d[3] = {dR, dG, dB};
    Mask3(s, d, nullptr, 255, false, W, H, kernel, radius, kernelSum, y0, y1);
}

void xBlurAlpha(const uint8_t* sR, const uint8_t* sG, const uint8_t* sB, uint8_t* dR, uint8_t* dG, uint8_t* dB,
                const uint8_t* A, uint8_t AlphaOff, int W, int H, const uint8_t* kernel, int radius, int32_t kernelSum,
                int y0, int y1) {
    const uint8_t* s[3] = {sR, sG, sB};
    uint8_t* d[3] = {dR, dG, dB};
    Mask3(s, d, A, AlphaOff, true, W, H, kernel, radius, kernelSum, y0, y1);
}

namespace {
// One row of the 3 x 3 convolution from three padded rows (one column of
// padding each side): the products summed in the order of the weights.
KW_CLONES void ConvolveRow(uint8_t* out, const float* up, const float* mid, const float* down, int W, const float* w,
                           float divisor, float offset) {
    for (int x = 0; x < W; ++x) {
        float s = w[0] * up[x];
        s += w[1] * up[x + 1];
        s += w[2] * up[x + 2];
        s += w[3] * mid[x];
        s += w[4] * mid[x + 1];
        s += w[5] * mid[x + 2];
        s += w[6] * down[x];
        s += w[7] * down[x + 1];
        s += w[8] * down[x + 2];
        out[x] = ToByte(s / divisor + offset);
    }
}

// out := (old * (255 - a) + out * a) \ 255, a := A | AlphaOff; the sum fits 16 bits.
KW_CLONES void MixRow(uint8_t* out, const uint8_t* old, const uint8_t* A, uint8_t AlphaOff, int W) {
    for (int x = 0; x < W; ++x) {
        const uint16_t a = static_cast<uint16_t>(A[x] | AlphaOff);
        const uint16_t sum = static_cast<uint16_t>(old[x] * (255 - a) + out[x] * a);
        out[x] = static_cast<uint8_t>(sum / 255);
    }
}

void PadRow(float* pad, const uint8_t* s, int W) {
    pad[0] = s[0];
    for (int x = 0; x < W; ++x) pad[x + 1] = s[x];
    pad[W + 1] = s[W - 1];
}

void ConvolvePlane(uint8_t* dst, const uint8_t* src, const uint8_t* A, uint8_t AlphaOff, int W, int H,
                   const Weights3x3& wt, float divisor, float offset) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        std::vector<float> rows(3 * (static_cast<size_t>(W) + 2));
        float* pads[3] = {rows.data(), rows.data() + W + 2, rows.data() + 2 * (W + 2)};
        auto rowOf = [&](int y) { return src + static_cast<size_t>(Clamp(y, 0, H - 1)) * Stride(W); };
        PadRow(pads[0], rowOf(y0 - 1), W);
        PadRow(pads[1], rowOf(y0), W);
        for (int y = y0; y < y1; ++y) {
            PadRow(pads[2], rowOf(y + 1), W);
            const size_t o = static_cast<size_t>(y) * Stride(W);
            ConvolveRow(dst + o, pads[0], pads[1], pads[2], W, wt.w, divisor, offset);
            if (AlphaOff != 255) MixRow(dst + o, src + o, A + o, AlphaOff, W);
            std::rotate(pads, pads + 1, pads + 3);
        }
    });
}
}  // namespace

void ConvolveAlpha(uint8_t* dR, uint8_t* dG, uint8_t* dB, const uint8_t* sR, const uint8_t* sG, const uint8_t* sB,
                   const uint8_t* A, uint8_t AlphaOff, int W, int H, const Weights3x3& weights, float divisor,
                   float offset) {
    if (W <= 0 || H <= 0 || divisor == 0) return;
    ConvolvePlane(dR, sR, A, AlphaOff, W, H, weights, divisor, offset);
    ConvolvePlane(dG, sG, A, AlphaOff, W, H, weights, divisor, offset);
    ConvolvePlane(dB, sB, A, AlphaOff, W, H, weights, divisor, offset);
}
}  // namespace kwfilter
