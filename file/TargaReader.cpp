// The Targa header and the pixel decoder. Every read is checked against the data
// and every write against the planes: a damaged file ends the load early or reads
// as zero, it never reaches outside an allocation.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "file/TargaFormat.h"
#include "native/TargaRows.h"

namespace {

uint16_t U16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }
int16_t S16(const uint8_t* p) { return static_cast<int16_t>(U16(p)); }
void Put16(uint8_t* p, int v) {
    p[0] = static_cast<uint8_t>(v & 255);
    p[1] = static_cast<uint8_t>((v >> 8) & 255);
}

// Reports a percentage only when it moved, so a tall picture costs a hundred updates, not thousands.
struct Progress {
    TargaProgress fn;
    void* context;
    int last = -1000000;
    void operator()(int percent) {
        if (!fn || percent == last) return;
        last = percent;
        fn(percent, context);
    }
};

bool Covers(const Plane* p, int w, int h) { return p && !p->empty() && p->ubX() >= w - 1 && p->ubY() >= h - 1; }

// Types 1 and 3: one index per pixel through a 256-entry palette stored blue first.
bool DecodeMapped(const TargaFileHeader& h, const uint8_t* data, size_t avail, const TargaPlanes& t, int p,
                  Progress& progress) {
    const int W = h.ImageWidth, H = h.ImageHeight;
    uint8_t palette[768] = {};
    size_t pos = 0;
    if (h.ImageType == 1) {
        // The first-entry field shifts the map by bytes, not entries; bytes that
        // would land outside the palette are dropped.
        const size_t mapBytes = static_cast<size_t>(h.ColorMapLength) * 3;
        for (size_t k = 0; k < mapBytes && k < avail; ++k) {
            long long at = static_cast<long long>(k) + h.ColorMapFirst;
            if (at >= 0 && at < 768) palette[at] = data[k];
        }
        pos = std::min(mapBytes, avail);
        if (mapBytes > avail) avail = 0; else avail -= mapBytes;
    } else {
        for (int i = 0; i < 256; ++i) palette[3 * i] = palette[3 * i + 1] = palette[3 * i + 2] = static_cast<uint8_t>(i);
    }
    const uint8_t* px = data + pos;
    // The whole array is read at once: what the file lacks reads as zero.
    const size_t need = static_cast<size_t>(W) * static_cast<size_t>(H) * static_cast<size_t>(p);
    const size_t have = std::min(avail, need);
    for (int y = 0; y < H; ++y) {
        const size_t src = static_cast<size_t>(H - 1 - y) * static_cast<size_t>(W);
        uint8_t *r = t.R->row(y), *g = t.G->row(y), *b = t.B->row(y);
        for (int x = 0; x < W; ++x) {
            size_t at = src + static_cast<size_t>(x);
            const uint8_t* c = palette + 3 * (at < have ? px[at] : 0);
            r[x] = c[2];
            g[x] = c[1];
            b[x] = c[0];
        }
        progress(H > 1 ? y * 100 / (H - 1) : 100);
    }
    return true;
}

template <int P>
void TrueColourRow(const uint8_t* src, int W, uint8_t* r, uint8_t* g, uint8_t* b, uint8_t* a) {
    for (int x = 0; x < W; ++x, src += P) {
        b[x] = src[0];
        g[x] = src[1];
        r[x] = src[2];
        if constexpr (P == 4) a[x] = src[3];
    }
}

// Type 2: file row r lands on target row H-1-r. A pixel takes three bytes (four
// with alpha) from its offset whatever its size, so other sizes read across
// their neighbours. The whole array is read at once: what the file lacks reads as zero.
bool DecodeTrueColour(const TargaFileHeader& h, const uint8_t* data, size_t avail, const TargaPlanes& t, int p,
                      Progress& progress) {
    const int W = h.ImageWidth, H = h.ImageHeight;
    const size_t rowBytes = static_cast<size_t>(W) * static_cast<size_t>(p);
    const size_t need = rowBytes * static_cast<size_t>(H);
    const size_t have = std::min(avail, need);
    const size_t reads = p == 4 ? 4 : 3;
    auto at = [&](size_t i) -> uint8_t { return i < have ? data[i] : 0; };
    for (int r = 0; r < H; ++r) {
        const int y = H - 1 - r;
        const size_t start = static_cast<size_t>(r) * rowBytes;
        uint8_t *R = t.R->row(y), *G = t.G->row(y), *B = t.B->row(y);
        const bool whole = start + rowBytes <= have && (W == 0 || start + rowBytes - static_cast<size_t>(p) + reads <= have);
        if (whole && p == 3) {
            static const kwtarga::SplitRowFn split = kwtarga::SplitBgrRow();
            split(data + start, W, R, G, B);
        } else if (whole && p == 4) {
            TrueColourRow<4>(data + start, W, R, G, B, t.A->row(y));
        } else {
            uint8_t* A = p == 4 ? t.A->row(y) : nullptr;
            for (int x = 0; x < W; ++x) {
                const size_t q = start + static_cast<size_t>(x) * static_cast<size_t>(p);
                B[x] = at(q);
                G[x] = at(q + 1);
                R[x] = at(q + 2);
                if (A) A[x] = at(q + 3);
            }
        }
        progress(H > 1 ? r * 100 / (H - 1) : 100);
    }
    return true;
}

// Type 10: packets of up to 128 pixels, raw or one repeated pixel. A row ends
// only between packets; the next row starts at column 0.
bool DecodeRle(const TargaFileHeader& h, const uint8_t* data, size_t avail, const TargaPlanes& t, int p,
               Progress& progress) {
    const int W = h.ImageWidth, H = h.ImageHeight;
    // The source array holds what is left of the file and one spare zero byte.
    const size_t n = avail + 1;
    auto at = [&](size_t i) -> uint8_t { return i < avail ? data[i] : 0; };
    const size_t reads = static_cast<size_t>(std::max(p, p == 4 ? 4 : 3));
    const int lastColumn = std::min({t.R->ubX(), t.G->ubX(), t.B->ubX(), p == 4 ? t.A->ubX() : 1 << 30});
    size_t i = 0;
    int x = 0, y = H - 1;
    uint8_t *R = t.R->row(y), *G = t.G->row(y), *B = t.B->row(y), *A = p == 4 ? t.A->row(y) : nullptr;
    auto put = [&](size_t s) {
        if (x <= lastColumn) {
            B[x] = at(s);
            G[x] = at(s + 1);
            R[x] = at(s + 2);
            if (A) A[x] = at(s + 3);
        }
        ++x;
    };
    while (y >= 0) {
        if (i >= n) return false;
        const uint8_t c = at(i++);
        const int count = (c & 127) + 1;
        if (c & 128) {
            if (i + reads > n) return false;
            for (int k = 0; k < count; ++k) put(i);
            i += static_cast<size_t>(p);
        } else if (p == 3 && i + 3 * static_cast<size_t>(count) <= avail && x + count - 1 <= lastColumn) {
            // The common case, checked once for the whole packet.
            const uint8_t* s = data + i;
            for (int k = 0; k < count; ++k, s += 3, ++x) {
                B[x] = s[0];
                G[x] = s[1];
                R[x] = s[2];
            }
            i += 3 * static_cast<size_t>(count);
        } else {
            for (int k = 0; k < count; ++k) {
                if (i + reads > n) return false;
                put(i);
                i += static_cast<size_t>(p);
            }
        }
        if (x > W - 1) {
            x = 0;
            --y;
            progress(100 - y);
            if (y >= 0) {
                R = t.R->row(y);
                G = t.G->row(y);
                B = t.B->row(y);
                if (A) A = t.A->row(y);
            }
        }
    }
    return true;
}

}  // namespace

TargaFileHeader ParseTargaHeader(const uint8_t* data, size_t size) {
    uint8_t b[TargaHeaderSize] = {};
    if (data) std::memcpy(b, data, std::min(size, TargaHeaderSize));
    TargaFileHeader h;
    h.IDLength = b[0];
    h.ColorMapType = b[1];
    h.ImageType = b[2];
    h.ColorMapFirst = S16(b + 3);
    h.ColorMapLength = U16(b + 5);
    h.ColorMapEntrySize = b[7];
    h.XOrigin = S16(b + 8);
    h.YOrigin = S16(b + 10);
    h.ImageWidth = S16(b + 12);
    h.ImageHeight = S16(b + 14);
    h.PixelDepth = b[16];
    h.ImageDescriptor = b[17];
    return h;
}

std::array<uint8_t, TargaHeaderSize> PackTargaHeader(const TargaFileHeader& h) {
    std::array<uint8_t, TargaHeaderSize> b{};
    b[0] = h.IDLength;
    b[1] = h.ColorMapType;
    b[2] = h.ImageType;
    Put16(&b[3], h.ColorMapFirst);
    Put16(&b[5], h.ColorMapLength);
    b[7] = h.ColorMapEntrySize;
    Put16(&b[8], h.XOrigin);
    Put16(&b[10], h.YOrigin);
    Put16(&b[12], h.ImageWidth);
    Put16(&b[14], h.ImageHeight);
    b[16] = h.PixelDepth;
    b[17] = h.ImageDescriptor;
    return b;
}

int TargaBytesPerPixel(uint8_t pixelDepth) { return static_cast<int>(std::nearbyint(pixelDepth / 8.0)); }

bool DecodeTargaPixels(const TargaFileHeader& h, const uint8_t* pixels, long long size, const TargaPlanes& target,
                       TargaProgress progressFn, void* context) {
    const int W = h.ImageWidth, H = h.ImageHeight;
    if (W <= 0 || H <= 0) return true;
    const int p = TargaBytesPerPixel(h.PixelDepth);
    if (!Covers(target.R, W, H) || !Covers(target.G, W, H) || !Covers(target.B, W, H)) return false;
    if (p == 4 && !Covers(target.A, W, H)) return false;
    const size_t avail = size > 0 && pixels ? static_cast<size_t>(size) : 0;
    Progress progress{progressFn, context};
    switch (h.ImageType) {
    case 1:
    case 3: return DecodeMapped(h, pixels, avail, target, p, progress);
    case 2: return DecodeTrueColour(h, pixels, avail, target, p, progress);
    case 10: return DecodeRle(h, pixels, avail, target, p, progress);
    default: return true;
    }
}
