// The Targa encoder: header, optional 768-byte map, rows bottom row first.
// Never compressed; the descriptor stays 0, also for 32 bits.
#include <algorithm>
#include <cstring>

#include "file/TargaFormat.h"

namespace {

template <int P>
void TrueColourRow(uint8_t* out, int W, const uint8_t* r, const uint8_t* g, const uint8_t* b, const uint8_t* a) {
    for (int x = 0; x < W; ++x, out += P) {
        out[0] = b[x];
        out[1] = g[x];
        out[2] = r[x];
        if constexpr (P == 4) out[3] = a[x];
    }
}

}  // namespace

TargaBytes EncodeTarga(const TargaImage& img, TargaProgress progress, void* context) {
    const int W = std::max(img.Width, 0), H = std::max(img.Height, 0);
    int p = 3;
    if (img.Flags & 1) p = 4;
    if (img.Flags & 2) p = 1;
    const bool mapped = img.ImageType == 1;

    TargaFileHeader h;
    h.ImageType = img.ImageType;
    h.ColorMapEntrySize = static_cast<uint8_t>(p * 8);
    if (mapped) {
        h.ColorMapType = 1;
        h.ColorMapLength = 256;
        h.ColorMapEntrySize = 24;
    }
    h.ImageWidth = static_cast<int16_t>(W);
    h.ImageHeight = static_cast<int16_t>(H);
    h.PixelDepth = static_cast<uint8_t>(p * 8);

    const size_t rowBytes = static_cast<size_t>(W) * static_cast<size_t>(p);
    const size_t mapBytes = mapped ? 768 : 0;
    TargaBytes out(TargaHeaderSize + mapBytes + rowBytes * static_cast<size_t>(H));
    auto header = PackTargaHeader(h);
    std::memcpy(out.data(), header.data(), header.size());
    if (mapped) std::memset(out.data() + TargaHeaderSize, 0, mapBytes);
    if (mapped && img.Palette) {
        uint8_t* m = out.data() + TargaHeaderSize;
        for (int i = 0; i < 256; ++i) {
            const uint32_t c = img.Palette[i];
            m[3 * i] = static_cast<uint8_t>((c >> 16) & 255);
            m[3 * i + 1] = static_cast<uint8_t>((c >> 8) & 255);
            m[3 * i + 2] = static_cast<uint8_t>(c & 255);
        }
    }

    uint8_t* rows = out.data() + TargaHeaderSize + mapBytes;
    for (int y = H - 1, o = 0; y >= 0; --y, ++o) {
        uint8_t* dst = rows + static_cast<size_t>(o) * rowBytes;
        const uint8_t *r = img.R->row(y), *g = img.G->row(y), *b = img.B->row(y);
        if (img.Flags & 4) {
            // Colour-mapped: the index from the plane, in the first byte of each pixel.
            const uint8_t* idx = img.Index ? img.Index->row(y) : nullptr;
            if (p > 1) std::memset(dst, 0, rowBytes);
            for (int x = 0; x < W; ++x) dst[static_cast<size_t>(x) * p] = idx ? idx[x] : 0;
        } else if (img.Flags & 2) {
            for (int x = 0; x < W; ++x) dst[x] = static_cast<uint8_t>((g[x] + r[x] + b[x]) / 3);
        } else if (p == 4) {
            TrueColourRow<4>(dst, W, r, g, b, img.A->row(y));
        } else {
            TrueColourRow<3>(dst, W, r, g, b, nullptr);
        }
        if (progress && y % 10 == 0) progress(H > 0 ? o * 100 / H : 100, context);
    }
    return out;
}
