// Resampling one plane into another of a different size. Conventions: planes of
// stride width + 1; the destination picture is written whole, its extra column
// and row are left alone.
#pragma once

#include <cstdint>

namespace kwresample {
void Nearest(const uint8_t* src, int sw, int sh, uint8_t* dst, int dw, int dh);
// Bilinear interpolation between the four nearest source pixels.
void Bilinear(const uint8_t* src, int sw, int sh, uint8_t* dst, int dw, int dh);
// As Bilinear when enlarging; when shrinking, each destination pixel averages
// the whole source area it covers, so nothing is skipped.
void BilinearPlus(const uint8_t* src, int sw, int sh, uint8_t* dst, int dw, int dh);
}  // namespace kwresample
