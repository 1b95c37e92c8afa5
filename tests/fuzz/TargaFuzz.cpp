// Fuzz entry for the Targa decoder: any bytes, decoded into planes shaped as the
// buffer's (with the extra column and row) and into planes without them.
#include <cstddef>
#include <cstdint>

#include "file/TargaFormat.h"

namespace {
void DecodeInto(const TargaFileHeader& h, const uint8_t* pixels, long long left, int ubX, int ubY) {
    Plane r, g, b, a;
    r.alloc(ubX, ubY);
    g.alloc(ubX, ubY);
    b.alloc(ubX, ubY);
    a.alloc(ubX, ubY);
    DecodeTargaPixels(h, pixels, left, TargaPlanes{&r, &g, &b, &a});
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TargaFileHeader h = ParseTargaHeader(data, size);
    const long long start = static_cast<long long>(TargaHeaderSize) + h.IDLength;
    const long long left = static_cast<long long>(size) - start;
    const uint8_t* pixels = left > 0 ? data + start : nullptr;
    const int W = h.ImageWidth, H = h.ImageHeight;
    // The harness keeps pictures small; the decoder itself takes any size the planes cover.
    if (W <= 0 || H <= 0 || static_cast<long long>(W) * H > (1 << 18)) {
        DecodeInto(h, pixels, left, 3, 3);  // planes too small must be refused, not overrun
        return 0;
    }
    DecodeInto(h, pixels, left, W, H);
    DecodeInto(h, pixels, left, W - 1, H - 1);
    return 0;
}
