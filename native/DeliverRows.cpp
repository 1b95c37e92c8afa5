// The finishing steps of a fill row: noise per channel, the paper's bump and
// drybrush, opacity and alpha. The AVX2 form does sixteen pixels a step with
// the same operations in the same precision (doubles for the noise, floats
// for the paper, rounding to nearest even by the processor's default mode),
// so its bytes are the plain form's; the blends run in 16-bit lanes, where
// colour * weight + old * (255 - weight) is at most 255 * 255, and divide by
// 255 as (x + 1 + (x >> 8)) >> 8, exact for x up to 255 * 255.
#include "native/DeliverRows.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define KW_X86 1
#endif

namespace kwfill {

void FinishRowScalar(const FinishRowArgs& f) {
    using detail::Clamp255;
    using detail::RoundD;
    using detail::RoundF;
    for (int i = 0; i < f.n; ++i) {
        int32_t R = f.r[i], G = f.g[i], B = f.b[i];
        if (f.ur) {
            auto less = [&](double u) { return f.centred ? u * 0x1.0p-53 : u - 0.5; };  // u - 0.5, exactly
            R = Clamp255(RoundD(R + less(f.ur[i]) * f.noiseR));
            G = Clamp255(RoundD(G + less(f.ug[i]) * f.noiseG));
            B = Clamp255(RoundD(B + less(f.ub[i]) * f.noiseR));
        }
        if (f.slope) {
            const float e = f.slope[i] * 255.0f;
            R = Clamp255(RoundF(static_cast<float>(R) + e));
            G = Clamp255(RoundF(static_cast<float>(G) + e));
            B = Clamp255(RoundF(static_cast<float>(B) + e));
        }
        int opacity = f.opacity[i];
        if (f.height) {
            const int p = f.height[i];
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

KW_AVX2 inline __m256i Clamp(__m256i v) {
    return _mm256_min_epi32(_mm256_max_epi32(v, _mm256_setzero_si256()), _mm256_set1_epi32(255));
}
// c + (u - 0.5) * amount in doubles, rounded, eight pixels. Centred draws d
// are (u - 0.5) * 2^53: d * (amount / 2^53) is the same product, rounded
// once the same way, since scaling by a power of two is exact.
template <bool Centred>
KW_AVX2 inline __m256d LessHalf(__m256d v) {
    if constexpr (Centred) return v;
    return _mm256_sub_pd(v, _mm256_set1_pd(0.5));
}
template <bool Centred>
KW_AVX2 inline __m256i Noise(__m256i c, const double* u, __m256d amount) {
    const __m256d lo = _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_castsi256_si128(c)),
                                     _mm256_mul_pd(LessHalf<Centred>(_mm256_loadu_pd(u)), amount));
    const __m256d hi = _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_extracti128_si256(c, 1)),
                                     _mm256_mul_pd(LessHalf<Centred>(_mm256_loadu_pd(u + 4)), amount));
    return _mm256_set_m128i(_mm256_cvtpd_epi32(hi), _mm256_cvtpd_epi32(lo));
}
// The same from the colour as doubles.
template <bool Centred>
KW_AVX2 inline __m256i NoiseD(const double* c, const double* u, __m256d amount) {
    const __m256d lo = _mm256_add_pd(_mm256_loadu_pd(c), _mm256_mul_pd(LessHalf<Centred>(_mm256_loadu_pd(u)), amount));
    const __m256d hi =
        _mm256_add_pd(_mm256_loadu_pd(c + 4), _mm256_mul_pd(LessHalf<Centred>(_mm256_loadu_pd(u + 4)), amount));
    return _mm256_set_m128i(_mm256_cvtpd_epi32(hi), _mm256_cvtpd_epi32(lo));
}
// The colour plus the bump, rounded; held to 0..255 later, in 16-bit lanes.
KW_AVX2 inline __m256i Bump(__m256i c, __m256 e) { return _mm256_cvtps_epi32(_mm256_add_ps(_mm256_cvtepi32_ps(c), e)); }
KW_AVX2 inline __m256i Load8(const int32_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
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
// (x + 1 + (x >> 8)) >> 8 is x / 255 for 0 <= x <= 65025.
KW_AVX2 inline __m256i Div255(__m256i x) {
    return _mm256_srli_epi16(_mm256_add_epi16(_mm256_add_epi16(x, _mm256_set1_epi16(1)), _mm256_srli_epi16(x, 8)), 8);
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

template <bool Centred>
KW_AVX2 void FinishRowsAvx2(const FinishRowArgs& args) {
    // A copy of our own, which the byte stores below cannot be taken to alias,
    // so that its pointers and switches stay in registers.
    const FinishRowArgs f = args;
    const double scale = Centred ? 0x1.0p-53 : 1.0;
    const __m256d noiseR = _mm256_set1_pd(f.noiseR * scale), noiseG = _mm256_set1_pd(f.noiseG * scale);
    const __m256 fraction = _mm256_set1_ps(f.fraction), strength = _mm256_set1_ps(f.strength);
    const __m256 full = _mm256_set1_ps(255.0f);
    const __m256i zero = _mm256_setzero_si256(), top = _mm256_set1_epi16(255);
    const __m256i alphaOff = _mm256_set1_epi16(f.alphaOff);
    const int32_t* const colour[3] = {f.r, f.g, f.b};
    const double* const colourD[3] = {f.rd, f.gd, f.bd};
    const bool doubles = f.ur && f.rd;
    const double* const draws[3] = {f.ur, f.ug, f.ub};
    const __m256d amount[3] = {noiseR, noiseG, noiseR};
    const uint8_t* const old[3] = {f.oldR, f.oldG, f.oldB};
    uint8_t* const out[3] = {f.outR, f.outG, f.outB};
    int i = 0;
    for (; i + 16 <= f.n; i += 16) {
        // The colour, eight pixels to a half, through noise and bump in 32-bit lanes.
        __m256i c[3][2];
        for (int k = 0; k < 3; ++k)
            for (int h = 0; h < 2; ++h) {
                const int at = i + 8 * h;
                if (doubles) c[k][h] = NoiseD<Centred>(colourD[k] + at, draws[k] + at, amount[k]);
                else if (f.ur) c[k][h] = Noise<Centred>(Load8(colour[k] + at), draws[k] + at, amount[k]);
                else c[k][h] = Load8(colour[k] + at);
            }
        if (f.slope)
            for (int h = 0; h < 2; ++h) {
                const __m256 e = _mm256_mul_ps(_mm256_loadu_ps(f.slope + i + 8 * h), full);
                for (int k = 0; k < 3; ++k) c[k][h] = Bump(Clamp(c[k][h]), e);
            }
        __m256i op[2] = {Load8(f.opacity + i), Load8(f.opacity + i + 8)};
        if (f.height)
            for (int h = 0; h < 2; ++h) {
                __m256 p = _mm256_cvtepi32_ps(Bytes8(f.height + i + 8 * h));
                if (!f.negative) p = _mm256_sub_ps(full, p);
                const __m256 dry = _mm256_mul_ps(_mm256_mul_ps(p, fraction), strength);
                op[h] = _mm256_cvtps_epi32(_mm256_sub_ps(_mm256_cvtepi32_ps(op[h]), dry));
            }
        // Sixteen pixels in 16-bit lanes from here: the opacity is at most 255 here.
        const __m256i weight = _mm256_max_epi16(Words(op[0], op[1]), zero);
        const __m256i a = f.alpha ? _mm256_or_si256(Bytes16(f.alpha + i), alphaOff) : top;
        for (int k = 0; k < 3; ++k) {
            const __m256i paint = _mm256_min_epi16(_mm256_max_epi16(Words(c[k][0], c[k][1]), zero), top);
            const __m256i before = Bytes16(old[k] + i);
            __m256i v = Mix(paint, before, weight);
            // At alpha 255 the mix gives the colour back exactly.
            if (f.alpha) v = Mix(v, before, a);
            Store16(out[k] + i, v);
        }
    }
    FinishRowArgs rest = f;
    auto skip = [&](auto*& p) {
        if (p) p += i;
    };
    rest.n = f.n - i;
    skip(rest.r), skip(rest.g), skip(rest.b), skip(rest.opacity), skip(rest.ur), skip(rest.ug), skip(rest.ub);
    skip(rest.rd), skip(rest.gd), skip(rest.bd);
    skip(rest.slope), skip(rest.height), skip(rest.oldR), skip(rest.oldG), skip(rest.oldB), skip(rest.alpha);
    skip(rest.outR), skip(rest.outG), skip(rest.outB);
    FinishRowScalar(rest);
}
}  // namespace

KW_AVX2 void FinishRowAvx2(const FinishRowArgs& f) {
    if (f.centred) FinishRowsAvx2<true>(f);
    else FinishRowsAvx2<false>(f);
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
