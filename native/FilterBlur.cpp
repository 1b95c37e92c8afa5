// The blur kernels: the two-pass raised-cosine window, the 2-D mask and the 3 x 3
// convolution. Edges are clamped: a row (or column) is first copied into a padded
// buffer, so the inner loops run over plain arrays that the compiler vectorises.
// The hot row loops are built twice, for AVX2 and for the baseline, chosen once
// at load; both do the same float operations in the same order (no contraction),
// so their bytes are the same.
#include <algorithm>
#include <cstddef>
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

// Round half to even for 0 <= v < 2^22 in the default rounding mode, in a form
// the compiler can vectorise: adding 2^23 leaves no fraction bits.
inline float RoundSmall(float v) { return (v + 8388608.0f) - 8388608.0f; }
inline uint8_t ToByte(float v) { return static_cast<uint8_t>(static_cast<int>(RoundSmall(std::clamp(v, 0.0f, 255.0f)))); }

// The window's weighted sum over a padded float row: acc := w0 * centre, then
// for k = 1..half acc += wk * (left + right); out := acc / wsum.
KW_CLONES void WindowRow(uint8_t* out, const float* pad, float* acc, int W, const float* w, int half, float wsum) {
    const float* c = pad + half;
    for (int x = 0; x < W; ++x) acc[x] = w[0] * c[x];
    for (int k = 1; k <= half; ++k) {
        const float wk = w[k];
        const float* l = c - k;
        const float* r = c + k;
        for (int x = 0; x < W; ++x) acc[x] += wk * (l[x] + r[x]);
    }
    for (int x = 0; x < W; ++x) out[x] = ToByte(acc[x] / wsum);
}

// The same window down the columns: rows are the taps.
KW_CLONES void WindowColumn(uint8_t* out, const uint8_t* const* rowsUp, const uint8_t* const* rowsDown,
                            const uint8_t* centre, float* acc, int W, const float* w, int half, float wsum) {
    for (int x = 0; x < W; ++x) acc[x] = w[0] * static_cast<float>(centre[x]);
    for (int k = 1; k <= half; ++k) {
        const float wk = w[k];
        const uint8_t* l = rowsUp[k];
        const uint8_t* r = rowsDown[k];
        for (int x = 0; x < W; ++x) acc[x] += wk * (static_cast<float>(l[x]) + static_cast<float>(r[x]));
    }
    for (int x = 0; x < W; ++x) out[x] = ToByte(acc[x] / wsum);
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
        std::vector<float> pad(static_cast<size_t>(W) + 2 * static_cast<size_t>(half)), acc(static_cast<size_t>(W));
        for (int y = y0; y < y1; ++y) {
            const uint8_t* s = src + static_cast<size_t>(y) * Stride(W);
            for (int i = -half; i < W + half; ++i) pad[static_cast<size_t>(i + half)] = s[Clamp(i, 0, W - 1)];
            WindowRow(dst + static_cast<size_t>(y) * Stride(W), pad.data(), acc.data(), W, w, half, wsum);
        }
    });
}

void GaussV(uint8_t* dst, const uint8_t* src, int W, int H, const float* w, int half) {
    if (W <= 0 || H <= 0 || half < 0) return;
    const float wsum = WindowSum(w, half);
    if (!(wsum > 0)) return;
    kwthreads::ForRows(H, [&](int y0, int y1) {
        std::vector<float> acc(static_cast<size_t>(W));
        std::vector<const uint8_t*> up(static_cast<size_t>(half) + 1), down(static_cast<size_t>(half) + 1);
        for (int y = y0; y < y1; ++y) {
            for (int k = 1; k <= half; ++k) {
                up[k] = src + static_cast<size_t>(Clamp(y - k, 0, H - 1)) * Stride(W);
                down[k] = src + static_cast<size_t>(Clamp(y + k, 0, H - 1)) * Stride(W);
            }
            WindowColumn(dst + static_cast<size_t>(y) * Stride(W), up.data(), down.data(),
                         src + static_cast<size_t>(y) * Stride(W), acc.data(), W, w, half, wsum);
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
KW_CLONES void ConvolveRow(uint8_t* out, const uint8_t* old, const uint8_t* A, int AlphaOff, const float* up,
                           const float* mid, const float* down, int W, const float* w, float divisor, float offset) {
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
        const int v = ToByte(s / divisor + offset);
        const int a = A[x] | AlphaOff;
        out[x] = static_cast<uint8_t>((old[x] * (255 - a) + v * a) / 255);
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
            ConvolveRow(dst + o, src + o, A + o, AlphaOff, pads[0], pads[1], pads[2], W, wt.w, divisor, offset);
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
