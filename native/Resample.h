// Resampling one plane into another of a different size. Conventions: planes of
// stride width + 1; the destination picture is written whole, its extra column
// and row are left alone. Every destination pixel maps inside the source, so
// nothing is clipped; the bilinear sample positions are held to the source's
// edge pixel by pixel, which is how the edges are drawn. A source or
// destination with a side below 1 does nothing.
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
