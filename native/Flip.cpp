// Mirror kernels: whole rows swap through a small stack buffer, columns swap in place.
#include "native/Flip.h"

#include <algorithm>
#include <cstring>

namespace kwflip {

void FlipRows(uint8_t* plane, size_t stride, int width, int height) {
    if (!plane || width < 1 || height < 2) return;
    uint8_t chunk[4096];
    const size_t w = static_cast<size_t>(width);
    for (int y = 0, z = height - 1; y < z; ++y, --z) {
        uint8_t* a = plane + static_cast<size_t>(y) * stride;
        uint8_t* b = plane + static_cast<size_t>(z) * stride;
        for (size_t x = 0; x < w; x += sizeof chunk) {
            size_t n = std::min(sizeof chunk, w - x);
            std::memcpy(chunk, a + x, n);
            std::memcpy(a + x, b + x, n);
            std::memcpy(b + x, chunk, n);
        }
    }
}

void FlipColumns(uint8_t* plane, size_t stride, int width, int height) {
    if (!plane || width < 2 || height < 1) return;
    for (int y = 0; y < height; ++y) {
        uint8_t* row = plane + static_cast<size_t>(y) * stride;
        std::reverse(row, row + width);
    }
}

}  // namespace kwflip
