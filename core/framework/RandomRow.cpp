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

// The states `steps` steps on from each one-bit state: the columns of the matrix.
struct Jump {
    size_t steps = 0;
    std::array<State, 256> column{};
};

const Jump& JumpOf(size_t steps) {
    static Jump jump;
    if (jump.steps == steps) return jump;
    for (int j = 0; j < 256; ++j) {
        State s{};
        s[static_cast<size_t>(j / 64)] = uint64_t{1} << (j % 64);
        for (size_t k = 0; k < steps; ++k) Step(s);
        jump.column[static_cast<size_t>(j)] = s;
    }
    jump.steps = steps;
    return jump;
}

State Ahead(const Jump& jump, const State& s) {
    State out{};
    for (int j = 0; j < 256; ++j) {
        // Without a branch: the bits are random, so a test would guess wrong half the time.
        const uint64_t mask = uint64_t{0} - ((s[static_cast<size_t>(j / 64)] >> (j % 64)) & 1);
        const State& c = jump.column[static_cast<size_t>(j)];
        for (size_t w = 0; w < 4; ++w) out[w] ^= c[w] & mask;
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
// An integer below 2^52 as a double: its bits under the exponent of 2^52, less 2^52.
KW_AVX2 inline __m256d Small(__m256i v) {
    const __m256i magic = _mm256_set1_epi64x(0x4330000000000000);
    return _mm256_sub_pd(_mm256_castsi256_pd(_mm256_or_si256(v, magic)), _mm256_set1_pd(0x1.0p52));
}

// One step of the four lanes: their next draws as doubles.
KW_AVX2 inline __m256d LaneStep(__m256i (&s)[4]) {
    const __m256i v = _mm256_srli_epi64(_mm256_add_epi64(s[0], s[3]), 11);
    const __m256i t = _mm256_slli_epi64(s[1], 17);
    s[2] = _mm256_xor_si256(s[2], s[0]);
    s[3] = _mm256_xor_si256(s[3], s[1]);
    s[1] = _mm256_xor_si256(s[1], s[2]);
    s[0] = _mm256_xor_si256(s[0], s[3]);
    s[2] = _mm256_xor_si256(s[2], t);
    s[3] = _mm256_or_si256(_mm256_slli_epi64(s[3], 45), _mm256_srli_epi64(s[3], 19));
    // 53 bits as 27 high and 26 low, each exact, so the sum is exact too.
    const __m256i low26 = _mm256_set1_epi64x((1 << 26) - 1);
    const __m256d hi = Small(_mm256_srli_epi64(v, 26)), lo = Small(_mm256_and_si256(v, low26));
    return _mm256_mul_pd(_mm256_add_pd(_mm256_mul_pd(hi, _mm256_set1_pd(0x1.0p26)), lo), _mm256_set1_pd(0x1.0p-53));
}

// count draws of each of the four lanes into out + lane * stride.
KW_AVX2 void FourLanes(State (&lane)[4], double* out, size_t stride, size_t count) {
    __m256i s[4];
    for (int w = 0; w < 4; ++w)
        s[w] = _mm256_set_epi64x(static_cast<long long>(lane[3][w]), static_cast<long long>(lane[2][w]),
                                 static_cast<long long>(lane[1][w]), static_cast<long long>(lane[0][w]));
    double* const to[4] = {out, out + stride, out + 2 * stride, out + 3 * stride};
    size_t i = 0;
    // Four steps, then turned so that each lane's four draws go out in one store.
    for (; i + 4 <= count; i += 4) {
        const __m256d a = LaneStep(s), b = LaneStep(s), c = LaneStep(s), d = LaneStep(s);
        const __m256d ab0 = _mm256_unpacklo_pd(a, b), ab1 = _mm256_unpackhi_pd(a, b);
        const __m256d cd0 = _mm256_unpacklo_pd(c, d), cd1 = _mm256_unpackhi_pd(c, d);
        _mm256_storeu_pd(to[0] + i, _mm256_permute2f128_pd(ab0, cd0, 0x20));
        _mm256_storeu_pd(to[1] + i, _mm256_permute2f128_pd(ab1, cd1, 0x20));
        _mm256_storeu_pd(to[2] + i, _mm256_permute2f128_pd(ab0, cd0, 0x31));
        _mm256_storeu_pd(to[3] + i, _mm256_permute2f128_pd(ab1, cd1, 0x31));
    }
    alignas(32) double d[4];
    for (; i < count; ++i) {
        _mm256_store_pd(d, LaneStep(s));
        for (int l = 0; l < 4; ++l) to[l][i] = d[l];
    }
    alignas(32) uint64_t back[4][4];
    for (int w = 0; w < 4; ++w) _mm256_store_si256(reinterpret_cast<__m256i*>(back[w]), s[w]);
    for (int l = 0; l < 4; ++l)
        for (int w = 0; w < 4; ++w) lane[l][static_cast<size_t>(w)] = back[w][l];
}

bool HaveAvx2() {
    static const bool have = __builtin_cpu_supports("avx2");
    return have;
}
#endif

// Below this many draws the quarters are not worth their starting states.
constexpr size_t MinLaneDraws = 256;

}  // namespace

void RndRow(double* out, size_t count, bool vector) {
    State s{Random.s[0], Random.s[1], Random.s[2], Random.s[3]};
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
        for (size_t w = 0; w < 4; ++w) Random.s[w] = lane[3][w];
        return;
    }
#endif
    (void)vector;
    for (size_t i = 0; i < count; ++i) out[i] = Draw(s);
    for (size_t w = 0; w < 4; ++w) Random.s[w] = s[w];
}

}  // namespace vb
