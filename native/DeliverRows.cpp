// The finishing steps of a fill row: noise per channel, the paper's bump and
// drybrush, opacity and alpha. The AVX2 form does eight pixels a step with
// the same operations in the same precision (doubles for the noise, floats
// for the paper, rounding to nearest even by the processor's default mode),
// so its bytes are the plain form's; the integer blends divide by 255 as
// (x + 1 + (x >> 8)) >> 8, exact for x up to 255 * 255.
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
            R = Clamp255(RoundD(R + (f.ur[i] - 0.5) * f.noiseR));
            G = Clamp255(RoundD(G + (f.ug[i] - 0.5) * f.noiseG));
            B = Clamp255(RoundD(B + (f.ub[i] - 0.5) * f.noiseR));
        }
        if (f.bump) {
            const float e = f.bump[i];
            R = Clamp255(RoundF(static_cast<float>(R) + e));
            G = Clamp255(RoundF(static_cast<float>(G) + e));
            B = Clamp255(RoundF(static_cast<float>(B) + e));
        }
        int opacity = f.opacity[i];
        if (f.dry) opacity = RoundF(static_cast<float>(opacity) - f.dry[i]);
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
// c + (u - 0.5) * amount in doubles, rounded, held to 0..255.
KW_AVX2 inline __m256i Noise(__m256i c, const double* u, __m256d amount) {
    const __m256d half = _mm256_set1_pd(0.5);
    const __m256d lo = _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_castsi256_si128(c)),
                                     _mm256_mul_pd(_mm256_sub_pd(_mm256_loadu_pd(u), half), amount));
    const __m256d hi = _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_extracti128_si256(c, 1)),
                                     _mm256_mul_pd(_mm256_sub_pd(_mm256_loadu_pd(u + 4), half), amount));
    return Clamp(_mm256_set_m128i(_mm256_cvtpd_epi32(hi), _mm256_cvtpd_epi32(lo)));
}
KW_AVX2 inline __m256i Bump(__m256i c, __m256 e) {
    return Clamp(_mm256_cvtps_epi32(_mm256_add_ps(_mm256_cvtepi32_ps(c), e)));
}
// (x + 1 + (x >> 8)) >> 8 is x / 255 for 0 <= x <= 65025.
KW_AVX2 inline __m256i Div255(__m256i x) {
    return _mm256_srli_epi32(_mm256_add_epi32(_mm256_add_epi32(x, _mm256_set1_epi32(1)), _mm256_srli_epi32(x, 8)), 8);
}
KW_AVX2 inline __m256i Mix(__m256i paint, __m256i old, __m256i weight) {
    const __m256i rest = _mm256_sub_epi32(_mm256_set1_epi32(255), weight);
    return Div255(_mm256_add_epi32(_mm256_mullo_epi32(paint, weight), _mm256_mullo_epi32(old, rest)));
}
KW_AVX2 inline __m256i Load8(const int32_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
KW_AVX2 inline __m256i Bytes8(const uint8_t* p) {
    return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
KW_AVX2 inline void Store8(uint8_t* p, __m256i v) {
    const __m128i words = _mm_packs_epi32(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(words, words));
}
}  // namespace

KW_AVX2 void FinishRowAvx2(const FinishRowArgs& f) {
    const __m256d noiseR = _mm256_set1_pd(f.noiseR), noiseG = _mm256_set1_pd(f.noiseG);
    const __m256i alphaOff = _mm256_set1_epi32(f.alphaOff);
    int i = 0;
    for (; i + 8 <= f.n; i += 8) {
        __m256i R = Load8(f.r + i), G = Load8(f.g + i), B = Load8(f.b + i), op = Load8(f.opacity + i);
        if (f.ur) {
            R = Noise(R, f.ur + i, noiseR);
            G = Noise(G, f.ug + i, noiseG);
            B = Noise(B, f.ub + i, noiseR);
        }
        if (f.bump) {
            const __m256 e = _mm256_loadu_ps(f.bump + i);
            R = Bump(R, e);
            G = Bump(G, e);
            B = Bump(B, e);
        }
        if (f.dry) op = _mm256_cvtps_epi32(_mm256_sub_ps(_mm256_cvtepi32_ps(op), _mm256_loadu_ps(f.dry + i)));
        op = _mm256_max_epi32(op, _mm256_setzero_si256());
        const __m256i oldR = Bytes8(f.oldR + i), oldG = Bytes8(f.oldG + i), oldB = Bytes8(f.oldB + i);
        R = Mix(R, oldR, op);
        G = Mix(G, oldG, op);
        B = Mix(B, oldB, op);
        if (f.alpha) {
            // At alpha 255 the mix gives the colour back exactly.
            const __m256i a = _mm256_or_si256(Bytes8(f.alpha + i), alphaOff);
            R = Mix(R, oldR, a);
            G = Mix(G, oldG, a);
            B = Mix(B, oldB, a);
        }
        Store8(f.outR + i, R);
        Store8(f.outG + i, G);
        Store8(f.outB + i, B);
    }
    FinishRowArgs rest = f;
    auto skip = [&](auto*& p) {
        if (p) p += i;
    };
    rest.n = f.n - i;
    skip(rest.r), skip(rest.g), skip(rest.b), skip(rest.opacity), skip(rest.ur), skip(rest.ug), skip(rest.ub);
    skip(rest.bump), skip(rest.dry), skip(rest.oldR), skip(rest.oldG), skip(rest.oldB), skip(rest.alpha);
    skip(rest.outR), skip(rest.outG), skip(rest.outB);
    FinishRowScalar(rest);
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
