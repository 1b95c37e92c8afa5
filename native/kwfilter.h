// Filter kernels over raw planes. Conventions: a W x H picture lives in planes of
// stride W + 1; loops run y outer, x inner, over the picture only. "a" is always
// an alpha sample or-ed with AlphaOff, and every alpha mix is the truncating
// (old * (255 - a) + new * a) \ 255. Kernels that work row by row may split the
// rows over two threads (FilterThreads.h); their bytes never depend on it.
#pragma once

#include <cstdint>

namespace kwfilter {
// dest := (first * (255 - amount) + second * amount) \ 255 per pixel: amount 0
// gives first, 255 gives second. dest may be first or second.
void FastMixBuffs(const uint8_t* first, const uint8_t* second, uint8_t* dest, int32_t amount, int W, int H);

// ---- masking through alpha
// The after-pass: with AlphaOff = 0 each channel := (undo * (255 - A) + channel * A) \ 255;
// with AlphaOff not 0 nothing changes.
void Overlay_b(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB,
               const uint8_t* A, uint8_t AlphaOff, int W, int H);
// The "Alpha blit": a := A | AlphaOff; channel := (channel * (255 - a) + swap * a) \ 255.
void Overlay(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
             const uint8_t* A, uint8_t AlphaOff, int W, int H);

// ---- tables and channels
// v := CInt(undo * factor) held at 255, mixed into dest through a.
void ChannelValue(uint8_t* dest, const uint8_t* undo, const uint8_t* A, uint8_t AlphaOff, int W, int H, float factor);
// p := lut[p] in each plane.
void SetValue(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* lut, int W, int H);
// p := (p * (255 - a) + lut[p] * a) \ 255.
void SetValueAlpha(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* lut, const uint8_t* A, uint8_t AlphaOff, int W,
                   int H);
// The same reading the source planes (the undo picture) and writing the
// destination: the copy and the table in one pass.
void SetValueFrom(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                  const uint8_t* lut, int W, int H);
void SetValueAlphaFrom(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                       const uint8_t* lut, const uint8_t* A, uint8_t AlphaOff, int W, int H);
// Counts per channel into hist[value + 256 * channel] (channel 0 red, 1 green, 2
// blue); the counts are set, not added to.
void BuildSpect(const uint8_t* R, const uint8_t* G, const uint8_t* B, int32_t* hist, int W, int H);

// ---- hue and posterize, whole canvas
// Hue, Sat, Val are float planes of stride W (no extra column). Per pixel:
// h := CLng(Hue + shift) mod 360, no hue where Sat is 0; s := Sat * satF and
// v := Val * valF held to 0..1; the colour rounded to bytes, mixed through a.
void FastHSV(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* A, int W, int H, const float* Hue, const float* Sat,
             const float* Val, int32_t shift, float satF, float valF, uint8_t AlphaOff);
// channel := (undo \ step) * step, mixed through a against the undo picture. step < 1 changes nothing.
void FastPosterize(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* A, int W, int H, const uint8_t* UR,
                   const uint8_t* UG, const uint8_t* UB, int32_t step, uint8_t AlphaOff);

// ---- blurs. Coordinates outside the picture are clamped to its edge.
// Horizontal (Pass1) and vertical (Pass2) weighted sums over offsets -half..half
// with weight weights[|offset|], divided by the sum of the weights, rounded half
// to even. weights needs half + 1 entries.
void xFastGaussPass1(uint8_t* dR, uint8_t* dG, uint8_t* dB, const uint8_t* sR, const uint8_t* sG, const uint8_t* sB,
                     int W, int H, const float* weights, int half);
void xFastGaussPass2(uint8_t* dR, uint8_t* dG, uint8_t* dB, const uint8_t* sR, const uint8_t* sG, const uint8_t* sB,
                     int W, int H, const float* weights, int half);
void xFastGauss8Pass1(uint8_t* dst, const uint8_t* src, int W, int H, const float* weights, int half);
void xFastGauss8Pass2(uint8_t* dst, const uint8_t* src, int W, int H, const float* weights, int half);
// 2-D mask of (2 * radius + 1)^2 byte weights, row after row with stride
// 2 * radius + 1: dst := the weighted sum / kernelSum, rounded half up. Rows
// y0..y1-1 only; kernelSum < 1 copies the source.
void xBlur(const uint8_t* sR, const uint8_t* sG, const uint8_t* sB, uint8_t* dR, uint8_t* dG, uint8_t* dB, int W, int H,
           const uint8_t* kernel, int radius, int32_t kernelSum, int y0, int y1);
// The same, the result mixed into dst through a against the source.
void xBlurAlpha(const uint8_t* sR, const uint8_t* sG, const uint8_t* sB, uint8_t* dR, uint8_t* dG, uint8_t* dB,
                const uint8_t* A, uint8_t AlphaOff, int W, int H, const uint8_t* kernel, int radius, int32_t kernelSum,
                int y0, int y1);
// 3 x 3 convolution, weights row after row: v := sum / divisor + offset, held to
// 0..255 and rounded half to even, then dst := (src * (255 - a) + v * a) \ 255.
struct Weights3x3 {
    float w[9];
};
void ConvolveAlpha(uint8_t* dR, uint8_t* dG, uint8_t* dB, const uint8_t* sR, const uint8_t* sG, const uint8_t* sB,
                   const uint8_t* A, uint8_t AlphaOff, int W, int H, const Weights3x3& weights, float divisor,
                   float offset);

// ---- combining with the swap page
// channel := table[channel + 256 * swap], a 256 x 256 mixing table; no alpha.
void CombineTable(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                  const uint8_t* table, int W, int H);
// The per-pixel formulas of the Combine menu, each mixed through a.
enum class CombineFormula { Table, Luminance, Difference, Texture, Lighter, Darker, Binary };
void CombinePixels(CombineFormula f, uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG,
                   const uint8_t* SB, const uint8_t* A, uint8_t AlphaOff, int W, int H, const uint8_t* table = nullptr);
// Premultiplied alpha blit: s' := CLng((255 - S) * a / 255.0), channel :=
// round((ia * B + (255 - s') * a) / 255.0) with a := A, not or-ed with AlphaOff.
void Premult(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
             const uint8_t* A, int W, int H);
// Lights the picture by the swap page as a height field, sampled at (dx1, dy1)
// and (dx2, dy2) from each pixel; the one-pixel border stays.
void EmbossMap(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
               const uint8_t* A, uint8_t AlphaOff, int W, int H, int dx1, int dy1, int dx2, int dy2);

// ---- colour keying. key is the ground's channel (green or blue): the raw key
// value is ((255 - undoR) * key) \ 255 and lut maps it to the matte k, 255 = ground.
// The foreground is the undo picture with its spill removed: art (0..255) is how
// much of the key channel's excess over the larger of the other two is taken away.
// A and AlphaOff are not read: the caller's after-pass masks the result.
void FastGreenscreen(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* A, int W, int H, const uint8_t* UR,
                     const uint8_t* UG, const uint8_t* UB, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                     const uint8_t* lut, int32_t art, uint8_t AlphaOff);
void FastBluescreen(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* A, int W, int H, const uint8_t* UR,
                    const uint8_t* UG, const uint8_t* UB, const uint8_t* SR, const uint8_t* SG, const uint8_t* SB,
                    const uint8_t* lut, int32_t art, uint8_t AlphaOff);
// The matte alone: dst := lut[raw key] per pixel.
void KeyMatte(uint8_t* dst, const uint8_t* UR, const uint8_t* Key, const uint8_t* lut, int W, int H);
// The foreground with its spill removed (see above); blue = true keys on blue.
void Despill(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB, int W, int H,
             int32_t art, bool blue);
}  // namespace kwfilter
