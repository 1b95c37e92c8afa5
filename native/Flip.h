// Mirror kernels for one byte plane: the picture area (width x height, row
// stride `stride`) is flipped in place; the extra column and row beyond it are
// left alone. A width or height below 1 does nothing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwflip {
// Row y changes places with row height - 1 - y.
void FlipRows(uint8_t* plane, size_t stride, int width, int height);
// Column x changes places with column width - 1 - x.
void FlipColumns(uint8_t* plane, size_t stride, int width, int height);
}  // namespace kwflip
