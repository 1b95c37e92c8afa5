// Colour keying: the matte from a green or blue ground, the spill taken out of
// the foreground, and the foreground laid over the swap page by the matte.
#include <algorithm>
#include <cstddef>

#include "native/FilterThreads.h"
#include "native/kwfilter.h"

namespace kwfilter {
namespace {
inline size_t At(int W, int y) { return static_cast<size_t>(y) * (static_cast<size_t>(W) + 1); }
inline int RawKey(int r, int key) { return ((255 - r) * key) / 255; }

// Spill suppression: the key channel's excess over the larger of the other two
// is what the ground's light added to the foreground; art / 255 of it is taken
// away, so 0 keeps the foreground as shot and 255 leaves no channel above both others.
inline int Despilled(int key, int other1, int other2, int art) {
    const int excess = key - std::max(other1, other2);
    return excess > 0 ? key - excess * art / 255 : key;
}

void Composite(uint8_t* R, uint8_t* G, uint8_t* B, int W, int H, const uint8_t* UR, const uint8_t* UG,
               const uint8_t* UB, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB, const uint8_t* lut,
               int art, bool blue) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const size_t i = o + x;
                int r = UR[i], g = UG[i], b = UB[i];
                const int k = lut[RawKey(r, blue ? b : g)];
                if (blue) b = Despilled(b, r, g, art);
                else g = Despilled(g, r, b, art);
                R[i] = static_cast<uint8_t>((r * (255 - k) + SR[i] * k) / 255);
                G[i] = static_cast<uint8_t>((g * (255 - k) + SG[i] * k) / 255);
                B[i] = static_cast<uint8_t>((b * (255 - k) + SB[i] * k) / 255);
            }
        }
    });
}
}  // namespace

void FastGreenscreen(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t*, int W, int H, const uint8_t* UR,
                     const uint8_t* UG, const uint8_t* UB, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                     const uint8_t* lut, int32_t art, uint8_t) {
    Composite(R, G, B, W, H, UR, UG, UB, SR, SG, SB, lut, std::clamp(art, 0, 255), false);
}

void FastBluescreen(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t*, int W, int H, const uint8_t* UR,
                    const uint8_t* UG, const uint8_t* UB, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                    const uint8_t* lut, int32_t art, uint8_t) {
    Composite(R, G, B, W, H, UR, UG, UB, SR, SG, SB, lut, std::clamp(art, 0, 255), true);
}

void KeyMatte(uint8_t* dst, const uint8_t* UR, const uint8_t* Key, const uint8_t* lut, int W, int H) {
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) dst[o + x] = lut[RawKey(UR[o + x], Key[o + x])];
        }
    });
}

void Despill(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB, int W, int H,
             int32_t art, bool blue) {
    art = std::clamp(art, 0, 255);
    kwthreads::ForRows(H, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            const size_t o = At(W, y);
            for (int x = 0; x < W; ++x) {
                const size_t i = o + x;
                const int r = UR[i], g = UG[i], b = UB[i];
                R[i] = static_cast<uint8_t>(r);
                G[i] = static_cast<uint8_t>(blue ? g : Despilled(g, r, b, art));
                B[i] = static_cast<uint8_t>(blue ? Despilled(b, r, g, art) : b);
            }
        }
    });
}
}  // namespace kwfilter
