// Kernels of the renders: the doubling of a noise field, the field put into the
// picture (through alpha, or through a gradient), the octave sums mapped
// through a gradient, and the rows of the colour and value noise. Pictures are
// W x H in planes of stride W + 1; fields carry their own stride. A gradient is
// three tables of 256 bytes, red, green and blue.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwfilter {
// dst (0..2w, 0..2h) from src (0..w, 0..h): each cell's four corners a, b, c, d
// give a, (a + b) >> 1, (a + c) >> 1, (a + b + c + d) >> 2; the last column and
// row copy the ones before them. A field 0 across (w or h = 0) writes only
// that copy, where there is a column or row before.
void DoubleField(const uint8_t* src, size_t srcStride, int w, int h, uint8_t* dst, size_t dstStride);

// One channel := (field * a + (255 - a) * old) \ 255 with a the alpha sample
// as it stands, whatever AlphaOff says.
void PlasmaChannel(uint8_t* dst, const uint8_t* field, size_t fieldStride, const uint8_t* A, int W, int H);

// R, G, B := the gradient at the field's value; with AlphaOff = 0 mixed as
// (old * (255 - a) + new * a) \ 255.
void FieldThroughGradient(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* field, size_t fieldStride,
                          const uint8_t* grad, const uint8_t* A, uint8_t AlphaOff, int W, int H);

// One row of octave sums: acc := acc / K held to 0..255, rounded half to even,
// and R, G, B := the gradient there.
void AccThroughGradient(uint8_t* R, uint8_t* G, uint8_t* B, const float* acc, int K, const uint8_t* grad, int W);

// A row of colour noise over the whole width: channel := undo + (rnd - 0.5) *
// amount, rounded half to even and held to 0..255, three draws a pixel in the
// order red, green, blue.
void ColorNoiseRow(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB,
                   const double* rnd, int W, int amount);
// A row of value noise: one draw a pixel, k := CLng((rnd - 0.5) * amount * 255) \ 255
// added to all three channels, held to 0..255.
void ValueNoiseRow(uint8_t* R, uint8_t* G, uint8_t* B, const uint8_t* UR, const uint8_t* UG, const uint8_t* UB,
                   const double* rnd, int W, int amount);
}  // namespace kwfilter
