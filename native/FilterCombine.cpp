// Combining the main picture with the swap page: the mixing tables, the
// per-pixel formulas of the Combine menu, the premultiplied blit and the emboss
// by a height field. Every formula reads only its own pixel of the main planes,
// so rows split over the threads freely.
#include <algorithm>
#include <cstddef>

#include "native/FilterThreads.h"
#include "native/Rounding.h"
#include "native/kwfilter.h"

namespace kwfilter {
namespace {
inline size_t At(int W, int y) { return static_cast<size_t>(y) * (static_cast<size_t>(W) + 1); }
inline uint8_t Mix(int old, int neu, int a) { return static_cast<uint8_t>((old * (255 - a) + neu * a) / 255); }
// CLng of a sum of three bytes over 3.0: never a half, so plain rounding is exact.
inline int Third(int sum) { return kwround::RoundD(sum / 3.0); }

struct Px {
    int r, g, b;
};

// One formula applied over the picture, the result mixed through alpha.
template <typename F>
void Each(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
          const uint8_t* A, uint8_t AlphaOff, int W, int H, F formula) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const size_t i = o + x;
                const Px b{R[i], G[i], B[i]}, s{SR[i], SG[i], SB[i]};
                const Px n = formula(b, s);
                const int a = A[i] | AlphaOff;
                R[i] = Mix(b.r, n.r, a);
                G[i] = Mix(b.g, n.g, a);
                B[i] = Mix(b.b, n.b, a);
            }
        }
    });
}

Px PerChannel(const Px& b, const Px& s, int (*f)(int, int)) { return {f(b.r, s.r), f(b.g, s.g), f(b.b, s.b)}; }
int Luminance(int b, int s) { return (s * (255 - b) + b * b) / 255; }
int Difference(int b, int s) { return ((255 - b) * s + (255 - s) * b) / 255; }
}  // namespace

void CombineTable(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                  const uint8_t* table, int W, int H) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                R[o + x] = table[R[o + x] + 256 * SR[o + x]];
                G[o + x] = table[G[o + x] + 256 * SG[o + x]];
                B[o + x] = table[B[o + x] + 256 * SB[o + x]];
            }
        }
    });
}

void CombinePixels(CombineFormula f, uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG,
                   const uint8_t* SB, const uint8_t* A, uint8_t AlphaOff, int W, int H, const uint8_t* table) {
    auto run = [&](auto formula) { Each(R, G, B, SR, SG, SB, A, AlphaOff, W, H, formula); };
    switch (f) {
        case CombineFormula::Table:
            if (!table) return;
            return run([table](const Px& b, const Px& s) {
                return Px{table[b.r + 256 * s.r], table[b.g + 256 * s.g], table[b.b + 256 * s.b]};
            });
        case CombineFormula::Luminance:
            return run([](const Px& b, const Px& s) { return PerChannel(b, s, Luminance); });
        case CombineFormula::Difference:
            return run([](const Px& b, const Px& s) { return PerChannel(b, s, Difference); });
        case CombineFormula::Texture:
            return run([](const Px& b, const Px& s) {
                const int sa = Third(s.r + s.g + s.b);
                return Px{b.r * sa / 255, b.g * sa / 255, b.b * sa / 255};
            });
        case CombineFormula::Lighter:
            return run([](const Px& b, const Px& s) { return Third(s.r + s.g + s.b) > Third(b.r + b.g + b.b) ? s : b; });
        case CombineFormula::Darker:
            // The swap side rounded, the main side not: the comparison is one-sided.
            return run([](const Px& b, const Px& s) {
                return Third(s.r + s.g + s.b) < (b.r + b.g + b.b) / 3.0 ? s : b;
            });
        case CombineFormula::Binary:
            return run([](const Px& b, const Px& s) {
                const int v = Third(s.r + s.g + s.b) > Third(b.r + b.g + b.b) ? 0 : 255;
                return Px{v, v, v};
            });
    }
}

void Premult(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
             const uint8_t* A, int W, int H) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        auto one = [](int b, int s, int a) {
            const int sp = kwround::RoundD(((255 - s) * a) / 255.0);
            return static_cast<uint8_t>(kwround::RoundD(((255 - a) * b + (255 - sp) * a) / 255.0));
        };
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const int a = A[o + x];
                R[o + x] = one(R[o + x], SR[o + x], a);
                G[o + x] = one(G[o + x], SG[o + x], a);
                B[o + x] = one(B[o + x], SB[o + x], a);
            }
        }
    });
}

void EmbossMap(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
               const uint8_t* A, uint8_t AlphaOff, int W, int H, int dx1, int dy1, int dx2, int dy2) {
    if (W < 3 || H < 3) return;
    auto height = [&](int x, int y) {
        const size_t i = At(W, y) + static_cast<size_t>(x);
        return Third(SR[i] + SG[i] + SB[i]);
    };
    kwthreads::ForRows(H - 2, [&](int b0, int b1) {
        for (int y = b0 + 1; y < b1 + 1; ++y) {
            const size_t o = At(W, y);
            for (int x = 1; x <= W - 2; ++x) {
                const int e = height(x + dx1, y + dy1) - height(x + dx2, y + dy2) + 255;
                const int k = kwround::RoundD(e / 2.0 - 128.0);  // an even page gives CLng(-0.5) = 0
                const int a = A[o + x] | AlphaOff;
                R[o + x] = Mix(R[o + x], std::clamp(R[o + x] + k, 0, 255), a);
                G[o + x] = Mix(G[o + x], std::clamp(G[o + x] + k, 0, 255), a);
                B[o + x] = Mix(B[o + x], std::clamp(B[o + x] + k, 0, 255), a);
            }
        }
    });
}
}  // namespace kwfilter
