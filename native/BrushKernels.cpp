// Natural brush kernels. See BrushKernels.h for the conventions.
#include "native/BrushKernels.h"

#include "native/Rounding.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kwbrush {
namespace {

using kwround::RoundF;

inline int Clamp255(int v) { return v < 0 ? 0 : (v > 255 ? 255 : v); }

// m / 255 for every mask value, so the per-pixel loop does not divide.
struct Weights {
    float w[256];
    Weights() {
        for (int m = 0; m < 256; ++m) w[m] = static_cast<float>(m) / 255.0f;
    }
};
const Weights kWeights;

}  // namespace

// ---- Mask building

void PlotMask(const uint8_t* picture, float o, float s, uint8_t* display) {
    std::memset(display, 255, MaskCells);
    // Column k and row k of the picture land at the same position. The
    // positions run one way, so those inside the display form one run: clip to it.
    int land[MaskSide];
    for (int k = 0; k < MaskSide; ++k) land[k] = RoundF(o + static_cast<float>(k) * s);
    auto inside = [](int p) { return p >= 0 && p < MaskSide; };
    int lo = 0, hi = MaskSide - 1;
    while (lo <= hi && !inside(land[lo])) ++lo;
    while (hi >= lo && !inside(land[hi])) --hi;
    // In increasing order, so that a later picture pixel overwrites an earlier one.
    for (int u = lo; u <= hi; ++u) {
        uint8_t* column = display + land[u];
        for (int v = lo; v <= hi; ++v) column[land[v] * MaskSide] = picture[u + v * MaskSide];
    }
}

void StretchPicture(const uint8_t* picture, int srcSide, int at, int side, uint8_t* work) {
    std::memset(work, 255, static_cast<size_t>(WorkSide) * WorkSide);
    if (side <= 0 || srcSide <= 0) return;
    // Rows and columns alike: only steps first..last - 1 land on the work grid.
    const int first = static_cast<int>(std::max<int64_t>(0, -int64_t{at}));
    const int last = static_cast<int>(std::min<int64_t>(side, int64_t{WorkSide} - at));
    for (int j = first; j < last; ++j) {
        const int y = at + j;
        int v0 = j * srcSide / side, v1 = (j + 1) * srcSide / side;
        if (v1 <= v0) v1 = v0 + 1;
        for (int i = first; i < last; ++i) {
            const int x = at + i;
            int u0 = i * srcSide / side, u1 = (i + 1) * srcSide / side;
            if (u1 <= u0) u1 = u0 + 1;
            uint8_t darkest = 255;
            for (int v = v0; v < v1; ++v)
                for (int u = u0; u < u1; ++u) darkest = std::min(darkest, picture[u + v * MaskSide]);
            work[x + y * WorkSide] = darkest;
        }
    }
}

void AverageTaps(const uint8_t* work, int taps, uint8_t* display) {
    std::memset(display, 255, MaskCells);
    auto at = [work](int x, int y) { return static_cast<int>(work[x + y * WorkSide]); };
    for (int a = 0; a <= 36; ++a)
        for (int b = 0; b <= 36; ++b) {
            const int x = 3 * a, y = 3 * b;
            int sum;
            if (taps == 5) {
                sum = at(x, y) + at(x, y + 1) + at(x + 1, y) + at(x + 1, y + 1) + at(x + 1, y + 2);
            } else {
                sum = 0;
                for (int dy = 0; dy < 3; ++dy)
                    for (int dx = 0; dx < 3; ++dx) sum += at(x + dx, y + dy);
            }
            display[a + b * MaskSide] = static_cast<uint8_t>(RoundF(static_cast<float>(sum) / static_cast<float>(taps)));
        }
}

void BuildMask(const uint8_t* picture, int size, AntiAlias aa, uint8_t* mask, uint8_t* work) {
    const float o = static_cast<float>(68 - size) / 4.0f, s = static_cast<float>(size) / 68.0f;
    if (aa == AntiAlias::None) {
        PlotMask(picture, o, s, mask);
        return;
    }
    StretchPicture(picture, 36, RoundF(3 * o), RoundF(108 * s), work);
    AverageTaps(work, aa == AntiAlias::FiveTap ? 5 : 9, mask);
}

void ScaleRotate(const uint8_t* mask, int32_t angle, float scale, int smooth, uint8_t* xform, uint8_t* fine) {
    if (scale < 0.0001f) scale = 0.0001f;
    const float rad = static_cast<float>(angle) * 0.017453292f;
    const float cs = std::cos(rad) / scale, sn = std::sin(rad) / scale;
    float ru = 18 - (cs * 18 - sn * 18), rv = 18 - (cs * 18 + sn * 18);
    auto sample = [mask](float u, float v) -> uint8_t {
        if (u >= 0 && u <= 37 && v >= 0 && v <= 37) return mask[RoundF(u) + RoundF(v) * MaskSide];
        return 255;
    };
    // The walk: each row starts a step across from the last, each cell a step along.
    auto walk = [&](int side, float along, float across, uint8_t* grid) {
        for (int row = 0; row < side; ++row) {
            ru -= across;
            rv += along;
            float u = ru, v = rv;
            for (int col = 0; col < side; ++col) {
                u += along;
                v += across;
                grid[col + row * side] = sample(u, v);
            }
        }
    };
    if (smooth == 0) {
        walk(MaskSide, cs, sn, xform);
        return;
    }
    // Half steps over a grid twice as fine, then the mean of each 2 x 2 block.
    walk(FineSide, cs / 2, sn / 2, fine);
    for (int b = 0; b <= 36; ++b)
        for (int a = 0; a <= 36; ++a) {
            const uint8_t* f = fine + 2 * a + 2 * b * FineSide;
            const int sum = f[0] + f[1] + f[FineSide] + f[FineSide + 1];
            xform[a + b * MaskSide] = static_cast<uint8_t>(RoundF(static_cast<float>(sum) / 4.0f));
        }
}

// ---- The fast dab

namespace {
// The steps lo..hi (inclusive) of one axis of a dab that land on both the
// picture and the mask. Step j covers mask index maskStart + j and picture
// index first + j, or last - j for a scan against the axis. Worked in 64 bits,
// so that no box can overflow; the steps themselves fit the mask.
struct Steps {
    int lo, hi;
    bool empty() const { return lo > hi; }
};
Steps ClipSteps(int first, int last, int maskStart, int extent, bool reverse) {
    if (maskStart < 0) return {0, -1};
    int64_t lo = 0, hi = std::min<int64_t>(int64_t{last} - first, MaskSide - 1 - maskStart);
    if (!reverse) {
        lo = std::max<int64_t>(lo, -int64_t{first});
        hi = std::min<int64_t>(hi, int64_t{extent} - first);
    } else {
        lo = std::max<int64_t>(lo, int64_t{last} - extent);
        hi = std::min<int64_t>(hi, last);
    }
    if (lo > hi) return {0, -1};
    return {static_cast<int>(lo), static_cast<int>(hi)};
}

// One row of the dab, clipped: n pixels from plane offset `at`, mask from m.
struct RowSpan {
    size_t at;
    const uint8_t* m;
    int n;
};

template <typename RowFn>
void ForEachClippedRow(const DabTarget& t, const uint8_t* mask, const DabBox& box, RowFn row) {
    const Steps cols = ClipSteps(box.col0, box.col1, box.maskStart, t.W, false);
    const Steps rows = ClipSteps(box.row0, box.row1, box.maskStart, t.H, false);
    if (cols.empty() || rows.empty()) return;
    const int c0 = box.col0 + cols.lo, n = cols.hi - cols.lo + 1;
    const uint8_t* m = mask + (box.maskStart + cols.lo) + (box.maskStart + rows.lo) * MaskSide;
    for (int y = box.row0 + rows.lo, y1 = box.row0 + rows.hi; y <= y1; ++y, m += MaskSide)
        row(RowSpan{static_cast<size_t>(y) * t.stride + static_cast<size_t>(c0), m, n});
}

inline void FastPixel(uint8_t* r, uint8_t* g, uint8_t* b, uint8_t m, float t, float fr, float fg, float fb) {
    const float k = 1.0f - (1.0f - (1.0f - kWeights.w[m]) * t);
    const float ik = 1.0f - k;
    *r = static_cast<uint8_t>(Clamp255(RoundF(static_cast<float>(*r) * ik + fr * k)));
    *g = static_cast<uint8_t>(Clamp255(RoundF(static_cast<float>(*g) * ik + fg * k)));
    *b = static_cast<uint8_t>(Clamp255(RoundF(static_cast<float>(*b) * ik + fb * k)));
}

float FastShare(int opacity) { return static_cast<float>(std::max(opacity, 0)) / 255.0f; }
}  // namespace

void DabFastScalar(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
                   int opacity) {
    const float share = FastShare(opacity);
    const float fr = static_cast<float>(colR), fg = static_cast<float>(colG), fb = static_cast<float>(colB);
    ForEachClippedRow(t, mask, box, [&](const RowSpan& s) {
        for (int i = 0; i < s.n; ++i)
            if (s.m[i] < 255) FastPixel(t.r + s.at + i, t.g + s.at + i, t.b + s.at + i, s.m[i], share, fr, fg, fb);
    });
}

#if defined(__SSE2__)
namespace {
// Sixteen pixels of one channel: old bytes in, blended bytes out. A mask value
// of 255 gives k = 0 and so the old byte exactly: no test is needed.
inline __m128i BlendChannel16(__m128i old, const __m128 k[4], const __m128 ik[4], __m128 colour) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i lo = _mm_unpacklo_epi8(old, zero), hi = _mm_unpackhi_epi8(old, zero);
    const __m128i q[4] = {_mm_unpacklo_epi16(lo, zero), _mm_unpackhi_epi16(lo, zero), _mm_unpacklo_epi16(hi, zero),
                          _mm_unpackhi_epi16(hi, zero)};
    __m128i out[4];
    for (int j = 0; j < 4; ++j) {
        const __m128 v = _mm_add_ps(_mm_mul_ps(_mm_cvtepi32_ps(q[j]), ik[j]), _mm_mul_ps(colour, k[j]));
        out[j] = _mm_cvtps_epi32(v);  // nearest even, as RoundF
    }
    return _mm_packus_epi16(_mm_packs_epi32(out[0], out[1]), _mm_packs_epi32(out[2], out[3]));
}
}  // namespace

void DabFastVector(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
                   int opacity) {
    const float share = FastShare(opacity);
    const float fr = static_cast<float>(colR), fg = static_cast<float>(colG), fb = static_cast<float>(colB);
    const __m128 one = _mm_set1_ps(1.0f), v255 = _mm_set1_ps(255.0f), vt = _mm_set1_ps(share);
    const __m128 cr = _mm_set1_ps(fr), cg = _mm_set1_ps(fg), cb = _mm_set1_ps(fb);
    const __m128i zero = _mm_setzero_si128();
    ForEachClippedRow(t, mask, box, [&](const RowSpan& s) {
        int i = 0;
        for (; i + 16 <= s.n; i += 16) {
            const __m128i mk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.m + i));
            const __m128i lo = _mm_unpacklo_epi8(mk, zero), hi = _mm_unpackhi_epi8(mk, zero);
            const __m128i q[4] = {_mm_unpacklo_epi16(lo, zero), _mm_unpackhi_epi16(lo, zero),
                                  _mm_unpacklo_epi16(hi, zero), _mm_unpackhi_epi16(hi, zero)};
            __m128 k[4], ik[4];
            for (int j = 0; j < 4; ++j) {
                const __m128 w = _mm_div_ps(_mm_cvtepi32_ps(q[j]), v255);
                k[j] = _mm_sub_ps(one, _mm_sub_ps(one, _mm_mul_ps(_mm_sub_ps(one, w), vt)));
                ik[j] = _mm_sub_ps(one, k[j]);
            }
            uint8_t* pr = t.r + s.at + i;
            uint8_t* pg = t.g + s.at + i;
            uint8_t* pb = t.b + s.at + i;
            _mm_storeu_si128(reinterpret_cast<__m128i*>(pr),
                             BlendChannel16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pr)), k, ik, cr));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(pg),
                             BlendChannel16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pg)), k, ik, cg));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(pb),
                             BlendChannel16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pb)), k, ik, cb));
        }
        for (; i < s.n; ++i)
            if (s.m[i] < 255) FastPixel(t.r + s.at + i, t.g + s.at + i, t.b + s.at + i, s.m[i], share, fr, fg, fb);
    });
}
#else
void DabFastVector(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
                   int opacity) {
    DabFastScalar(t, mask, box, colR, colG, colB, opacity);
}
#endif

void DabFast(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
             int opacity) {
    DabFastVector(t, mask, box, colR, colG, colB, opacity);
}

// ---- The general dab

namespace {
inline int PositiveMod(int v, int n) {
    const int r = v % n;
    return r < 0 ? r + n : r;
}

// The value a mode puts at one channel before opacity: old is the pixel, c the
// colour fraction, w = m / 255, a = 255 - m, src the mode's source byte.
inline int Blend(int old, float w, float src) {
    return RoundF(static_cast<float>(old) * w + (1.0f - w) * src);
}

using kwmode::PaintMode;
// Every table mode runs the same loop: the table is the operation.
constexpr PaintMode TableMode = PaintMode::Additive;

// The general case one pixel at a time, starting from the given opacity;
// returns the opacity left after the dab.
template <PaintMode Mode>
int GeneralRows(const DabTarget& t, const uint8_t* mask, const DabBox& box, const DabSettings& s, int opacity) {
    const Steps rows = ClipSteps(box.row0, box.row1, box.maskStart, t.H, s.reverseRows);
    const Steps cols = ClipSteps(box.col0, box.col1, box.maskStart, t.W, s.reverseCols);
    if (rows.empty() || cols.empty()) return opacity;
    const bool paper = s.paperW > 0 && s.paperH > 0 && s.paperF && s.paperB;
    const bool bump = s.bump && paper, dry = s.dry && paper;
    const int n = s.negative ? 255 : 0;
    const int W = t.W, H = t.H;
    for (int j = rows.lo; j <= rows.hi; ++j) {
        const int y = s.reverseRows ? box.row1 - j : box.row0 + j;
        const uint8_t* mrow = mask + (box.maskStart + j) * MaskSide + box.maskStart;
        const size_t rowAt = static_cast<size_t>(y) * t.stride;
        const size_t paperRow = paper ? static_cast<size_t>(y % s.paperH) * s.paperStride : 0;
        for (int i = cols.lo; i <= cols.hi; ++i) {
            const int x = s.reverseCols ? box.col1 - i : box.col0 + i;
            // A mask value of 255 ends the work of a pixel at once.
            const int m = mrow[i];
            if (m > 254) continue;
            const size_t at = rowAt + static_cast<size_t>(x);
            const int oldR = t.r[at], oldG = t.g[at], oldB = t.b[at];
            const int a = 255 - m;
            const float w = kWeights.w[m];
            // Bumpiness: the paper's slope lifts or lowers the colour.
            float cr = s.cR, cg = s.cG, cb = s.cB;
            size_t pi = 0;
            if (bump || dry) pi = paperRow + static_cast<size_t>(x % s.paperW);
            if (bump) {
                const float q = s.paperF[pi];
                cr = std::clamp(cr + q, 0.0f, 1.0f);
                cg = std::clamp(cg + q, 0.0f, 1.0f);
                cb = std::clamp(cb + q, 0.0f, 1.0f);
            }
            // Drybrush: the paper's height takes opacity away.
            if (dry) {
                const float lost = static_cast<float>(std::abs(n - s.paperB[pi])) * s.strength;
                const int o = RoundF(static_cast<float>(s.baseOpacity) - lost);
                opacity = o < 0 ? 0 : o;
            }
            // The painting mode.
            int nr = oldR, ng = oldG, nb = oldB;
            if constexpr (Mode == PaintMode::Default) {
                nr = RoundF(static_cast<float>(oldR) * w + static_cast<float>(a) * cr);
                ng = RoundF(static_cast<float>(oldG) * w + static_cast<float>(a) * cg);
                nb = RoundF(static_cast<float>(oldB) * w + static_cast<float>(a) * cb);
            } else if constexpr (Mode == PaintMode::Multiply) {
                nr = std::max(0, RoundF(static_cast<float>(oldR) * w + (static_cast<float>(oldR) * cr) * (1.0f - w)));
                ng = std::max(0, RoundF(static_cast<float>(oldG) * w + (static_cast<float>(oldG) * cg) * (1.0f - w)));
                nb = std::max(0, RoundF(static_cast<float>(oldB) * w + (static_cast<float>(oldB) * cb) * (1.0f - w)));
            } else if constexpr (Mode == PaintMode::Rubthrough) {
                if (s.sr) {
                    nr = Blend(oldR, w, s.sr[at]);
                    ng = Blend(oldG, w, s.sg[at]);
                    nb = Blend(oldB, w, s.sb[at]);
                }
            } else if constexpr (Mode == PaintMode::Panto || Mode == PaintMode::Smear) {
                int sx, sy;
                if constexpr (Mode == PaintMode::Panto) {
                    sx = x - s.pantoX;
                    sy = y - s.pantoY;
                } else {
                    sx = RoundF(static_cast<float>(x) - s.smearDX);
                    sy = RoundF(static_cast<float>(y) - s.smearDY);
                }
                if (sx >= 0 && sy >= 0 && sx <= W - 1 && sy <= H - 1) {
                    const size_t src = static_cast<size_t>(sy) * t.stride + static_cast<size_t>(sx);
                    nr = Blend(oldR, w, t.r[src]);
                    ng = Blend(oldG, w, t.g[src]);
                    nb = Blend(oldB, w, t.b[src]);
                }
            } else if constexpr (Mode == PaintMode::Pattern || Mode == PaintMode::OffsetPattern) {
                if (s.brushW > 0 && s.brushH > 0) {
                    const int u = Mode == PaintMode::Pattern ? x % s.brushW : PositiveMod(x + s.patX, s.brushW);
                    const int v = Mode == PaintMode::Pattern ? y % s.brushH : PositiveMod(y + s.patY, s.brushH);
                    const size_t src = static_cast<size_t>(v) * s.brushStride + static_cast<size_t>(u);
                    nr = Blend(oldR, w, s.br[src]);
                    ng = Blend(oldG, w, s.bg[src]);
                    nb = Blend(oldB, w, s.bb[src]);
                }
            } else {  // the table modes
                const float fa = static_cast<float>(a);
                nr = s.table[oldR + 256 * Clamp255(RoundF(fa * cr))];
                ng = s.table[oldG + 256 * Clamp255(RoundF(fa * cg))];
                nb = s.table[oldB + 256 * Clamp255(RoundF(fa * cb))];
            }
            nr = Clamp255(nr);
            ng = Clamp255(ng);
            nb = Clamp255(nb);
            // Opacity.
            const int o = opacity, io = 255 - o;
            nr = (nr * o + oldR * io) / 255;
            ng = (ng * o + oldG * io) / 255;
            nb = (nb * o + oldB * io) / 255;
            // The alpha plane, unless AlphaOff lets everything through.
            const int e = t.a[at] | s.alphaOff;
            if (e < 255) {
                nr = (oldR * (255 - e) + nr * e) / 255;
                ng = (oldG * (255 - e) + ng * e) / 255;
                nb = (oldB * (255 - e) + nb * e) / 255;
            }
            t.r[at] = static_cast<uint8_t>(nr);
            t.g[at] = static_cast<uint8_t>(ng);
            t.b[at] = static_cast<uint8_t>(nb);
        }
    }
    return opacity;
}

#if defined(__SSE2__)
// The general case four pixels at a time for the modes that need no neighbour
// (default and multiply) in a forward scan: the same single-precision steps as
// GeneralRows, so the bytes are the same. The integer divisions by 255 of the
// opacity and alpha steps are floors of exact float quotients: every product
// is an integer below 2^17, so (x + 0.5) / 255 lies at least 0.5 / 255 away from
// any integer, far beyond the error of multiplying by a rounded reciprocal.
//
// Opaque: full opacity without drybrush, where the opacity step gives the mode's
// value back exactly. Masked: the alpha plane takes part (AlphaOff is not 255);
// otherwise the alpha step gives the value back exactly. Both are left out
// where they change nothing.
template <PaintMode Mode, bool Opaque, bool Masked>
int GeneralRowsVector(const DabTarget& t, const uint8_t* mask, const DabBox& box, const DabSettings& s) {
    int opacity = s.opacity;
    const Steps rows = ClipSteps(box.row0, box.row1, box.maskStart, t.H, false);
    const Steps cols = ClipSteps(box.col0, box.col1, box.maskStart, t.W, false);
    if (rows.empty() || cols.empty()) return opacity;
    const bool paper = s.paperW > 0 && s.paperH > 0 && s.paperF && s.paperB;
    const bool bump = s.bump && paper, dry = s.dry && paper;
    const int c0 = box.col0 + cols.lo, n = cols.hi - cols.lo + 1;
    const int mx = box.maskStart + cols.lo;
    const int neg = s.negative ? 255 : 0;
    const __m128 zero = _mm_setzero_ps(), one = _mm_set1_ps(1.0f), v255 = _mm_set1_ps(255.0f);
    const __m128i izero = _mm_setzero_si128(), i255 = _mm_set1_epi32(255);
    const __m128 colour[3] = {_mm_set1_ps(s.cR), _mm_set1_ps(s.cG), _mm_set1_ps(s.cB)};
    const __m128 strength = _mm_set1_ps(s.strength), base = _mm_set1_ps(static_cast<float>(s.baseOpacity));
    const __m128i alphaOff = _mm_set1_epi32(s.alphaOff);
    uint8_t* planes[3] = {t.r, t.g, t.b};
    auto load4 = [&](const uint8_t* p) {
        int32_t v;
        std::memcpy(&v, p, 4);
        return _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(v), izero), izero);
    };
    const __m128 half = _mm_set1_ps(0.5f), rcp255 = _mm_set1_ps(1.0f / 255.0f);
    auto floorDiv255 = [&](__m128 x) { return _mm_cvttps_epi32(_mm_mul_ps(_mm_add_ps(x, half), rcp255)); };
    for (int j = rows.lo; j <= rows.hi; ++j) {
        const int y = box.row0 + j;
        const uint8_t* m = mask + mx + (box.maskStart + j) * MaskSide;
        const size_t at0 = static_cast<size_t>(y) * t.stride + static_cast<size_t>(c0);
        const size_t paperRow = paper ? static_cast<size_t>(y % s.paperH) * s.paperStride : 0;
        int u = paper ? c0 % s.paperW : 0;
        int i = 0;
        for (; i + 4 <= n; i += 4) {
            int32_t m4;
            std::memcpy(&m4, m + i, 4);
            if (m4 == -1) {  // four cells of 255: nothing to do
                if (paper) u = (u + 4) % s.paperW;
                continue;
            }
            const __m128i mi = load4(m + i);
            const __m128i skip = _mm_cmpeq_epi32(mi, i255);
            const __m128 mf = _mm_cvtepi32_ps(mi);
            const __m128 w = _mm_div_ps(mf, v255), a = _mm_sub_ps(v255, mf), iw = _mm_sub_ps(one, w);
            // The paper under the four pixels: one load unless the tile wraps among them.
            __m128 qv = zero, hv = zero;
            if (bump || dry) {
                const size_t pi = paperRow + static_cast<size_t>(u);
                if (u + 4 <= s.paperW) {
                    if (bump) qv = _mm_loadu_ps(s.paperF + pi);
                    if (dry) hv = _mm_cvtepi32_ps(load4(s.paperB + pi));
                    u += 4;
                    if (u == s.paperW) u = 0;
                } else {
                    float q[4], h[4];
                    for (int k = 0; k < 4; ++k) {
                        const size_t pk = paperRow + static_cast<size_t>(u);
                        q[k] = s.paperF[pk];
                        h[k] = s.paperB[pk];
                        if (++u == s.paperW) u = 0;
                    }
                    qv = _mm_setr_ps(q[0], q[1], q[2], q[3]);
                    hv = _mm_setr_ps(h[0], h[1], h[2], h[3]);
                }
                if (dry) {
                    // |n - height|: the height itself, or 255 less it under Negative.
                    if (neg) hv = _mm_sub_ps(v255, hv);
                }
            }
            __m128i o = _mm_set1_epi32(opacity);
            if (dry) {
                o = _mm_cvtps_epi32(_mm_sub_ps(base, _mm_mul_ps(hv, strength)));
                o = _mm_and_si128(o, _mm_cmpgt_epi32(o, izero));  // below 0 counts as 0
                // Drybrush leaves the opacity of the last pixel it painted.
                alignas(16) int32_t ov[4], sk[4];
                _mm_store_si128(reinterpret_cast<__m128i*>(ov), o);
                _mm_store_si128(reinterpret_cast<__m128i*>(sk), skip);
                for (int k = 3; k >= 0; --k)
                    if (!sk[k]) {
                        opacity = ov[k];
                        break;
                    }
            }
            const __m128 of = _mm_cvtepi32_ps(o), iof = _mm_sub_ps(v255, of);
            __m128 ef = v255, ief = zero;
            if constexpr (Masked) {
                ef = _mm_cvtepi32_ps(_mm_or_si128(load4(t.a + at0 + i), alphaOff));
                ief = _mm_sub_ps(v255, ef);
            }
            for (int ch = 0; ch < 3; ++ch) {
                uint8_t* p = planes[ch] + at0 + i;
                const __m128i oldi = load4(p);
                const __m128 old = _mm_cvtepi32_ps(oldi);
                __m128 c = colour[ch];
                if (bump) c = _mm_min_ps(_mm_max_ps(_mm_add_ps(c, qv), zero), one);
                __m128i v;
                if constexpr (Mode == PaintMode::Default) {
                    v = _mm_cvtps_epi32(_mm_add_ps(_mm_mul_ps(old, w), _mm_mul_ps(a, c)));
                } else {
                    v = _mm_cvtps_epi32(_mm_add_ps(_mm_mul_ps(old, w), _mm_mul_ps(_mm_mul_ps(old, c), iw)));
                }
                // Both modes stay within 0..255: the colour fraction is at most 1 and
                // w + (1 - w) = 1. Opacity, then alpha.
                if constexpr (!Opaque)
                    v = floorDiv255(_mm_add_ps(_mm_mul_ps(_mm_cvtepi32_ps(v), of), _mm_mul_ps(old, iof)));
                if constexpr (Masked)
                    v = floorDiv255(_mm_add_ps(_mm_mul_ps(old, ief), _mm_mul_ps(_mm_cvtepi32_ps(v), ef)));
                v = _mm_or_si128(_mm_and_si128(skip, oldi), _mm_andnot_si128(skip, v));
                const int32_t packed = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packs_epi32(v, izero), izero));
                std::memcpy(p, &packed, 4);
            }
        }
        if (i < n) {
            // The last few pixels through the scalar steps.
            // Their mask cells become the first row of a mask of their own.
            DabBox tail{c0 + i, c0 + n - 1, y, y, 0};
            uint8_t row[MaskSide];
            std::memcpy(row, m + i, static_cast<size_t>(n - i));
            opacity = GeneralRows<Mode>(t, row, tail, s, opacity);
        }
    }
    return opacity;
}

// A scan against the stroke changes which pixel's drybrush opacity is left
// last, so it keeps to the scalar steps.
template <PaintMode Mode>
int VectorRows(const DabTarget& t, const uint8_t* mask, const DabBox& box, const DabSettings& s) {
    if (s.reverseRows || s.reverseCols) return GeneralRows<Mode>(t, mask, box, s, s.opacity);
    const bool paperDry = s.dry && s.paperW > 0 && s.paperH > 0 && s.paperF && s.paperB;
    const bool opaque = !paperDry && s.opacity == 255, masked = s.alphaOff != 255;
    if (opaque && masked) return GeneralRowsVector<Mode, true, true>(t, mask, box, s);
    if (opaque) return GeneralRowsVector<Mode, true, false>(t, mask, box, s);
    if (masked) return GeneralRowsVector<Mode, false, true>(t, mask, box, s);
    return GeneralRowsVector<Mode, false, false>(t, mask, box, s);
}
#else
template <PaintMode Mode>
int VectorRows(const DabTarget& t, const uint8_t* mask, const DabBox& box, const DabSettings& s) {
    return GeneralRows<Mode>(t, mask, box, s, s.opacity);
}
#endif
}  // namespace

int DabGeneral(const DabTarget& t, const uint8_t* mask, const DabBox& box, const DabSettings& s) {
    switch (s.mode) {
        case PaintMode::Default: return VectorRows<PaintMode::Default>(t, mask, box, s);
        case PaintMode::Multiply: return VectorRows<PaintMode::Multiply>(t, mask, box, s);
        case PaintMode::Rubthrough: return GeneralRows<PaintMode::Rubthrough>(t, mask, box, s, s.opacity);
        case PaintMode::Panto: return GeneralRows<PaintMode::Panto>(t, mask, box, s, s.opacity);
        case PaintMode::Smear: return GeneralRows<PaintMode::Smear>(t, mask, box, s, s.opacity);
        case PaintMode::Pattern: return GeneralRows<PaintMode::Pattern>(t, mask, box, s, s.opacity);
        case PaintMode::OffsetPattern: return GeneralRows<PaintMode::OffsetPattern>(t, mask, box, s, s.opacity);
        case PaintMode::Additive:
        case PaintMode::Subtract:
        case PaintMode::Divide:
        case PaintMode::Screen:
        case PaintMode::AroundGrey:
            return s.table ? GeneralRows<TableMode>(t, mask, box, s, s.opacity) : s.opacity;
        default: return s.opacity;
    }
}

}  // namespace kwbrush
