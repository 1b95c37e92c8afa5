// Filter kernels over raw planes. Conventions: a W x H picture lives in planes of
// stride W + 1; loops run y outer, x inner, over the picture only.
#pragma once

#include <cstdint>

namespace kwfilter {
// dest := (first * (255 - amount) + second * amount) \ 255 per pixel: amount 0
// gives first, 255 gives second. dest may be first or second.
void FastMixBuffs(const uint8_t* first, const uint8_t* second, uint8_t* dest, int32_t amount, int W, int H);
}  // namespace kwfilter
