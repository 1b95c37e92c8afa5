// Table, channel, hue and posterize kernels, and the alpha passes shared by the
// filters. Rows are independent, so each kernel splits them over the threads.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <vector>

#include "native/ColourSpace.h"
#include "native/FilterThreads.h"
#include "native/Rounding.h"
#include "native/kwfilter.h"

namespace kwfilter {
namespace {
inline size_t Stride(int W) { return static_cast<size_t>(W) + 1; }
inline size_t At(int W, int y) { return static_cast<size_t>(y) * Stride(W); }
inline uint8_t Mix(int old, int neu, int a) { return static_cast<uint8_t>((old * (255 - a) + neu * a) / 255); }
}  // namespace

void Overlay_b(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB,
               const uint8_t* A, uint8_t AlphaOff, int W, int H) {
    if (AlphaOff != 0) return;
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const int a = A[o + x];
                R[o + x] = Mix(UR[o + x], R[o + x], a);
                G[o + x] = Mix(UG[o + x], G[o + x], a);
                B[o + x] = Mix(UB[o + x], B[o + x], a);
            }
        }
    });
}

void Overlay(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
             const uint8_t* A, uint8_t AlphaOff, int W, int H) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const int a = A[o + x] | AlphaOff;
                R[o + x] = Mix(R[o + x], SR[o + x], a);
                G[o + x] = Mix(G[o + x], SG[o + x], a);
                B[o + x] = Mix(B[o + x], SB[o + x], a);
            }
        }
    });
}

void ChannelValue(uint8_t* dest, const uint8_t* undo, const uint8_t* A, uint8_t AlphaOff, int W, int H, float factor) {
    // One product per possible byte: the same single-precision product and rounding
    // the per-pixel formula gives.
    uint8_t lut[256];
    for (int p = 0; p < 256; ++p) lut[p] = static_cast<uint8_t>(std::min(255, kwround::RoundF(p * factor)));
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const int u = undo[o + x];
                dest[o + x] = Mix(u, lut[u], A[o + x] | AlphaOff);
            }
        }
    });
}

void SetValueFrom(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                  const uint8_t* lut, int W, int H) {
    uint8_t t[256];
    std::memcpy(t, lut, 256);
    // The table of byte pairs (128 KB): on a little-endian machine the first byte
    // in memory is the low half of the pair.
    static_assert(std::endian::native == std::endian::little);
    std::vector<uint16_t> pairTable(65536);
    for (int hi = 0; hi < 256; ++hi)
        for (int lo = 0; lo < 256; ++lo) pairTable[static_cast<size_t>(hi * 256 + lo)] = static_cast<uint16_t>(t[lo] | t[hi] << 8);
    const uint16_t* pairs = pairTable.data();
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int c = 0; c < 3; ++c) {
            uint8_t* d = c == 0 ? R : (c == 1 ? G : B);
            const uint8_t* sp = c == 0 ? SR : (c == 1 ? SG : SB);
            for (int y = y0; y < y1; ++y) {
                uint8_t* row = d + At(W, y);
                const uint8_t* src = sp + At(W, y);
                // Eight bytes read and written at once, looked up two at a time.
                int x = 0;
                for (; x + 8 <= W; x += 8) {
                    uint64_t in, out = 0;
                    std::memcpy(&in, src + x, 8);
                    for (int k = 0; k < 4; ++k) out |= static_cast<uint64_t>(pairs[(in >> (16 * k)) & 65535]) << (16 * k);
                    std::memcpy(row + x, &out, 8);
                }
                for (; x < W; ++x) row[x] = t[src[x]];
            }
        }
    });
}

void SetValue(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* lut, int W, int H) {
    SetValueFrom(R, G, B, R, G, B, lut, W, H);
}

void SetValueAlphaFrom(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                       const uint8_t* lut, const uint8_t* A, uint8_t AlphaOff, int W, int H) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const int a = A[o + x] | AlphaOff;
                R[o + x] = Mix(SR[o + x], lut[SR[o + x]], a);
                G[o + x] = Mix(SG[o + x], lut[SG[o + x]], a);
                B[o + x] = Mix(SB[o + x], lut[SB[o + x]], a);
            }
        }
    });
}

void SetValueAlpha(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* lut, const uint8_t* A, uint8_t AlphaOff, int W,
                   int H) {
    SetValueAlphaFrom(R, G, B, R, G, B, lut, A, AlphaOff, W, H);
}

void BuildSpect(const uint8_t* R, const uint8_t* G, const uint8_t* B, int32_t* hist, int W, int H) {
    std::fill_n(hist, 768, 0);
    for (int y = 0; y < H; ++y) {
        const size_t o = At(W, y);
        for (int x = 0; x < W; ++x) {
            ++hist[R[o + x]];
            ++hist[256 + G[o + x]];
            ++hist[512 + B[o + x]];
        }
    }
}

void FastHSV(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* A, int W, int H, const float* Hue, const float* Sat,
             const float* Val, int32_t shift, float satF, float valF, uint8_t AlphaOff) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y), f = static_cast<size_t>(y) * static_cast<size_t>(W);
            for (int x = 0; x < W; ++x) {
                const float sat = Sat[f + x];
                float h = static_cast<float>(kwround::RoundD(static_cast<double>(Hue[f + x]) + shift) % 360);
                if (sat == 0) h = -1.0f;
                float r, g, b;
                HSV_To_RGB(r, g, b, h, std::clamp(sat * satF, 0.0f, 1.0f), std::clamp(Val[f + x] * valF, 0.0f, 1.0f));
                const int a = A[o + x] | AlphaOff;
                R[o + x] = Mix(R[o + x], kwround::RoundF(r * 255.0f), a);
                G[o + x] = Mix(G[o + x], kwround::RoundF(g * 255.0f), a);
                B[o + x] = Mix(B[o + x], kwround::RoundF(b * 255.0f), a);
            }
        }
    });
}

void FastPosterize(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* A, int W, int H, const uint8_t* UR,
                   const uint8_t* UG, const uint8_t* UB, int32_t step, uint8_t AlphaOff) {
    if (step < 1) return;
    uint8_t lut[256];
    for (int p = 0; p < 256; ++p) lut[p] = static_cast<uint8_t>((p / step) * step);
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const int a = A[o + x] | AlphaOff;
                R[o + x] = Mix(UR[o + x], lut[UR[o + x]], a);
                G[o + x] = Mix(UG[o + x], lut[UG[o + x]], a);
                B[o + x] = Mix(UB[o + x], lut[UB[o + x]], a);
            }
        }
    });
}
}  // namespace kwfilter
