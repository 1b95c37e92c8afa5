// Filter kernels.
#include "native/kwfilter.h"

#include <cstddef>

namespace kwfilter {
void FastMixBuffs(const uint8_t* first, const uint8_t* second, uint8_t* dest, int32_t amount, int W, int H) {
    if (amount < 0) amount = 0;
    if (amount > 255) amount = 255;
    const int32_t keep = 255 - amount;
    const size_t stride = static_cast<size_t>(W) + 1;
    for (int y = 0; y < H; ++y) {
        const uint8_t* a = first + static_cast<size_t>(y) * stride;
        const uint8_t* b = second + static_cast<size_t>(y) * stride;
        uint8_t* d = dest + static_cast<size_t>(y) * stride;
        for (int x = 0; x < W; ++x) d[x] = static_cast<uint8_t>((a[x] * keep + b[x] * amount) / 255);
    }
}
}  // namespace kwfilter
