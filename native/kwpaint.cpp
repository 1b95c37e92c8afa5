// Display kernels. See kwpaint.h for the plane, window and pixel conventions.
//
// Every routine follows the same shape: clip once into a span of dest rows and
// columns, then walk rows (outer) and columns (inner) with no per-pixel tests.
// Clipping arithmetic is done in 64 bits so extreme origins or rectangles
// cannot overflow; once clipped, every coordinate fits an int again.
#include "native/kwpaint.h"

#include <algorithm>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define KW_X86 1
#endif

namespace kwpaint {
namespace {

// Half-open range [lo, hi); empty when lo >= hi.
struct Span {
    int lo = 0;
    int hi = 0;
    bool empty() const { return lo >= hi; }
};

// Intersection of [rectLo, rectHi), [0, extent) and the dest range
// [org, org + destExtent).
Span ClipAxis(int rectLo, int rectHi, int64_t extent, int org, int destExtent) {
    const int64_t lo = std::max<int64_t>({rectLo, 0, org});
    const int64_t hi = std::min<int64_t>({rectHi, extent, int64_t{org} + destExtent});
    if (lo >= hi) return {};
    return {static_cast<int>(lo), static_cast<int>(hi)};
}

// Window extent of a picture extent at this zoom. A window pixel u < extent
// always samples a source index below the picture extent:
// u <= n*z/100 - 1 gives u*100 < n*z, hence u*100/z < n.
int64_t WindowExtent(int pictureExtent, int zoomPercent) {
    return int64_t{pictureExtent} * zoomPercent / 100;
}

int SourceIndex(int windowIndex, int zoomPercent) {
    return static_cast<int>(int64_t{windowIndex} * 100 / zoomPercent);
}

inline uint32_t Pack32(uint32_t r, uint32_t g, uint32_t b) { return (r << 16) | (g << 8) | b; }

inline uint16_t Pack565(uint32_t r, uint32_t g, uint32_t b) {
    return static_cast<uint16_t>(((r >> 3) << 11) | ((g >> 2) << 5) | (b >> 3));
}

inline uint16_t Pack555(uint32_t r, uint32_t g, uint32_t b) {
    return static_cast<uint16_t>(((r >> 3) << 10) | ((g >> 3) << 5) | (b >> 3));
}

// Above this many dest bytes FastRefresh32 streams past the cache. A refresh of
// up to a whole 2560 x 1440 screen (about 15 MB) keeps ordinary stores so the
// blit that follows finds it cached; anything larger (a full refresh of a big
// picture) would not stay cached anyway, and skipping the read-for-ownership
// of every dest line removes a third of its memory traffic.
constexpr size_t kStreamingThresholdBytes = size_t{24} << 20;

// The first lines of the next row of each plane, asked for before a row is
// packed. A view narrower than the picture reads each plane row as a stream
// of its own, and the processor's prefetching only catches on after a few
// misses of each; by then half of a short row has waited for memory. Sixteen
// lines a plane cover that start (eight did a little worse, and the whole row
// at once, or spread over the row before, no better).
inline void PrefetchRowStart(ptrdiff_t at, int count, const uint8_t* R, const uint8_t* G, const uint8_t* B) {
    constexpr int kLine = 64, kLines = 16;
    const int bytes = std::min(count, kLine * kLines);
    for (int x = 0; x < bytes; x += kLine) {
        __builtin_prefetch(R + at + x);
        __builtin_prefetch(G + at + x);
        __builtin_prefetch(B + at + x);
    }
}

// ---- 1:1 routes

template <typename PixelT, typename PackFn>
void Refresh1to1(PixelT* dest, int left, int top, int right, int bottom, const uint8_t* R, const uint8_t* G,
                 const uint8_t* B, int destStride, int destHeight, int W, int H, int orgX, int orgY, PackFn pack) {
    if (!dest || W <= 0 || H <= 0) return;
    const Span xs = ClipAxis(left, right, W, orgX, destStride);
    const Span ys = ClipAxis(top, bottom, H, orgY, destHeight);
    if (xs.empty() || ys.empty()) return;

    const ptrdiff_t planeStride = ptrdiff_t{W} + 1;
    const int count = xs.hi - xs.lo;
    for (int y = ys.lo; y < ys.hi; ++y) {
        const ptrdiff_t src = y * planeStride + xs.lo;
        PixelT* __restrict d = dest + ptrdiff_t{y - orgY} * destStride + (xs.lo - orgX);
        const uint8_t* __restrict r = R + src;
        const uint8_t* __restrict g = G + src;
        const uint8_t* __restrict b = B + src;
        for (int i = 0; i < count; ++i) d[i] = pack(r[i], g[i], b[i]);
    }
}

template <typename PixelT, typename PackFn>
void RefreshMix1to1(PixelT* dest, int left, int top, int right, int bottom, const uint8_t* R, const uint8_t* G,
                    const uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                    const uint8_t* table, int destStride, int destHeight, int W, int H, int orgX, int orgY,
                    PackFn pack) {
    if (!dest || W <= 0 || H <= 0) return;
    const Span xs = ClipAxis(left, right, W, orgX, destStride);
    const Span ys = ClipAxis(top, bottom, H, orgY, destHeight);
    if (xs.empty() || ys.empty()) return;

    const ptrdiff_t planeStride = ptrdiff_t{W} + 1;
    const int count = xs.hi - xs.lo;
    for (int y = ys.lo; y < ys.hi; ++y) {
        const ptrdiff_t src = y * planeStride + xs.lo;
        PixelT* __restrict d = dest + ptrdiff_t{y - orgY} * destStride + (xs.lo - orgX);
        const uint8_t* r = R + src;
        const uint8_t* g = G + src;
        const uint8_t* b = B + src;
        const uint8_t* sr = SR + src;
        const uint8_t* sg = SG + src;
        const uint8_t* sb = SB + src;
        for (int i = 0; i < count; ++i) {
            const uint32_t mr = table[r[i] | (unsigned{sr[i]} << 8)];
            const uint32_t mg = table[g[i] | (unsigned{sg[i]} << 8)];
            const uint32_t mb = table[b[i] | (unsigned{sb[i]} << 8)];
            d[i] = pack(mr, mg, mb);
        }
    }
}

// ---- Zoomed routes

// How a zoomed route stores one pixel. Elem is the dest element type and
// kElems the number of elements a pixel takes.
struct Store32 {
    using Elem = uint32_t;
    static constexpr int kElems = 1;
    static void Put(Elem* p, uint32_t r, uint32_t g, uint32_t b) { *p = Pack32(r, g, b); }
};
struct Store24 {
    using Elem = uint8_t;
    static constexpr int kElems = 3;
    static void Put(Elem* p, uint32_t r, uint32_t g, uint32_t b) {
        p[0] = static_cast<uint8_t>(b);
        p[1] = static_cast<uint8_t>(g);
        p[2] = static_cast<uint8_t>(r);
    }
};
struct Store16 {
    using Elem = uint16_t;
    static constexpr int kElems = 1;
    static void Put(Elem* p, uint32_t r, uint32_t g, uint32_t b) { *p = Pack565(r, g, b); }
};
struct Store15 {
    using Elem = uint16_t;
    static constexpr int kElems = 1;
    static void Put(Elem* p, uint32_t r, uint32_t g, uint32_t b) { *p = Pack555(r, g, b); }
};

// Source columns are looked up from a table filled once per call; a dest
// wider than one chunk is done as several column strips, each strip walked
// rows outer, columns inner. A viewport up to this wide is a single strip.
constexpr int kColumnChunk = 2048;

// Dest rows that show the same source row (zoom above 100) are copies of
// the row above within the same strip, so only the first is converted.
template <typename Store>
void RefreshZoomed(typename Store::Elem* dest, int left, int top, int right, int bottom, const uint8_t* R,
                   const uint8_t* G, const uint8_t* B, int destStride, int destHeight, int W, int H,
                   int zoomPercent, int orgX, int orgY) {
    using Elem = typename Store::Elem;
    constexpr int kElems = Store::kElems;
    if (!dest || W <= 0 || H <= 0 || zoomPercent <= 0) return;
    const int destWidth = destStride / kElems;
    const Span us = ClipAxis(left, right, WindowExtent(W, zoomPercent), orgX, destWidth);
    const Span vs = ClipAxis(top, bottom, WindowExtent(H, zoomPercent), orgY, destHeight);
    if (us.empty() || vs.empty()) return;

    const ptrdiff_t planeStride = ptrdiff_t{W} + 1;
    int columns[kColumnChunk];
    for (int64_t strip = us.lo; strip < us.hi; strip += kColumnChunk) {
        const int u0 = static_cast<int>(strip);
        const int count = std::min(kColumnChunk, us.hi - u0);
        for (int i = 0; i < count; ++i) columns[i] = SourceIndex(u0 + i, zoomPercent);

        const Elem* previous = nullptr;
        int previousSy = -1;
        for (int v = vs.lo; v < vs.hi; ++v) {
            const int sy = SourceIndex(v, zoomPercent);
            Elem* __restrict d = dest + ptrdiff_t{v - orgY} * destStride + ptrdiff_t{u0 - orgX} * kElems;
            if (sy == previousSy) {
                std::memcpy(d, previous, size_t(count) * kElems * sizeof(Elem));
            } else {
                const ptrdiff_t rowBase = sy * planeStride;
                const uint8_t* r = R + rowBase;
                const uint8_t* g = G + rowBase;
                const uint8_t* b = B + rowBase;
                for (int i = 0; i < count; ++i) {
                    const int sx = columns[i];
                    Store::Put(d + i * kElems, r[sx], g[sx], b[sx]);
                }
                previousSy = sy;
            }
            previous = d;
        }
    }
}

}  // namespace

// ---- Row converters

namespace detail {

void PackRow32Scalar(uint32_t* __restrict dest, const uint8_t* __restrict r, const uint8_t* __restrict g,
                     const uint8_t* __restrict b, int count) {
    for (int i = 0; i < count; ++i) dest[i] = Pack32(r[i], g[i], b[i]);
}

void PackRow32Vector(uint32_t* dest, const uint8_t* r, const uint8_t* g, const uint8_t* b, int count,
                     bool streaming) {
    int i = 0;
#if defined(__SSE2__)
    if (streaming) {
        // Streaming stores need 16-byte aligned dest addresses.
        while (i < count && (reinterpret_cast<uintptr_t>(dest + i) & 15) != 0) {
            dest[i] = Pack32(r[i], g[i], b[i]);
            ++i;
        }
    }
    const __m128i zero = _mm_setzero_si128();
    for (; i + 16 <= count; i += 16) {
        const __m128i vr = _mm_loadu_si128(reinterpret_cast<const __m128i*>(r + i));
        const __m128i vg = _mm_loadu_si128(reinterpret_cast<const __m128i*>(g + i));
        const __m128i vb = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i));
        // Little-endian 0x00RRGGBB is the byte sequence B, G, R, 0.
        const __m128i bgLo = _mm_unpacklo_epi8(vb, vg);
        const __m128i bgHi = _mm_unpackhi_epi8(vb, vg);
        const __m128i rzLo = _mm_unpacklo_epi8(vr, zero);
        const __m128i rzHi = _mm_unpackhi_epi8(vr, zero);
        const __m128i p0 = _mm_unpacklo_epi16(bgLo, rzLo);
        const __m128i p1 = _mm_unpackhi_epi16(bgLo, rzLo);
        const __m128i p2 = _mm_unpacklo_epi16(bgHi, rzHi);
        const __m128i p3 = _mm_unpackhi_epi16(bgHi, rzHi);
        __m128i* out = reinterpret_cast<__m128i*>(dest + i);
        if (streaming) {
            _mm_stream_si128(out + 0, p0);
            _mm_stream_si128(out + 1, p1);
            _mm_stream_si128(out + 2, p2);
            _mm_stream_si128(out + 3, p3);
        } else {
            _mm_storeu_si128(out + 0, p0);
            _mm_storeu_si128(out + 1, p1);
            _mm_storeu_si128(out + 2, p2);
            _mm_storeu_si128(out + 3, p3);
        }
    }
    if (streaming) _mm_sfence();
#else
    (void)streaming;
#endif
    for (; i < count; ++i) dest[i] = Pack32(r[i], g[i], b[i]);
}

#if defined(KW_X86)
// Thirty-two pixels a step. The byte unpacks work within each 128-bit half, so
// the sources are first reordered (quads 0, 2, 1, 3) and the results put back
// in order with whole-half permutes.
__attribute__((target("avx2"))) void PackRow32Avx2(uint32_t* dest, const uint8_t* r, const uint8_t* g,
                                                    const uint8_t* b, int count, bool streaming) {
    // Whole 32-byte lines from here on: a store that straddles two cache
    // lines costs two, and a screen image need not start on a line.
    int i = 0;
    while (i < count && (reinterpret_cast<uintptr_t>(dest + i) & 31) != 0) {
        dest[i] = Pack32(r[i], g[i], b[i]);
        ++i;
    }
    const __m256i zero = _mm256_setzero_si256();
    for (; i + 32 <= count; i += 32) {
        const __m256i vr = _mm256_permute4x64_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(r + i)), 0xD8);
        const __m256i vg = _mm256_permute4x64_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(g + i)), 0xD8);
        const __m256i vb = _mm256_permute4x64_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + i)), 0xD8);
        const __m256i bgLo = _mm256_unpacklo_epi8(vb, vg), bgHi = _mm256_unpackhi_epi8(vb, vg);
        const __m256i rzLo = _mm256_unpacklo_epi8(vr, zero), rzHi = _mm256_unpackhi_epi8(vr, zero);
        const __m256i a0 = _mm256_unpacklo_epi16(bgLo, rzLo), a1 = _mm256_unpackhi_epi16(bgLo, rzLo);
        const __m256i b0 = _mm256_unpacklo_epi16(bgHi, rzHi), b1 = _mm256_unpackhi_epi16(bgHi, rzHi);
        const __m256i out[4] = {_mm256_permute2x128_si256(a0, a1, 0x20), _mm256_permute2x128_si256(a0, a1, 0x31),
                                _mm256_permute2x128_si256(b0, b1, 0x20), _mm256_permute2x128_si256(b0, b1, 0x31)};
        __m256i* d = reinterpret_cast<__m256i*>(dest + i);
        for (int k = 0; k < 4; ++k) {
            if (streaming) _mm256_stream_si256(d + k, out[k]);
            else _mm256_store_si256(d + k, out[k]);
        }
    }
    if (streaming) _mm_sfence();
    for (; i < count; ++i) dest[i] = Pack32(r[i], g[i], b[i]);
}

bool HaveAvx2() {
    static const bool have = __builtin_cpu_supports("avx2");
    return have;
}
#else
void PackRow32Avx2(uint32_t* dest, const uint8_t* r, const uint8_t* g, const uint8_t* b, int count, bool streaming) {
    PackRow32Vector(dest, r, g, b, count, streaming);
}
bool HaveAvx2() { return false; }
#endif

PackRowFn ChosenPackRow32() { return HaveAvx2() ? PackRow32Avx2 : PackRow32Vector; }

}  // namespace detail

// ---- Public entry points

void FastRefresh32(uint32_t* dest, int left, int top, int right, int bottom, const uint8_t* R, const uint8_t* G,
                   const uint8_t* B, int destStride, int destHeight, int W, int H, int orgX, int orgY) {
    if (!dest || W <= 0 || H <= 0) return;
    const Span xs = ClipAxis(left, right, W, orgX, destStride);
    const Span ys = ClipAxis(top, bottom, H, orgY, destHeight);
    if (xs.empty() || ys.empty()) return;

    const int count = xs.hi - xs.lo;
    const size_t destBytes = size_t(count) * size_t(ys.hi - ys.lo) * sizeof(uint32_t);
    const bool streaming = destBytes >= kStreamingThresholdBytes;
    const ptrdiff_t planeStride = ptrdiff_t{W} + 1;
    static const detail::PackRowFn packRow = detail::ChosenPackRow32();
    for (int y = ys.lo; y < ys.hi; ++y) {
        const ptrdiff_t src = y * planeStride + xs.lo;
        if (y + 1 < ys.hi) PrefetchRowStart(src + planeStride, count, R, G, B);
        uint32_t* d = dest + ptrdiff_t{y - orgY} * destStride + (xs.lo - orgX);
        packRow(d, R + src, G + src, B + src, count, streaming);
    }
}

void FastRefresh16(uint16_t* dest, int left, int top, int right, int bottom, const uint8_t* R, const uint8_t* G,
                   const uint8_t* B, int destStride, int destHeight, int W, int H, int orgX, int orgY) {
    Refresh1to1(dest, left, top, right, bottom, R, G, B, destStride, destHeight, W, H, orgX, orgY,
                [](uint32_t r, uint32_t g, uint32_t b) { return Pack565(r, g, b); });
}

void FastRefresh_Mix32(uint32_t* dest, int left, int top, int right, int bottom, const uint8_t* R,
                       const uint8_t* G, const uint8_t* B, const uint8_t* SR, const uint8_t* SG,
                       const uint8_t* SB, const uint8_t* table, int destStride, int destHeight, int W, int H,
                       int orgX, int orgY) {
    RefreshMix1to1(dest, left, top, right, bottom, R, G, B, SR, SG, SB, table, destStride, destHeight, W, H,
                   orgX, orgY, [](uint32_t r, uint32_t g, uint32_t b) { return Pack32(r, g, b); });
}

void FastRefresh_Mix16(uint16_t* dest, int left, int top, int right, int bottom, const uint8_t* R,
                       const uint8_t* G, const uint8_t* B, const uint8_t* SR, const uint8_t* SG,
                       const uint8_t* SB, const uint8_t* table, int destStride, int destHeight, int W, int H,
                       int orgX, int orgY) {
    RefreshMix1to1(dest, left, top, right, bottom, R, G, B, SR, SG, SB, table, destStride, destHeight, W, H,
                   orgX, orgY, [](uint32_t r, uint32_t g, uint32_t b) { return Pack565(r, g, b); });
}

void RefreshFromBuffs(uint32_t* dest, int left, int top, int right, int bottom, const uint8_t* R,
                      const uint8_t* G, const uint8_t* B, int destStride, int destHeight, int W, int H,
                      int zoomPercent, int orgX, int orgY) {
    RefreshZoomed<Store32>(dest, left, top, right, bottom, R, G, B, destStride, destHeight, W, H, zoomPercent,
                           orgX, orgY);
}

void RefreshFromBuffs24(uint8_t* dest, int left, int top, int right, int bottom, const uint8_t* R,
                        const uint8_t* G, const uint8_t* B, int destStride, int destHeight, int W, int H,
                        int zoomPercent, int orgX, int orgY) {
    RefreshZoomed<Store24>(dest, left, top, right, bottom, R, G, B, destStride, destHeight, W, H, zoomPercent,
                           orgX, orgY);
}

void RefreshFromBuffs16(uint16_t* dest, int left, int top, int right, int bottom, const uint8_t* R,
                        const uint8_t* G, const uint8_t* B, int destStride, int destHeight, int W, int H,
                        int zoomPercent, int orgX, int orgY) {
    RefreshZoomed<Store16>(dest, left, top, right, bottom, R, G, B, destStride, destHeight, W, H, zoomPercent,
                           orgX, orgY);
}

void RefreshFromBuffs15(uint16_t* dest, int left, int top, int right, int bottom, const uint8_t* R,
                        const uint8_t* G, const uint8_t* B, int destStride, int destHeight, int W, int H,
                        int zoomPercent, int orgX, int orgY) {
    RefreshZoomed<Store15>(dest, left, top, right, bottom, R, G, B, destStride, destHeight, W, H, zoomPercent,
                           orgX, orgY);
}

void DispMarquee(uint32_t* dest, int destStride, int destHeight, const uint8_t* marquee, int W, int H,
                 int zoomPercent, int phase, int orgX, int orgY) {
    if (!dest || !marquee || W <= 0 || H <= 0 || zoomPercent <= 0) return;
    // The dest itself is the only rectangle: everything of the window it shows.
    constexpr int kWholeWindow = std::numeric_limits<int>::max();
    const Span us = ClipAxis(0, kWholeWindow, WindowExtent(W, zoomPercent), orgX, destStride);
    const Span vs = ClipAxis(0, kWholeWindow, WindowExtent(H, zoomPercent), orgY, destHeight);
    if (us.empty() || vs.empty()) return;

    const uint32_t grey = uint32_t(phase & 0xFF) * 0x010101u;
    const ptrdiff_t planeStride = ptrdiff_t{W} + 1;
    int columns[kColumnChunk];
    for (int64_t strip = us.lo; strip < us.hi; strip += kColumnChunk) {
        const int u0 = static_cast<int>(strip);
        const int count = std::min(kColumnChunk, us.hi - u0);
        for (int i = 0; i < count; ++i) columns[i] = SourceIndex(u0 + i, zoomPercent);
        for (int v = vs.lo; v < vs.hi; ++v) {
            const uint8_t* m = marquee + SourceIndex(v, zoomPercent) * planeStride;
            uint32_t* d = dest + ptrdiff_t{v - orgY} * destStride + (u0 - orgX);
            for (int i = 0; i < count; ++i) {
                if (m[columns[i]] != 0) d[i] = grey;
            }
        }
    }
}

// The samples of a thumbnail lie a row of the picture apart at least and hit a
// fresh cache line each, long since pushed out by the refresh of the view: the
// walk is bound by memory latency, not by arithmetic. So the columns' offsets
// are stepped once, without a division, and each sample asks for the one
// below it in the next row as it reads its own, so that the misses of two rows
// overlap. (Asking for a whole row at once, before reading, overfills the
// queue of misses and was a quarter slower.)
bool NearestThumbnail(uint32_t* thumb, int tw, int th, const uint8_t* R, const uint8_t* G, const uint8_t* B,
                      int W, int H, ptrdiff_t planeStride) {
    if (!thumb || !R || !G || !B || tw <= 0 || th <= 0 || W <= 0 || H <= 0) return false;
    constexpr int kChunk = 256;
    int32_t xs[kChunk];
    uint32_t changed = 0;
    auto rowStart = [&](int v) { return static_cast<ptrdiff_t>(int64_t{v} * H / th) * planeStride; };
    for (int u0 = 0; u0 < tw; u0 += kChunk) {
        const int n = std::min(kChunk, tw - u0);
        // x = u * W / tw, stepped: the quotient and remainder of W / tw are
        // added at each step and the remainder carried.
        int64_t x = int64_t{u0} * W / tw, rem = int64_t{u0} * W % tw;
        const int64_t qStep = W / tw, rStep = W % tw;
        for (int i = 0; i < n; ++i) {
            xs[i] = static_cast<int32_t>(x);
            x += qStep;
            rem += rStep;
            if (rem >= tw) {
                ++x;
                rem -= tw;
            }
        }
        ptrdiff_t row = rowStart(0);
        for (int v = 0; v < th; ++v) {
            // The last row asks for its own lines again, which costs nothing.
            const ptrdiff_t next = v + 1 < th ? rowStart(v + 1) : row;
            const uint8_t *r = R + row, *g = G + row, *b = B + row;
            uint32_t* out = thumb + ptrdiff_t{v} * tw + u0;
            for (int i = 0; i < n; ++i) {
                __builtin_prefetch(R + next + xs[i]);
                __builtin_prefetch(G + next + xs[i]);
                __builtin_prefetch(B + next + xs[i]);
                const uint32_t c = uint32_t{r[xs[i]]} | uint32_t{g[xs[i]]} << 8 | uint32_t{b[xs[i]]} << 16;
                changed |= out[i] ^ c;
                out[i] = c;
            }
            row = next;
        }
    }
    return changed != 0;
}

// Above this size a copy streams its stores past the cache: a whole plane (an
// undo snapshot) would only push the picture out of it, and skipping the read
// for ownership of every destination line saves a third of the traffic.
constexpr size_t kStreamingCopyBytes = size_t{1} << 20;

void Kel_CopyMem(const void* source, void* destination, size_t byteCount) {
    if (byteCount >= kStreamingCopyBytes) StreamCopy(source, destination, byteCount);
    else if (byteCount > 0) std::memcpy(destination, source, byteCount);
}

void StreamCopy(const void* source, void* destination, size_t byteCount) {
#if defined(__SSE2__)
    const uint8_t* s = static_cast<const uint8_t*>(source);
    uint8_t* d = static_cast<uint8_t*>(destination);
    const size_t head = std::min((16 - (reinterpret_cast<uintptr_t>(d) & 15)) & 15, byteCount);
    if (head > 0) std::memcpy(d, s, head);
    size_t i = head;
    for (; i + 64 <= byteCount; i += 64) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + 16));
        const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + 32));
        const __m128i e = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + 48));
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + i), a);
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + i + 16), b);
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + i + 32), c);
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + i + 48), e);
    }
    _mm_sfence();
    if (i < byteCount) std::memcpy(d + i, s + i, byteCount - i);
#else
    if (byteCount > 0) std::memcpy(destination, source, byteCount);
#endif
}

}  // namespace kwpaint
