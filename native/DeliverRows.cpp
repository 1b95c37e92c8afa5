// The finishing steps of a fill row: noise per channel, the paper's bump and
// drybrush, opacity and alpha. The AVX2 form does sixteen pixels a step and
// gives the plain form's bytes: red and blue noise in whole numbers, which is
// exact; green's noise and the bump in singles as the plain form does them
// (rounding to nearest even by the processor's default mode); the blends in
// 16-bit lanes, where colour * weight + old * (255 - weight) is at most
// 255 * 255, divided by 255 exactly.
#include "native/DeliverRows.h"

#include <array>
#include <cstring>
#include <utility>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define KW_X86 1
#endif

namespace kwfill {

void FinishRowScalar(const FinishRowArgs& f) {
    using detail::Clamp255;
    using detail::RoundF;
    for (int i = 0, u = f.paperU; i < f.n; ++i, u = u + 1 < f.paperW ? u + 1 : 0) {
        int32_t R = f.r[i], G = f.g[i], B = f.b[i];
        if (f.nr) {
            R = detail::ChannelNoise(R, f.nr[i], f.noiseR);
            G = detail::ChannelNoise(G, f.ng[i], f.noiseG);
            B = detail::ChannelNoise(B, f.nb[i], f.noiseR);
        }
        if (f.bump) {
            const float e = f.bump[u];
            R = Clamp255(RoundF(static_cast<float>(R) + e));
            G = Clamp255(RoundF(static_cast<float>(G) + e));
            B = Clamp255(RoundF(static_cast<float>(B) + e));
        }
        int opacity = f.dryOpacity ? f.dryOpacity[u] : f.opacity[i];
        if (f.height && !f.dryOpacity) {
            const int p = f.height[u];
            const float dry = static_cast<float>(f.negative ? p : 255 - p) * f.fraction * f.strength;
            opacity = RoundF(static_cast<float>(opacity) - dry);
        }
        if (opacity < 0) opacity = 0;
        const unsigned op = static_cast<unsigned>(opacity), inv = 255u - op;
        const unsigned oldR = f.oldR[i], oldG = f.oldG[i], oldB = f.oldB[i];
        unsigned r = (static_cast<unsigned>(R) * op + oldR * inv) / 255;
        unsigned g = (static_cast<unsigned>(G) * op + oldG * inv) / 255;
        unsigned b = (static_cast<unsigned>(B) * op + oldB * inv) / 255;
        const unsigned a = f.alpha ? static_cast<unsigned>(f.alpha[i] | f.alphaOff) : 255u;
        if (a < 255) {
            const unsigned na = 255 - a;
            r = (oldR * na + r * a) / 255;
            g = (oldG * na + g * a) / 255;
            b = (oldB * na + b * a) / 255;
        }
        f.outR[i] = static_cast<uint8_t>(r);
        f.outG[i] = static_cast<uint8_t>(g);
        f.outB[i] = static_cast<uint8_t>(b);
    }
}

#if defined(KW_X86)
namespace {
#define KW_AVX2 __attribute__((target("avx2")))

// The colour, eight pixels as singles, plus its centred draws times the
// scale, rounded and held to 0..255: what ChannelNoise does pixel by pixel.
KW_AVX2 inline __m256i Widen8(const int16_t* p) {
    return _mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}
KW_AVX2 inline __m256 Noise(__m256 c, const int16_t* draws, __m256 scale) {
    const __m256 d = _mm256_cvtepi32_ps(Widen8(draws));
    const __m256 v = _mm256_round_ps(_mm256_add_ps(c, _mm256_mul_ps(d, scale)), _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
    return _mm256_min_ps(_mm256_max_ps(v, _mm256_setzero_ps()), _mm256_set1_ps(255.0f));
}
KW_AVX2 inline __m256i Load8(const int32_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
KW_AVX2 inline __m256i Load16(const int16_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
KW_AVX2 inline __m256i Bytes8(const uint8_t* p) {
    return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
KW_AVX2 inline __m256i Bytes16(const uint8_t* p) {
    return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}
// Two rows of eight 32-bit values as sixteen 16-bit ones, in order (saturating).
KW_AVX2 inline __m256i Words(__m256i lo, __m256i hi) {
    return _mm256_permute4x64_epi64(_mm256_packs_epi32(lo, hi), 0xD8);
}
KW_AVX2 inline __m256i Clamp16(__m256i v) {
    return _mm256_min_epi16(_mm256_max_epi16(v, _mm256_setzero_si256()), _mm256_set1_epi16(255));
}
// c + draw * amount / 2^16 rounded half to even, exactly, sixteen pixels:
// the product has at most 23 bits, its high half is the whole part (floored)
// and its low half the fraction; a fraction of exactly a half goes to the even
// neighbour. The same value as ChannelNoise's singles, held to 0..255.
KW_AVX2 inline __m256i NoiseExact(__m256i c, const int16_t* draws, __m256i amount) {
    const __m256i d = Load16(draws);
    const __m256i whole = _mm256_mulhi_epi16(d, amount), part = _mm256_mullo_epi16(d, amount);
    const __m256i v = _mm256_add_epi16(_mm256_add_epi16(c, whole), _mm256_srli_epi16(part, 15));
    const __m256i tie = _mm256_cmpeq_epi16(part, _mm256_set1_epi16(static_cast<short>(0x8000)));
    const __m256i odd = _mm256_and_si256(_mm256_and_si256(v, _mm256_set1_epi16(1)), tie);
    return Clamp16(_mm256_sub_epi16(v, odd));
}
// Sixteen words through the bump as singles: each plus e, rounded, held to 0..255.
KW_AVX2 inline __m256i BumpSingles(__m256i c, __m256 eLo, __m256 eHi) {
    const __m256 lo = _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(_mm256_castsi256_si128(c)));
    const __m256 hi = _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(_mm256_extracti128_si256(c, 1)));
    return Clamp16(Words(_mm256_cvtps_epi32(_mm256_add_ps(lo, eLo)), _mm256_cvtps_epi32(_mm256_add_ps(hi, eHi))));
}
// x / 255 for 0 <= x <= 65535: the high half of x * 0x8081, over 2^7.
KW_AVX2 inline __m256i Div255(__m256i x) {
    return _mm256_srli_epi16(_mm256_mulhi_epu16(x, _mm256_set1_epi16(static_cast<short>(0x8081))), 7);
}
// (paint * weight + old * (255 - weight)) / 255 in sixteen 16-bit lanes, all terms 0..255.
KW_AVX2 inline __m256i Mix(__m256i paint, __m256i old, __m256i weight) {
    const __m256i rest = _mm256_sub_epi16(_mm256_set1_epi16(255), weight);
    return Div255(_mm256_add_epi16(_mm256_mullo_epi16(paint, weight), _mm256_mullo_epi16(old, rest)));
}
KW_AVX2 inline void Store16(uint8_t* p, __m256i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p),
                     _mm_packus_epi16(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1)));
}

// The opacity of sixteen pixels, after drybrush worked out in singles when
// `dry`, at least 0 (and at most 255, which the caller makes sure of).
KW_AVX2 inline __m256i Weight(const FinishRowArgs& f, int i, int u, bool dry) {
    __m256i op[2] = {Load8(f.opacity + i), Load8(f.opacity + i + 8)};
    if (dry) {
        const __m256 fraction = _mm256_set1_ps(f.fraction), strength = _mm256_set1_ps(f.strength);
        for (int h = 0; h < 2; ++h) {
            __m256 p = _mm256_cvtepi32_ps(Bytes8(f.height + u + 8 * h));
            if (!f.negative) p = _mm256_sub_ps(_mm256_set1_ps(255.0f), p);
            const __m256 dry = _mm256_mul_ps(_mm256_mul_ps(p, fraction), strength);
            op[h] = _mm256_cvtps_epi32(_mm256_sub_ps(_mm256_cvtepi32_ps(op[h]), dry));
        }
    }
    return _mm256_max_epi16(Words(op[0], op[1]), _mm256_setzero_si256());
}

// The steps a row needs, each loop compiled for one set of them.
constexpr unsigned FsNoise = 1, FsBump = 2, FsAlpha = 4, FsDryBytes = 8, FsDrySingles = 16;

// Sixteen pixels a step in 16-bit lanes; green's noise, whose amount is not a
// whole number, and the bump go through singles, green staying a single from
// its noise through its bump.
template <unsigned Steps>
KW_AVX2 inline void FinishBlock(const FinishRowArgs& f, int i, int u) {
    // The red and blue scale is the whole amount over 2^16, exactly.
    const __m256i amount = _mm256_set1_epi16(static_cast<short>(f.noiseR * 65536.0f));
    const __m256 noiseG = _mm256_set1_ps(f.noiseG);
    const int16_t* const colour[3] = {f.r, f.g, f.b};
    const uint8_t* const old[3] = {f.oldR, f.oldG, f.oldB};
    uint8_t* const out[3] = {f.outR, f.outG, f.outB};
    __m256 e[2];
    if constexpr ((Steps & FsBump) != 0)
        for (int h = 0; h < 2; ++h) e[h] = _mm256_loadu_ps(f.bump + u + 8 * h);
    __m256i c[3];
    for (int k = 0; k < 3; ++k) {
        if ((Steps & FsNoise) && k == 1) continue;
        c[k] = Load16(colour[k] + i);
        if constexpr ((Steps & FsNoise) != 0) c[k] = NoiseExact(c[k], (k == 0 ? f.nr : f.nb) + i, amount);
        if constexpr ((Steps & FsBump) != 0) c[k] = BumpSingles(c[k], e[0], e[1]);
    }
    if constexpr ((Steps & FsNoise) != 0) {
        __m256i g[2];
        for (int h = 0; h < 2; ++h) {
            const int at = i + 8 * h;
            const __m256 from = f.gf ? _mm256_loadu_ps(f.gf + at) : _mm256_cvtepi32_ps(Widen8(f.g + at));
            __m256 v = Noise(from, f.ng + at, noiseG);
            if constexpr ((Steps & FsBump) != 0) v = _mm256_add_ps(v, e[h]);
            g[h] = _mm256_cvtps_epi32(v);
        }
        c[1] = Words(g[0], g[1]);
        if constexpr ((Steps & FsBump) != 0) c[1] = Clamp16(c[1]);
    }
    __m256i weight;
    if constexpr ((Steps & FsDryBytes) != 0) weight = Bytes16(f.dryOpacity + u);
    else weight = Weight(f, i, u, (Steps & FsDrySingles) != 0);
    __m256i a = _mm256_set1_epi16(255);
    if constexpr ((Steps & FsAlpha) != 0) a = _mm256_or_si256(Bytes16(f.alpha + i), _mm256_set1_epi16(f.alphaOff));
    __m256i v[3];
    for (int k = 0; k < 3; ++k) {
        if (f.warmAhead) _mm_prefetch(reinterpret_cast<const char*>(old[k] + i + f.warmAhead), _MM_HINT_T1);
        const __m256i before = Bytes16(old[k] + i);
        v[k] = Mix(c[k], before, weight);
        // At alpha 255 the mix gives the colour back exactly.
        if constexpr ((Steps & FsAlpha) != 0) v[k] = Mix(v[k], before, a);
    }
    // Red and green packed together: one pack and one lane order for both rows.
    const __m256i rg = _mm256_permute4x64_epi64(_mm256_packus_epi16(v[0], v[1]), 0xD8);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out[0] + i), _mm256_castsi256_si128(rg));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out[1] + i), _mm256_extracti128_si256(rg, 1));
    Store16(out[2] + i, v[2]);
}

// The last n < 16 pixels from column i through the same block, from copies
// padded to sixteen; the paper's rows are long enough to read as they are.
template <unsigned Steps>
KW_AVX2 void FinishTail(const FinishRowArgs& f, int i, int u) {
    const int n = f.n - i;
    alignas(32) int32_t opacity[16] = {};
    alignas(32) float gf[16] = {};
    alignas(32) int16_t r[16] = {}, g[16] = {}, b[16] = {}, nr[16] = {}, ng[16] = {}, nb[16] = {};
    alignas(16) uint8_t old[3][16] = {}, alpha[16] = {}, out[3][16] = {};
    auto take = [i, n](auto* to, const auto* from) {
        if (from) std::memcpy(to, from + i, static_cast<size_t>(n) * sizeof(*from));
        return from ? to : nullptr;
    };
    FinishRowArgs t = f;
    t.r = take(r, f.r), t.g = take(g, f.g), t.b = take(b, f.b), t.opacity = take(opacity, f.opacity);
    t.gf = take(gf, f.gf), t.nr = take(nr, f.nr), t.ng = take(ng, f.ng), t.nb = take(nb, f.nb);
    t.oldR = take(old[0], f.oldR), t.oldG = take(old[1], f.oldG), t.oldB = take(old[2], f.oldB);
    t.alpha = take(alpha, f.alpha);
    t.outR = out[0], t.outG = out[1], t.outB = out[2];
    t.warmAhead = 0;
    FinishBlock<Steps>(t, 0, u);
    std::memcpy(f.outR + i, out[0], static_cast<size_t>(n));
    std::memcpy(f.outG + i, out[1], static_cast<size_t>(n));
    std::memcpy(f.outB + i, out[2], static_cast<size_t>(n));
}

template <unsigned Steps>
KW_AVX2 void FinishRowsAvx2(const FinishRowArgs& args) {
    // A copy of our own, which the byte stores cannot be taken to alias, so
    // that its pointers and switches stay in registers.
    const FinishRowArgs f = args;
    int i = 0, u = f.paperU;
    for (; i + 16 <= f.n; i += 16, u = u + 16 < f.paperW ? u + 16 : (u + 16) % f.paperW) FinishBlock<Steps>(f, i, u);
    if (i < f.n) FinishTail<Steps>(f, i, u);
}

// The loops by their steps: every combination of noise, bump and alpha with
// drybrush off, as bytes or as singles.
template <unsigned... Steps>
constexpr auto LoopTable(std::integer_sequence<unsigned, Steps...>) {
    return std::array<void (*)(const FinishRowArgs&), sizeof...(Steps)>{
        &FinishRowsAvx2<(Steps & 7u) | ((Steps >> 3) == 1 ? FsDryBytes : 0u) |
                        ((Steps >> 3) == 2 ? FsDrySingles : 0u)>...};
}
constexpr auto Loops = LoopTable(std::make_integer_sequence<unsigned, 24>{});
}  // namespace

void FinishRowAvx2(const FinishRowArgs& f) {
    const unsigned dry = f.dryOpacity ? 1 : (f.height ? 2 : 0);
    const unsigned steps = (f.nr ? FsNoise : 0u) | (f.bump ? FsBump : 0u) | (f.alpha ? FsAlpha : 0u);
    Loops[steps | dry << 3](f);
}

bool HaveAvx2Finish() {
    static const bool have = __builtin_cpu_supports("avx2");
    return have;
}
#else
void FinishRowAvx2(const FinishRowArgs& f) { FinishRowScalar(f); }
bool HaveAvx2Finish() { return false; }
#endif

}  // namespace kwfill
