// The Targa encoder: header, optional 768-byte map, rows bottom row first.
// Never compressed; the descriptor stays 0, also for 32 bits. The rows pass
// through one buffer of a few hundred kilobytes, kept from save to save, so a
// save touches no fresh memory and the bytes are still in cache when written.
#include <algorithm>
#include <cstring>

#include "file/TargaFormat.h"
#include "native/TargaRows.h"

namespace {

constexpr size_t ChunkBytes = 256 * 1024;

void AlphaRow(uint8_t* out, int W, const uint8_t* r, const uint8_t* g, const uint8_t* b, const uint8_t* a) {
    for (int x = 0; x < W; ++x, out += 4) {
        out[0] = b[x];
        out[1] = g[x];
        out[2] = r[x];
        out[3] = a[x];
    }
}

int BytesPerPixel(const TargaImage& img) {
    if (img.Flags & 2) return 1;
    return (img.Flags & 1) ? 4 : 3;
}

// One output row from buffer row y.
void EncodeRow(const TargaImage& img, int y, int p, uint8_t* dst) {
    const int W = std::max(img.Width, 0);
    const size_t rowBytes = static_cast<size_t>(W) * static_cast<size_t>(p);
    const uint8_t *r = img.R->row(y), *g = img.G->row(y), *b = img.B->row(y);
    if (img.Flags & 4) {
        // Colour-mapped: the index from the plane, in the first byte of each pixel.
        const uint8_t* idx = img.Index ? img.Index->row(y) : nullptr;
        if (p > 1) std::memset(dst, 0, rowBytes);
        for (int x = 0; x < W; ++x) dst[static_cast<size_t>(x) * p] = idx ? idx[x] : 0;
    } else if (img.Flags & 2) {
        for (int x = 0; x < W; ++x) dst[x] = static_cast<uint8_t>((g[x] + r[x] + b[x]) / 3);
    } else if (p == 4) {
        AlphaRow(dst, W, r, g, b, img.A->row(y));
    } else {
        static const kwtarga::JoinRowFn join = kwtarga::JoinBgrRow();
        join(dst, W, r, g, b);
    }
}

// Buffer rows low..top-1 into out, the top one first as the file wants them.
// The planes are read upward, row after row, so that each plane is one rising
// stream of addresses for the length of the chunk: read downward, every row
// starts a new stream, and waiting for memory at each row's start cost the
// join about a third of its time.
void EncodeRows(const TargaImage& img, int low, int top, int p, size_t rowBytes, uint8_t* out) {
    for (int y = low; y < top; ++y) EncodeRow(img, y, p, out + static_cast<size_t>(top - 1 - y) * rowBytes);
}

// Progress for buffer rows top-1 down to low, done rows having gone before:
// once for each row whose number is a multiple of ten, as if row by row.
void ReportRows(int low, int top, int H, int done, TargaProgress progress, void* context) {
    for (int y = top - 1; y >= low; --y, ++done)
        if (y % 10 == 0) progress(done * 100 / H, context);
}

}  // namespace

TargaFileHeader TargaHeaderFor(const TargaImage& img) {
    const int p = BytesPerPixel(img);
    TargaFileHeader h;
    h.ImageType = img.ImageType;
    h.ColorMapEntrySize = static_cast<uint8_t>(p * 8);
    if (img.ImageType == 1) {
        h.ColorMapType = 1;
        h.ColorMapLength = 256;
        h.ColorMapEntrySize = 24;
    }
    h.ImageWidth = static_cast<int16_t>(std::max(img.Width, 0));
    h.ImageHeight = static_cast<int16_t>(std::max(img.Height, 0));
    h.PixelDepth = static_cast<uint8_t>(p * 8);
    return h;
}

bool EncodeTargaTo(const TargaImage& img, const TargaSink& sink, TargaProgress progress, void* context) {
    const int W = std::max(img.Width, 0), H = std::max(img.Height, 0);
    const int p = BytesPerPixel(img);
    const bool mapped = img.ImageType == 1;
    // The header and the map.
    uint8_t head[TargaHeaderSize + 768] = {};
    const auto header = PackTargaHeader(TargaHeaderFor(img));
    std::memcpy(head, header.data(), header.size());
    if (mapped && img.Palette) {
        uint8_t* m = head + TargaHeaderSize;
        for (int i = 0; i < 256; ++i) {
            const uint32_t c = img.Palette[i];
            m[3 * i] = static_cast<uint8_t>((c >> 16) & 255);
            m[3 * i + 1] = static_cast<uint8_t>((c >> 8) & 255);
            m[3 * i + 2] = static_cast<uint8_t>(c & 255);
        }
    }
    if (!sink(head, TargaHeaderSize + (mapped ? 768 : 0))) return false;
    // The rows, as many at a time as fill the buffer (at least one).
    const size_t rowBytes = static_cast<size_t>(W) * static_cast<size_t>(p);
    if (rowBytes == 0) return true;
    const int rowsPerChunk = static_cast<int>(std::max<size_t>(1, ChunkBytes / rowBytes));
    static thread_local TargaBytes chunk;
    chunk.resize(rowBytes * static_cast<size_t>(std::min(rowsPerChunk, H)));
    int done = 0;
    for (int top = H; top > 0; top -= rowsPerChunk) {
        const int low = std::max(0, top - rowsPerChunk), rows = top - low;
        EncodeRows(img, low, top, p, rowBytes, chunk.data());
        if (progress) ReportRows(low, top, H, done, progress, context);
        done += rows;
        if (!sink(chunk.data(), static_cast<size_t>(rows) * rowBytes)) return false;
    }
    return true;
}

TargaBytes EncodeTarga(const TargaImage& img, TargaProgress progress, void* context) {
    TargaBytes out;
    const int p = BytesPerPixel(img);
    out.reserve(TargaHeaderSize + 768 +
                static_cast<size_t>(std::max(img.Width, 0)) * static_cast<size_t>(p) * std::max(img.Height, 0));
    EncodeTargaTo(
        img,
        [&](const uint8_t* bytes, size_t n) {
            out.insert(out.end(), bytes, bytes + n);
            return true;
        },
        progress, context);
    return out;
}
