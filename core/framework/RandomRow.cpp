// Many draws of the shared generator at once, in the order single draws give
// them. The generator's step is linear over bits (xor, shift, rotate), so the
// state a fixed number of steps ahead is a 256 x 256 bit matrix applied to the
// state: a row of draws is cut into four quarters whose starting states come
// from that matrix, and the quarters are drawn side by side, four lanes of
// AVX2 at a time. The values and the state left behind are those of drawing
// one by one.
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/framework/vb.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define KW_X86 1
#endif

namespace vb {
namespace {

using State = std::array<uint64_t, 4>;

void Step(State& s) { StepRandomState(s.data()); }

// The states `steps` steps on from each one-bit state are the columns of the
// matrix; they are kept as tables by nibble: entry [j][v] is the xor of the
// columns of the bits of v in the state's nibble j, so that a jump is 64
// lookups instead of 256 masked columns.
struct Jump {
    size_t steps = 0;
    std::array<std::array<State, 16>, 64> nibble{};
};

// The last two jumps made are kept, so that rows of two lengths drawn in turn
// (a shape's spans, rows of one and of three draws a pixel) do not remake them.
const Jump& JumpOf(size_t steps) {
    static Jump kept[2];
    static size_t older = 0;
    for (const Jump& j : kept)
        if (j.steps == steps) return j;
    Jump& jump = kept[older];
    older ^= 1;
    std::array<State, 256> column{};
    for (int j = 0; j < 256; ++j) {
        State s{};
        s[static_cast<size_t>(j / 64)] = uint64_t{1} << (j % 64);
        for (size_t k = 0; k < steps; ++k) Step(s);
        column[static_cast<size_t>(j)] = s;
    }
    for (size_t j = 0; j < 64; ++j)
        for (size_t v = 1; v < 16; ++v) {
            // v with its lowest bit taken away is already in the table.
            const size_t low = v & (~v + 1), bit = low == 1 ? 0 : (low == 2 ? 1 : (low == 4 ? 2 : 3));
            const State& rest = jump.nibble[j][v & ~low];
            const State& c = column[4 * j + bit];
            for (size_t w = 0; w < 4; ++w) jump.nibble[j][v][w] = rest[w] ^ c[w];
        }
    jump.steps = steps;
    return jump;
}

State Ahead(const Jump& jump, const State& s) {
    State out{};
    for (size_t j = 0; j < 64; ++j) {
        const State& c = jump.nibble[j][(s[j / 16] >> (4 * (j % 16))) & 15];
        for (size_t w = 0; w < 4; ++w) out[w] ^= c[w];
    }
    return out;
}

double Draw(State& s) {
    const uint64_t result = s[0] + s[3];
    Step(s);
    return static_cast<double>(result >> 11) * 0x1.0p-53;
}

#if defined(KW_X86)
#define KW_AVX2 __attribute__((target("avx2")))
// One step of the four lanes: their next 64-bit results.
KW_AVX2 inline __m256i LaneResult(__m256i (&s)[4]) {
    const __m256i sum = _mm256_add_epi64(s[0], s[3]);
    const __m256i t = _mm256_slli_epi64(s[1], 17);
    s[2] = _mm256_xor_si256(s[2], s[0]);
    s[3] = _mm256_xor_si256(s[3], s[1]);
    s[1] = _mm256_xor_si256(s[1], s[2]);
    s[0] = _mm256_xor_si256(s[0], s[3]);
    s[2] = _mm256_xor_si256(s[2], t);
    s[3] = _mm256_or_si256(_mm256_slli_epi64(s[3], 45), _mm256_srli_epi64(s[3], 19));
    return sum;
}
// The same as doubles: the draw is the sum's top 53 bits m over 2^53. m under
// the exponent of 2^52 (whose lowest bit is m's top bit already) reads 2^52 +
// m's low 52 bits: less 2^52 where m's top bit, the sum's sign, is clear, it
// is m, exactly.
KW_AVX2 inline __m256d LaneStep(__m256i (&s)[4]) {
    const __m256i sum = LaneResult(s);
    const __m256i exponent = _mm256_set1_epi64x(0x4330000000000000);
    const __m256d m = _mm256_castsi256_pd(_mm256_or_si256(_mm256_srli_epi64(sum, 11), exponent));
    const __m256d less = _mm256_blendv_pd(_mm256_set1_pd(0x1.0p52), _mm256_setzero_pd(), _mm256_castsi256_pd(sum));
    return _mm256_mul_pd(_mm256_sub_pd(m, less), _mm256_set1_pd(0x1.0p-53));
}

KW_AVX2 inline void LoadLanes(const State (&lane)[4], __m256i (&s)[4]) {
    for (int w = 0; w < 4; ++w)
        s[w] = _mm256_set_epi64x(static_cast<long long>(lane[3][w]), static_cast<long long>(lane[2][w]),
                                 static_cast<long long>(lane[1][w]), static_cast<long long>(lane[0][w]));
}
KW_AVX2 inline void StoreLanes(const __m256i (&s)[4], State (&lane)[4]) {
    alignas(32) uint64_t back[4][4];
    for (int w = 0; w < 4; ++w) _mm256_store_si256(reinterpret_cast<__m256i*>(back[w]), s[w]);
    for (int l = 0; l < 4; ++l)
        for (int w = 0; w < 4; ++w) lane[l][static_cast<size_t>(w)] = back[w][l];
}
// Four steps of four lanes turned so that each lane's four draws are one vector.
KW_AVX2 inline void Turn(__m256d a, __m256d b, __m256d c, __m256d d, __m256d (&lane)[4]) {
    const __m256d ab0 = _mm256_unpacklo_pd(a, b), ab1 = _mm256_unpackhi_pd(a, b);
    const __m256d cd0 = _mm256_unpacklo_pd(c, d), cd1 = _mm256_unpackhi_pd(c, d);
    lane[0] = _mm256_permute2f128_pd(ab0, cd0, 0x20);
    lane[1] = _mm256_permute2f128_pd(ab1, cd1, 0x20);
    lane[2] = _mm256_permute2f128_pd(ab0, cd0, 0x31);
    lane[3] = _mm256_permute2f128_pd(ab1, cd1, 0x31);
}

// count draws of each of the four lanes into out + lane * stride.
KW_AVX2 void FourLanes(State (&lane)[4], double* out, size_t stride, size_t count) {
    __m256i s[4];
    LoadLanes(lane, s);
    double* const to[4] = {out, out + stride, out + 2 * stride, out + 3 * stride};
    size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const __m256d a = LaneStep(s), b = LaneStep(s), c = LaneStep(s), d = LaneStep(s);
        __m256d v[4];
        Turn(a, b, c, d, v);
        for (int l = 0; l < 4; ++l) _mm256_storeu_pd(to[l] + i, v[l]);
    }
    alignas(32) double d[4];
    for (; i < count; ++i) {
        _mm256_store_pd(d, LaneStep(s));
        for (int l = 0; l < 4; ++l) to[l][i] = d[l];
    }
    StoreLanes(s, lane);
}

// Four steps of the four lanes as each lane's four draws of each channel:
// words interleaved step by step, then pairs of words, leave each 128-bit half
// holding one lane's four words of a channel in a qword; red[h] holds lanes 0
// and 1 in its low half and lanes 2 and 3 in its high half. The words are
// centred (their top bit flipped) on the way.
struct LaneWords {
    __m256i red, green, blue;
};
KW_AVX2 inline LaneWords WordsOfSteps(__m256i a, __m256i b, __m256i c, __m256i d) {
    const __m256i ab0 = _mm256_unpacklo_epi16(a, b), ab1 = _mm256_unpackhi_epi16(a, b);
    const __m256i cd0 = _mm256_unpacklo_epi16(c, d), cd1 = _mm256_unpackhi_epi16(c, d);
    // Words 0 and 1 (blue), 2 and 3 (green, red) of lanes 0 and 2, then 1 and 3.
    const __m256i low0 = _mm256_unpacklo_epi32(ab0, cd0), high0 = _mm256_unpackhi_epi32(ab0, cd0);
    const __m256i low1 = _mm256_unpacklo_epi32(ab1, cd1), high1 = _mm256_unpackhi_epi32(ab1, cd1);
    const __m256i centre = _mm256_set1_epi16(static_cast<short>(0x8000));
    return {_mm256_xor_si256(_mm256_unpackhi_epi64(high0, high1), centre),
            _mm256_xor_si256(_mm256_unpacklo_epi64(high0, high1), centre),
            _mm256_xor_si256(_mm256_unpackhi_epi64(low0, low1), centre)};
}
// Eight steps of one channel (first, then second four) to each lane's row.
KW_AVX2 inline void StoreLaneWords(__m256i first, __m256i second, int16_t* const (&to)[4], size_t i) {
    const __m256i even = _mm256_unpacklo_epi64(first, second), odd = _mm256_unpackhi_epi64(first, second);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to[0] + i), _mm256_castsi256_si128(even));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to[1] + i), _mm256_castsi256_si128(odd));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to[2] + i), _mm256_extracti128_si256(even, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to[3] + i), _mm256_extracti128_si256(odd, 1));
}

// count pixels of each of the four lanes, a result each cut into its three
// noise words, into ch[c] + lane * stride.
KW_AVX2 void FourLanesNoise(State (&lane)[4], int16_t* const (&ch)[3], size_t stride, size_t count) {
    __m256i s[4];
    LoadLanes(lane, s);
    int16_t* const to[3][4] = {{ch[0], ch[0] + stride, ch[0] + 2 * stride, ch[0] + 3 * stride},
                               {ch[1], ch[1] + stride, ch[1] + 2 * stride, ch[1] + 3 * stride},
                               {ch[2], ch[2] + stride, ch[2] + 2 * stride, ch[2] + 3 * stride}};
    size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i a = LaneResult(s), b = LaneResult(s), c = LaneResult(s), d = LaneResult(s);
        const LaneWords first = WordsOfSteps(a, b, c, d);
        const __m256i e = LaneResult(s), f = LaneResult(s), g = LaneResult(s), h = LaneResult(s);
        const LaneWords second = WordsOfSteps(e, f, g, h);
        StoreLaneWords(first.red, second.red, to[0], i);
        StoreLaneWords(first.green, second.green, to[1], i);
        StoreLaneWords(first.blue, second.blue, to[2], i);
    }
    alignas(32) uint64_t r[4];
    for (; i < count; ++i) {
        _mm256_store_si256(reinterpret_cast<__m256i*>(r), LaneResult(s));
        for (size_t l = 0; l < 4; ++l)
            for (int k = 0; k < 3; ++k) to[k][l][i] = NoiseWord(r[l], 3 - k);
    }
    StoreLanes(s, lane);
}

bool HaveAvx2() {
    static const bool have = __builtin_cpu_supports("avx2");
    return have;
}
#endif

// Below this many draws the quarters are not worth their starting states.
constexpr size_t MinLaneDraws = 256;

State Current() { return State{Random.s[0], Random.s[1], Random.s[2], Random.s[3]}; }
void Keep(const State& s) {
    for (size_t w = 0; w < 4; ++w) Random.s[w] = s[w];
}

}  // namespace

void RndRow(double* out, size_t count, bool vector) {
    State s = Current();
#if defined(KW_X86)
    if (vector && count >= MinLaneDraws && HaveAvx2()) {
        // Quarters of k draws; the last one ends at count.
        const size_t k = (count + 3) / 4, last = count - 3 * k;
        const Jump& jump = JumpOf(k);
        State lane[4] = {s, {}, {}, {}};
        for (int l = 1; l < 4; ++l) lane[l] = Ahead(jump, lane[l - 1]);
        FourLanes(lane, out, k, last);
        for (int l = 0; l < 3; ++l)
            for (size_t i = last; i < k; ++i) out[static_cast<size_t>(l) * k + i] = Draw(lane[l]);
        Keep(lane[3]);
        return;
    }
#endif
    (void)vector;
    for (size_t i = 0; i < count; ++i) out[i] = Draw(s);
    Keep(s);
}

void RndRowNoise(int16_t* red, int16_t* green, int16_t* blue, size_t pixels, bool vector) {
    int16_t* const ch[3] = {red, green, blue};
    State s = Current();
    auto draw = [&ch](State& st, size_t i) {
        const uint64_t result = st[0] + st[3];
        Step(st);
        for (int k = 0; k < 3; ++k) ch[k][i] = NoiseWord(result, 3 - k);
    };
#if defined(KW_X86)
    if (vector && pixels >= MinLaneDraws && HaveAvx2()) {
        // Quarters of k pixels; the last one ends at pixels.
        const size_t k = (pixels + 3) / 4, last = pixels - 3 * k;
        const Jump& jump = JumpOf(k);
        State lane[4] = {s, {}, {}, {}};
        for (int l = 1; l < 4; ++l) lane[l] = Ahead(jump, lane[l - 1]);
        FourLanesNoise(lane, ch, k, last);
        for (size_t l = 0; l < 3; ++l)
            for (size_t i = last; i < k; ++i) draw(lane[l], l * k + i);
        Keep(lane[3]);
        return;
    }
#endif
    (void)vector;
    for (size_t i = 0; i < pixels; ++i) draw(s, i);
    Keep(s);
}

}  // namespace vb
