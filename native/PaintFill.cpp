// The paint fills' coat: the edge profile of the selection's spans, the
// stroke and paper grain, the softening and the relief shading.
#include "native/PaintFill.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "native/Rounding.h"

namespace kwpaintfill {
namespace {
struct Box {
    int left, top, right, bottom;
};

size_t At(const Coat& c, int x, int y) { return static_cast<size_t>(y) * c.stride + static_cast<size_t>(x); }

uint8_t Sample(const Texture& t, int x, int y) {
    if (!t.p || t.w <= 0 || t.h <= 0) return 255;
    return t.p[static_cast<size_t>(y % t.h) * t.stride + static_cast<size_t>(x % t.w)];
}

// The box of non-zero M and each row's and column's first and last non-zero pixel.
struct Spans {
    Box box{0, 0, -1, -1};
    std::vector<int> rowFirst, rowLast, colFirst, colLast;
};
Spans FindSpans(const Coat& c) {
    Spans s;
    s.rowFirst.assign(static_cast<size_t>(c.H), -1), s.rowLast.assign(static_cast<size_t>(c.H), -1);
    s.colFirst.assign(static_cast<size_t>(c.W), -1), s.colLast.assign(static_cast<size_t>(c.W), -1);
    s.box = {c.W, c.H, -1, -1};
    for (int y = 0; y < c.H; ++y) {
        const uint8_t* m = c.mask + At(c, 0, y);
        for (int x = 0; x < c.W; ++x) {
            if (m[x] == 0) continue;
            if (s.rowFirst[y] < 0) s.rowFirst[y] = x;
            s.rowLast[y] = x;
            if (s.colFirst[x] < 0) s.colFirst[x] = y;
            s.colLast[x] = y;
        }
        if (s.rowFirst[y] < 0) continue;
        s.box.left = std::min(s.box.left, s.rowFirst[y]), s.box.right = std::max(s.box.right, s.rowLast[y]);
        s.box.top = std::min(s.box.top, y), s.box.bottom = y;
    }
    return s;
}

// A place within first..last scaled to 0..256; a span of one pixel is its
// middle. Pixels of the box beyond their column's or row's span (a selection
// that is not convex) count as its ends.
int Place(int at, int first, int last) {
    if (first < 0 || last <= first) return 128;
    return std::clamp((at - first) * 256 / (last - first), 0, 256);
}

// Five-point means of M inside the picture's edge, rounded (never half-way).
void Soften(const Coat& c, const Box& b) {
    std::vector<uint8_t> copy(c.mask, c.mask + At(c, 0, c.H));
    // The box and a pixel round it: the relief reads that far.
    const int x0 = std::max(b.left - 1, 1), x1 = std::min(b.right + 1, c.W - 2);
    const int y0 = std::max(b.top - 1, 1), y1 = std::min(b.bottom + 1, c.H - 2);
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) {
            const size_t i = At(c, x, y);
            const unsigned sum = copy[i] + copy[i - 1] + copy[i + 1] + copy[i - c.stride] + copy[i + c.stride];
            c.mask[i] = static_cast<uint8_t>((sum + 2) / 5);
        }
}

// The relief of M shades the colour, which goes in by M.
void Shade(const Coat& c, const Box& b) {
    uint8_t* planes[3] = {c.r, c.g, c.b};
    for (int y = b.top; y <= b.bottom; ++y) {
        const int up = std::max(y - 1, 0);
        for (int x = b.left; x <= b.right; ++x) {
            const int right = std::min(x + 1, c.W - 1), left = std::max(x - 1, 0);
            const int diff = c.mask[At(c, right, y)] - c.mask[At(c, left, up)];
            const int16_t e = static_cast<int16_t>(kwround::RoundD(((diff + 255) / 2.0 - 128) * 4.5));
            const unsigned m = c.mask[At(c, x, y)];
            for (int k = 0; k < 3; ++k) {
                const unsigned colour = static_cast<unsigned>(std::clamp(c.colour[k] + e, 0, 255));
                uint8_t& p = planes[k][At(c, x, y)];
                p = static_cast<uint8_t>((p * (255 - m) + colour * m) / 255);
            }
        }
    }
}
}  // namespace

void EdgeTable(int brushOpacity, uint8_t table[257]) {
    const int o = std::clamp(brushOpacity, 0, 255);
    const double level = 255 - o / 2.0, steep = 1 + (255 - o) / 16.0;
    for (int p = 0; p <= 256; ++p) {
        const double fromEdge = std::min(p, 256 - p) / 128.0;
        table[p] = static_cast<uint8_t>(kwround::RoundD(level * std::min(1.0, fromEdge * steep)));
    }
}

bool PaintCoat(const Coat& c) {
    if (c.W <= 0 || c.H <= 0) return false;
    const Spans s = FindSpans(c);
    const Box& b = s.box;
    if (b.right < b.left) return false;
    uint8_t table[257];
    EdgeTable(c.brushOpacity, table);
    for (int y = b.top; y <= b.bottom; ++y)
        for (int x = b.left; x <= b.right; ++x) {
            uint8_t& m = c.mask[At(c, x, y)];
            const unsigned e1 = table[Place(x, s.rowFirst[y], s.rowLast[y])];
            const unsigned e2 = table[Place(y, s.colFirst[x], s.colLast[x])];
            const unsigned edge = e1 * e2 / 255;
            // The stroke's grain takes up to two thirds away, the paper's a third.
            const unsigned stroke = 85 + Sample(c.stroke, x, y) * 170u / 255;
            const unsigned paper = 170 + Sample(c.paper, x, y) * 85u / 255;
            m = static_cast<uint8_t>(std::min(255u, edge * stroke / 255 * paper / 255 * m / 255));
        }
    Soften(c, b);
    Shade(c, b);
    return true;
}

}  // namespace kwpaintfill
