// Shared arithmetic of the procedures: rounding, integer division, numeric
// parsing, the one random generator and packed colours. Written once here so
// that every folder rounds and wraps the same way.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vb {

// Float to integer conversions round half to even, as the system does.
inline double RoundEven(double v) { return std::nearbyint(v); }  // default FE_TONEAREST

// 16-bit conversion; out of range raises as the classic conversion does.
struct OverflowError : std::runtime_error {
    OverflowError() : std::runtime_error("Overflow") {}
};
inline int16_t CInt(double v) {
    double r = RoundEven(v);
    if (!(r >= -32768.0 && r <= 32767.0)) throw OverflowError();
    return static_cast<int16_t>(r);
}
inline int32_t CLng(double v) {
    double r = RoundEven(v);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) throw OverflowError();
    return static_cast<int32_t>(r);
}
// Byte conversion clamps nothing: callers clamp first.
inline uint8_t CByte(double v) {
    double r = RoundEven(v);
    if (!(r >= 0.0 && r <= 255.0)) throw OverflowError();
    return static_cast<uint8_t>(r);
}
inline double Int(double v) { return std::floor(v); }
inline double Fix(double v) { return std::trunc(v); }
// The integer division of the formulas truncates toward zero.
inline int32_t IDiv(int32_t a, int32_t b) { return a / b; }

// A 16-bit field that wraps where the system says it wraps.
inline int16_t Wrap16(int32_t v) { return static_cast<int16_t>(static_cast<uint16_t>(v)); }

// Leading-number parse: blanks skipped, "12px" is 12, "abc" is 0, "1e3" is 1000.
double Val(std::string_view s);

// The one uniform generator on [0, 1). Tests seed it for repeatable strokes.
// A small xoshiro256+ state: fills and jitter draw several values per pixel, so
// a draw must cost a few instructions, not a long-period engine's refill.
struct RandomState {
    uint64_t s[4];
};
extern RandomState Random;
// One step of the state, the draw aside: shared by single draws and rows of them.
inline void StepRandomState(uint64_t* s) {
    const uint64_t t = s[1] << 17;
    s[2] ^= s[0];
    s[3] ^= s[1];
    s[1] ^= s[2];
    s[0] ^= s[3];
    s[2] ^= t;
    s[3] = (s[3] << 45) | (s[3] >> 19);
}
inline uint64_t NextRandom() {
    uint64_t* s = Random.s;
    const uint64_t result = s[0] + s[3];
    StepRandomState(s);
    return result;
}
// 53 random bits: never reaches 1.
inline double Rnd() { return static_cast<double>(NextRandom() >> 11) * 0x1.0p-53; }
void Randomize(uint32_t seed);
// count draws of Rnd into out, the same values in the same order and the same
// state left behind; long rows are drawn in four lanes at once where the
// processor can (vector = false keeps to one at a time).
void RndRow(double* out, size_t count, bool vector = true);
// The colour noise of a pixel: one result of the generator cut into three
// 16-bit draws, centred: a word's value less 2^15, so that the draw less a half
// is c / 2^16. Red takes the top word, green the next and blue the third; the
// lowest, the generator's weakest bits, is left over.
inline int16_t NoiseWord(uint64_t result, int word) {
    return static_cast<int16_t>(static_cast<uint16_t>(result >> (16 * word)) ^ 0x8000u);
}
struct ChannelNoise {
    int16_t r, g, b;
};
inline ChannelNoise NextChannelNoise() {
    const uint64_t x = NextRandom();
    return {NoiseWord(x, 3), NoiseWord(x, 2), NoiseWord(x, 1)};
}
// pixels of colour noise into a row per channel: the values and the state left
// behind are those of NextChannelNoise pixel by pixel.
void RndRowNoise(int16_t* red, int16_t* green, int16_t* blue, size_t pixels, bool vector = true);

// Packed colour: red in bits 0..7, green 8..15, blue 16..23.
constexpr uint32_t RGB(int r, int g, int b) {
    return static_cast<uint32_t>((r & 255) | ((g & 255) << 8) | ((b & 255) << 16));
}
constexpr uint8_t RedOf(uint32_t c) { return static_cast<uint8_t>(c & 255); }
constexpr uint8_t GreenOf(uint32_t c) { return static_cast<uint8_t>((c & 65280) / 256); }
constexpr uint8_t BlueOf(uint32_t c) { return static_cast<uint8_t>((c & 16711680) / 65536); }

// Str of a number as the classic runtime writes it: no trailing ".0".
std::string Str(double v);

}  // namespace vb
