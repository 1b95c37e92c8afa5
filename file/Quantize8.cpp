// The conversion to 8-bit colour: a popularity quantiser on a 4-bit-per-channel
// grid. The 256 most used cells become the palette (entry 0 the darkest, entries
// 247..255 left black on purpose); pixels are dithered by one random threshold
// each before they are mapped.
#include "file/Quantize8.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "core/document/Buffers.h"
#include "core/framework/vb.h"

namespace {

int Bin(int r, int g, int b) { return ((r >> 4) << 8) | ((g >> 4) << 4) | (b >> 4); }
uint32_t BinColour(int i) { return vb::RGB(((i >> 8) & 15) << 4, ((i >> 4) & 15) << 4, (i & 15) << 4); }

// Each channel moves to the cell above when its rest within the cell reaches the threshold.
uint8_t Dither(uint8_t c, int t) {
    int base = c & 240, rest = c - base;
    int v = rest >= t ? base + 16 : base;
    return static_cast<uint8_t>(std::min(v, 255));
}

struct DitheredPicture {
    Plane r, g, b;
};

// Dithered copies of the buffer: one threshold per pixel for all three channels,
// drawn row by row so that a seeded generator gives the same picture.
DitheredPicture DitheredCopies(int W, int H) {
    DitheredPicture d;
    d.r.alloc(W, H);
    d.g.alloc(W, H);
    d.b.alloc(W, H);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            int t = vb::CByte(16 * vb::Rnd());
            d.r(x, y) = Dither(BufR(x, y), t);
            d.g(x, y) = Dither(BufG(x, y), t);
            d.b(x, y) = Dither(BufB(x, y), t);
        }
    return d;
}

// How many pixels of the undithered picture fall in each cell.
std::vector<int32_t> CellCounts(int W, int H) {
    std::vector<int32_t> count(4096, 0);
    for (int y = 0; y < H; ++y) {
        const uint8_t *r = BufR.row(y), *g = BufG.row(y), *b = BufB.row(y);
        for (int x = 0; x < W; ++x) ++count[static_cast<size_t>(Bin(r[x], g[x], b[x]))];
    }
    return count;
}

// The cells' colours, most used first; `map` receives the counts in the same
// order. A stable sort gives exactly the order of a bubble sort that swaps only
// on a strictly greater count.
std::vector<uint32_t> ColoursByUse(const std::vector<int32_t>& count, std::vector<int32_t>& map) {
    std::vector<int> order(4096);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return count[static_cast<size_t>(a)] > count[static_cast<size_t>(b)]; });
    map.assign(4096, 0);
    std::vector<uint32_t> colour(4096);
    for (size_t i = 0; i < 4096; ++i) {
        map[i] = count[static_cast<size_t>(order[i])];
        colour[i] = BinColour(order[i]);
    }
    return colour;
}

// The 256 most used, lightest first by (R+G+B)/3 (again stable): entry 0 is the
// darkest, 1..246 the lightest 246, 247..255 stay zero.
void FillPalette(std::vector<uint32_t>& colour, uint32_t* Palette) {
    auto sum = [](uint32_t c) { return vb::RedOf(c) + vb::GreenOf(c) + vb::BlueOf(c); };
    std::stable_sort(colour.begin(), colour.begin() + 256, [&](uint32_t a, uint32_t b) { return sum(a) > sum(b); });
    std::fill_n(Palette, 256, 0u);
    Palette[0] = colour[255];
    for (int i = 1; i <= 246; ++i) Palette[i] = colour[static_cast<size_t>(i - 1)];
}

// The nearest entry for every cell, by the sum of channel distances; a cell
// with nothing nearer than 255 keeps the sorted count, whose low byte serves.
void MapCellsToPalette(const uint32_t* Palette, std::vector<int32_t>& map) {
    for (int i = 0; i < 4096; ++i) {
        const uint32_t c = BinColour(i);
        int best = 255;
        for (int e = 0; e < 256; ++e) {
            const uint32_t p = Palette[e];
            int d = std::abs(vb::RedOf(p) - vb::RedOf(c)) + std::abs(vb::GreenOf(p) - vb::GreenOf(c)) +
                    std::abs(vb::BlueOf(p) - vb::BlueOf(c));
            if (d < best) {
                best = d;
                map[static_cast<size_t>(i)] = e;
            }
        }
    }
}

}  // namespace

void Quantize8(Plane& IndexPlane, uint32_t* Palette, int Width, int Height) {
    const int W = std::min({Width, BufR.ubX(), BufG.ubX(), BufB.ubX()});
    const int H = std::min({Height, BufR.ubY(), BufG.ubY(), BufB.ubY()});
    if (W < 1 || H < 1) return;
    if (IndexPlane.ubX() < W - 1 || IndexPlane.ubY() < H - 1) IndexPlane.alloc(W, H);

    const DitheredPicture d = DitheredCopies(W, H);
    std::vector<int32_t> map;
    std::vector<uint32_t> colour = ColoursByUse(CellCounts(W, H), map);
    FillPalette(colour, Palette);
    MapCellsToPalette(Palette, map);
    // The dithered pixels take their cell's entry.
    for (int y = 0; y < H; ++y) {
        uint8_t* out = IndexPlane.row(y);
        for (int x = 0; x < W; ++x)
            out[x] = static_cast<uint8_t>(map[static_cast<size_t>(Bin(d.r(x, y), d.g(x, y), d.b(x, y)))] & 255);
    }
}
