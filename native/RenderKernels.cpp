// The render kernels: plain loops, y outer and x inner, clipped by their callers.
#include "native/RenderKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "native/Rounding.h"

namespace kwfilter {
void DoubleField(const uint8_t* src, size_t srcStride, int w, int h, uint8_t* dst, size_t dstStride) {
    for (int y = 0; y < h; ++y) {
        const uint8_t* t0 = src + static_cast<size_t>(y) * srcStride;
        const uint8_t* t1 = t0 + srcStride;
        uint8_t* n0 = dst + static_cast<size_t>(2 * y) * dstStride;
        uint8_t* n1 = n0 + dstStride;
        for (int x = 0; x < w; ++x) {
            const int a = t0[x], b = t0[x + 1], c = t1[x], d = t1[x + 1];
            n0[2 * x] = static_cast<uint8_t>(a);
            n0[2 * x + 1] = static_cast<uint8_t>((a + b) >> 1);
            n1[2 * x] = static_cast<uint8_t>((a + c) >> 1);
            n1[2 * x + 1] = static_cast<uint8_t>((a + b + c + d) >> 2);
        }
    }
    const int W2 = 2 * w, H2 = 2 * h;
    if (W2 > 0)
        for (int y = 0; y <= H2; ++y) {
            uint8_t* row = dst + static_cast<size_t>(y) * dstStride;
            row[W2] = row[W2 - 1];
        }
    if (H2 > 0) std::memcpy(dst + static_cast<size_t>(H2) * dstStride, dst + static_cast<size_t>(H2 - 1) * dstStride,
                            static_cast<size_t>(W2) + 1);
}

void PlasmaChannel(uint8_t* dst, const uint8_t* field, size_t fieldStride, const uint8_t* A, int W, int H) {
    const size_t stride = static_cast<size_t>(W) + 1;
    for (int y = 0; y < H; ++y) {
        uint8_t* d = dst + y * stride;
        const uint8_t* a = A + y * stride;
        const uint8_t* t = field + y * fieldStride;
        for (int x = 0; x < W; ++x) d[x] = static_cast<uint8_t>((t[x] * a[x] + (255 - a[x]) * d[x]) / 255);
    }
}

void FieldThroughGradient(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* field, size_t fieldStride,
                          const uint8_t* grad, const uint8_t* A, uint8_t AlphaOff, int W, int H) {
    const size_t stride = static_cast<size_t>(W) + 1;
    uint8_t* planes[3] = {R, G, B};
    for (int y = 0; y < H; ++y) {
        const uint8_t* t = field + y * fieldStride;
        const uint8_t* a = A + y * stride;
        for (int c = 0; c < 3; ++c) {
            uint8_t* d = planes[c] + y * stride;
            const uint8_t* g = grad + 256 * c;
            if (AlphaOff != 0)
                for (int x = 0; x < W; ++x) d[x] = g[t[x]];
            else
                for (int x = 0; x < W; ++x) d[x] = static_cast<uint8_t>((d[x] * (255 - a[x]) + g[t[x]] * a[x]) / 255);
        }
    }
}

void AccThroughGradient(uint8_t* R, uint8_t* G, uint8_t* B, const float* acc, int K, const uint8_t* grad, int W) {
    const float k = static_cast<float>(K);
    for (int x = 0; x < W; ++x) {
        const int i = kwround::RoundF(std::clamp(acc[x] / k, 0.0f, 255.0f));
        R[x] = grad[i];
        G[x] = grad[256 + i];
        B[x] = grad[512 + i];
    }
}

namespace {
inline uint8_t Held(long v) { return static_cast<uint8_t>(std::clamp(v, 0L, 255L)); }
}  // namespace

void ColorNoiseRow(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB,
                   const double* rnd, int W, int amount) {
    for (int x = 0; x < W; ++x, rnd += 3) {
        R[x] = Held(kwround::RoundD(UR[x] + (rnd[0] - 0.5) * amount));
        G[x] = Held(kwround::RoundD(UG[x] + (rnd[1] - 0.5) * amount));
        B[x] = Held(kwround::RoundD(UB[x] + (rnd[2] - 0.5) * amount));
    }
}

void ValueNoiseRow(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB,
                   const double* rnd, int W, int amount) {
    for (int x = 0; x < W; ++x) {
        const long k = kwround::RoundD((rnd[x] - 0.5) * amount * 255) / 255;
        R[x] = Held(UR[x] + k);
        G[x] = Held(UG[x] + k);
        B[x] = Held(UB[x] + k);
    }
}
}  // namespace kwfilter
