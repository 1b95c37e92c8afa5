// Targa rows between interleaved blue-green-red bytes and planes. The SSSE3
// forms take sixteen pixels (48 bytes) a step: each plane's sixteen bytes are
// gathered from the three source blocks by one byte shuffle each, with -1
// (0x80) in the places another block fills; the join is the same in reverse.
#include "native/TargaRows.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define KW_X86 1
#endif

namespace kwtarga {

void SplitBgrRowScalar(const uint8_t* src, int count, uint8_t* r, uint8_t* g, uint8_t* b) {
    for (int x = 0; x < count; ++x, src += 3) {
        b[x] = src[0];
        g[x] = src[1];
        r[x] = src[2];
    }
}

void JoinBgrRowScalar(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b) {
    for (int x = 0; x < count; ++x, dest += 3) {
        dest[0] = b[x];
        dest[1] = g[x];
        dest[2] = r[x];
    }
}

#if defined(KW_X86)
namespace {
// Byte k of block `block` (0..2) of a 48-byte group holds channel (16*block + k) % 3
// of pixel (16*block + k) / 3. The mask that picks channel c of pixels 0..15 from
// that block, -1 where the pixel lies in another block.
__attribute__((target("ssse3"))) __m128i SplitMask(int block, int channel) {
    alignas(16) int8_t m[16];
    for (int p = 0; p < 16; ++p) {
        const int at = 3 * p + channel - 16 * block;
        m[p] = static_cast<int8_t>(at >= 0 && at < 16 ? at : -1);
    }
    return _mm_load_si128(reinterpret_cast<const __m128i*>(m));
}
// The mask that puts channel c of pixels 0..15 into block `block` of the output.
__attribute__((target("ssse3"))) __m128i JoinMask(int block, int channel) {
    alignas(16) int8_t m[16];
    for (int k = 0; k < 16; ++k) {
        const int at = 16 * block + k;
        m[k] = static_cast<int8_t>(at % 3 == channel ? at / 3 : -1);
    }
    return _mm_load_si128(reinterpret_cast<const __m128i*>(m));
}

struct Masks {
    __m128i m[3][3];  // [block][channel], channel 0 blue, 1 green, 2 red
};
__attribute__((target("ssse3"))) Masks MakeSplitMasks() {
    Masks s;
    for (int k = 0; k < 3; ++k)
        for (int c = 0; c < 3; ++c) s.m[k][c] = SplitMask(k, c);
    return s;
}
__attribute__((target("ssse3"))) Masks MakeJoinMasks() {
    Masks s;
    for (int k = 0; k < 3; ++k)
        for (int c = 0; c < 3; ++c) s.m[k][c] = JoinMask(k, c);
    return s;
}
}  // namespace

__attribute__((target("ssse3"))) void SplitBgrRowSsse3(const uint8_t* src, int count, uint8_t* r, uint8_t* g,
                                                        uint8_t* b) {
    static const Masks s = MakeSplitMasks();
    uint8_t* const out[3] = {b, g, r};
    int x = 0;
    for (; x + 16 <= count; x += 16, src += 48) {
        const __m128i v0 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
        const __m128i v1 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + 16));
        const __m128i v2 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + 32));
        for (int c = 0; c < 3; ++c) {
            const __m128i v = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(v0, s.m[0][c]), _mm_shuffle_epi8(v1, s.m[1][c])),
                                           _mm_shuffle_epi8(v2, s.m[2][c]));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out[c] + x), v);
        }
    }
    SplitBgrRowScalar(src, count - x, r + x, g + x, b + x);
}

__attribute__((target("ssse3"))) void JoinBgrRowSsse3(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g,
                                                       const uint8_t* b) {
    static const Masks s = MakeJoinMasks();
    int x = 0;
    for (; x + 16 <= count; x += 16, dest += 48) {
        const __m128i in[3] = {_mm_loadu_si128(reinterpret_cast<const __m128i*>(b + x)),
                               _mm_loadu_si128(reinterpret_cast<const __m128i*>(g + x)),
                               _mm_loadu_si128(reinterpret_cast<const __m128i*>(r + x))};
        for (int k = 0; k < 3; ++k) {
            const __m128i v = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(in[0], s.m[k][0]), _mm_shuffle_epi8(in[1], s.m[k][1])),
                                           _mm_shuffle_epi8(in[2], s.m[k][2]));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(dest + 16 * k), v);
        }
    }
    JoinBgrRowScalar(dest, count - x, r + x, g + x, b + x);
}

// Thirty-two pixels a step: each 128-bit lane runs the SSSE3 step on its own
// sixteen pixels (the lower lane x..x+15, the upper x+16..x+31), which leaves
// the three blocks of the first group in the lower lanes and those of the
// second in the upper ones; three lane swaps put the 96 bytes in file order.
__attribute__((target("avx2"))) void JoinBgrRowAvx2(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g,
                                                     const uint8_t* b) {
    static const Masks s = MakeJoinMasks();
    __m256i m[3][3];
    for (int k = 0; k < 3; ++k)
        for (int c = 0; c < 3; ++c) m[k][c] = _mm256_broadcastsi128_si256(s.m[k][c]);
    int x = 0;
    for (; x + 32 <= count; x += 32, dest += 96) {
        const __m256i in[3] = {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + x)),
                               _mm256_loadu_si256(reinterpret_cast<const __m256i*>(g + x)),
                               _mm256_loadu_si256(reinterpret_cast<const __m256i*>(r + x))};
        __m256i v[3];
        for (int k = 0; k < 3; ++k)
            v[k] = _mm256_or_si256(_mm256_or_si256(_mm256_shuffle_epi8(in[0], m[k][0]), _mm256_shuffle_epi8(in[1], m[k][1])),
                                   _mm256_shuffle_epi8(in[2], m[k][2]));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dest), _mm256_permute2x128_si256(v[0], v[1], 0x20));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dest + 32), _mm256_permute2x128_si256(v[2], v[0], 0x30));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dest + 64), _mm256_permute2x128_si256(v[1], v[2], 0x31));
    }
    JoinBgrRowSsse3(dest, count - x, r + x, g + x, b + x);
}

bool HaveSsse3() {
    static const bool have = __builtin_cpu_supports("ssse3");
    return have;
}
bool HaveAvx2() {
    static const bool have = __builtin_cpu_supports("avx2");
    return have;
}
#else
void SplitBgrRowSsse3(const uint8_t* src, int count, uint8_t* r, uint8_t* g, uint8_t* b) {
    SplitBgrRowScalar(src, count, r, g, b);
}
void JoinBgrRowSsse3(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b) {
    JoinBgrRowScalar(dest, count, r, g, b);
}
void JoinBgrRowAvx2(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b) {
    JoinBgrRowScalar(dest, count, r, g, b);
}
bool HaveSsse3() { return false; }
bool HaveAvx2() { return false; }
#endif

SplitRowFn SplitBgrRow() { return HaveSsse3() ? SplitBgrRowSsse3 : SplitBgrRowScalar; }
JoinRowFn JoinBgrRow() {
    if (HaveAvx2()) return JoinBgrRowAvx2;
    return HaveSsse3() ? JoinBgrRowSsse3 : JoinBgrRowScalar;
}

}  // namespace kwtarga
