// The stock brush pictures, drawn from their descriptions. Each is made the
// same way every run: the noise comes from a small generator of its own, so the
// program's shared random numbers are left alone.
#include "brush/StockBrushes.h"

#include <algorithm>
#include <cmath>

#include "core/frame/Form2.h"

namespace {
constexpr int N = StockBrushSide;
constexpr double C = 17.0;  // the centre pixel
constexpr double Pi = 3.14159265358979323846;

struct Canvas {
    std::vector<uint8_t> px = std::vector<uint8_t>(N * N, 255);
    void ink(int x, int y, int v) {
        if (x < 0 || y < 0 || x >= N || y >= N) return;
        uint8_t& p = px[static_cast<size_t>(y * N + x)];
        p = static_cast<uint8_t>(std::min<int>(p, std::clamp(v, 0, 255)));  // paint only darkens
    }
    // A round pen of radius r at (x, y) with an anti-aliased edge.
    void dab(double x, double y, double r, int v) {
        for (int j = static_cast<int>(y - r - 1); j <= static_cast<int>(y + r + 1); ++j)
            for (int i = static_cast<int>(x - r - 1); i <= static_cast<int>(x + r + 1); ++i) {
                double cover = std::clamp(r + 0.5 - std::hypot(i - x, j - y), 0.0, 1.0);
                if (cover > 0) ink(i, j, static_cast<int>(std::lround(255 - (255 - v) * cover)));
            }
    }
    void line(double x0, double y0, double x1, double y1, double r0, double r1, int v) {
        int steps = std::max(1, static_cast<int>(std::hypot(x1 - x0, y1 - y0) * 3));
        for (int k = 0; k <= steps; ++k) {
            double t = static_cast<double>(k) / steps;
            dab(x0 + (x1 - x0) * t, y0 + (y1 - y0) * t, r0 + (r1 - r0) * t, v);
        }
    }
};

// xorshift: the pictures' own noise.
struct Noise {
    uint32_t s;
    explicit Noise(uint32_t seed) : s(seed ? seed : 1) {}
    double next() {
        s ^= s << 13;
        s ^= s >> 17;
        s ^= s << 5;
        return (s & 0xFFFFFF) / 16777216.0;
    }
};

double Dist(int x, int y) { return std::hypot(x - C, y - C); }

// A value-noise field of cells of `cell` pixels, smoothly interpolated, in 0..1.
std::vector<double> Mottle(uint32_t seed, int cell) {
    Noise n(seed);
    int g = N / cell + 2;
    std::vector<double> grid(static_cast<size_t>(g * g));
    for (double& v : grid) v = n.next();
    std::vector<double> out(N * N);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double fx = static_cast<double>(x) / cell, fy = static_cast<double>(y) / cell;
            int ix = static_cast<int>(fx), iy = static_cast<int>(fy);
            double ax = fx - ix, ay = fy - iy;
            ax = ax * ax * (3 - 2 * ax);
            ay = ay * ay * (3 - 2 * ay);
            auto at = [&](int i, int j) { return grid[static_cast<size_t>(j * g + i)]; };
            double top = at(ix, iy) * (1 - ax) + at(ix + 1, iy) * ax;
            double bottom = at(ix, iy + 1) * (1 - ax) + at(ix + 1, iy + 1) * ax;
            out[static_cast<size_t>(y * N + x)] = top * (1 - ay) + bottom * ay;
        }
    return out;
}

Canvas Disc() {
    Canvas c;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x)
            if (Dist(x, y) <= 17) c.ink(x, y, 0);
    return c;
}

Canvas Dot() {
    Canvas c;
    c.ink(17, 17, 0);
    return c;
}

Canvas Soft() {
    Canvas c;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double t = std::min(Dist(x, y) / 16.0, 1.0);
            c.ink(x, y, static_cast<int>(std::lround(255 * t * t * (3 - 2 * t))));
        }
    return c;
}

Canvas AaDisc() {
    Canvas c;
    c.dab(C, C, 17, 0);
    return c;
}

Canvas Grain(uint32_t seed) {
    Canvas c;
    Noise n(seed);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double d = Dist(x, y) / 17.5, keep = 1.0 - d * d;  // densest at the centre
            if (n.next() < keep) c.ink(x, y, static_cast<int>(n.next() * 140));
        }
    return c;
}

Canvas MottleDisc() {
    Canvas c;
    std::vector<double> m = Mottle(7, 4);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double edge = std::clamp((17.5 - Dist(x, y)) / 4.0, 0.0, 1.0);  // soft edge
            double grey = m[static_cast<size_t>(y * N + x)] * 31;               // lightest about 31
            c.ink(x, y, static_cast<int>(std::lround(255 - (255 - grey) * edge)));
        }
    return c;
}

Canvas Hairs() {
    Canvas c;
    Noise n(15);
    for (int k = -30; k <= 30; k += 3) {
        double run = n.next() * 0.6 + 0.3;
        for (int i = 0; i < N; ++i) {
            if (n.next() > run + 0.3) continue;  // broken
            int x = i, y = i + k;
            if (Dist(x, y) <= 17) c.ink(x, y, 20 + static_cast<int>(n.next() * 60));
        }
    }
    return c;
}

Canvas Rim() {
    Canvas c;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double d = Dist(x, y);
            if (d <= 17) c.ink(x, y, d > 13.5 ? 10 : 128);
        }
    return c;
}

Canvas Blots() {
    Canvas c;
    Noise n(17);
    for (int k = 0; k < 12; ++k) {
        double a = n.next() * 2 * Pi, r = std::sqrt(n.next()) * 13;
        double x = C + std::cos(a) * r, y = C + std::sin(a) * r;
        for (int p = 0; p < 4; ++p) c.dab(x + (n.next() - 0.5) * 3, y + (n.next() - 0.5) * 3, 1 + n.next() * 2, 0);
    }
    return c;
}

Canvas Band() {
    Canvas c;
    Noise n(19);
    for (int y = 10; y <= 24; ++y)
        for (int x = 1; x < N - 1; ++x)
            if (n.next() < 0.45) c.ink(x, y, static_cast<int>(n.next() * 90));
    return c;
}

Canvas Grass() {
    Canvas c;
    Noise n(20);
    for (int k = 0; k < 9; ++k) {
        double a = -Pi / 2 + (k - 4) * 0.16 + (n.next() - 0.5) * 0.1;
        double len = 20 + n.next() * 12;
        c.line(C, 33, C + std::cos(a) * len, 33 + std::sin(a) * len, 1.2, 0.2, 25);
    }
    return c;
}

void LeafShape(Canvas& c, double cx, double cy, double len, double width, double angle, int v) {
    // A pointed leaf along `angle`: width swells in the middle and comes to a point at both ends.
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double dx = x - cx, dy = y - cy;
            double u = dx * std::cos(angle) + dy * std::sin(angle), w = -dx * std::sin(angle) + dy * std::cos(angle);
            double t = u / len;
            if (t < -1 || t > 1) continue;
            double half = width * (1 - t * t);
            double cover = std::clamp(half + 0.5 - std::fabs(w), 0.0, 1.0);
            if (cover > 0) c.ink(x, y, static_cast<int>(std::lround(255 - (255 - v) * cover)));
        }
}

Canvas Leaf() {
    Canvas c;
    LeafShape(c, C, C, 16, 6, Pi / 2, 15);
    LeafShape(c, C - 6, C + 2, 8, 3, Pi / 2 + 0.8, 15);  // the two side lobes
    LeafShape(c, C + 6, C + 2, 8, 3, Pi / 2 - 0.8, 15);
    return c;
}

Canvas Stems() {
    Canvas c;
    for (int k = 0; k < 4; ++k) {
        double bend = (k - 1.5) * 5;
        double px = 10 + k * 5, py = 34;
        for (int s = 1; s <= 30; ++s) {
            double t = s / 30.0;
            double x = 10 + k * 5 + bend * t * t, y = 34 - 32 * t;
            c.line(px, py, x, y, 0.6, 0.6, 30);
            px = x;
            py = y;
        }
    }
    return c;
}

Canvas Frond() {
    Canvas c;
    double px = C, py = 34;
    for (int s = 1; s <= 16; ++s) {
        double t = s / 16.0;
        double x = C + 4 * t * t, y = 34 - 32 * t;
        c.line(px, py, x, y, 0.8, 0.8, 20);
        double leaflet = 8 * (1 - t) + 2, side = (s % 2 ? 1 : -1);
        c.line(x, y, x + side * leaflet, y - leaflet * 0.4, 1.1, 0.3, 30);
        px = x;
        py = y;
    }
    return c;
}

Canvas Foam() {
    Canvas c;
    Noise n(25);
    for (int k = 0; k < 12; ++k) {
        double x = 4 + n.next() * 27, y = 4 + n.next() * 27, r = 1 + n.next() * 3;
        if (k % 3 == 0) {
            c.dab(x, y, 0.8, 20);  // a speck
            continue;
        }
        for (int a = 0; a < 24; ++a) c.dab(x + std::cos(a * Pi / 12) * r, y + std::sin(a * Pi / 12) * r, 0.4, 40);
    }
    return c;
}

Canvas Bubbles() {
    Canvas c;
    const double blobs[2][3] = {{12, 13, 9}, {24, 23, 7.5}};
    for (const auto& b : blobs)
        for (int y = 0; y < N; ++y)
            for (int x = 0; x < N; ++x) {
                double d = std::hypot(x - b[0], y - b[1]) / b[2];
                if (d <= 1) c.ink(x, y, static_cast<int>(std::lround(40 + 150 * (1 - d))));  // lighter in the middle
            }
    return c;
}

Canvas Leaf2() {
    Canvas c;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double a = std::atan2(y - C, x - C), r = 12.5 + 3.5 * std::cos(5 * a);
            double cover = std::clamp(r + 0.5 - Dist(x, y), 0.0, 1.0);
            if (cover > 0) c.ink(x, y, static_cast<int>(std::lround(255 - 235 * cover)));
        }
    c.line(C, C, C, 34, 0.7, 0.7, 0);
    return c;
}

Canvas Leaves() {
    Canvas c;
    Noise n(40);
    for (int k = 0; k < 8; ++k) {
        double a = k * Pi / 4 + n.next() * 0.5, r = 5 + n.next() * 8;
        LeafShape(c, C + std::cos(a) * r, C + std::sin(a) * r, 4 + n.next() * 2, 2, a + 0.6, 30);
    }
    return c;
}

Canvas Wash() {
    Canvas c;
    std::vector<double> m = Mottle(45, 3);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double d = Dist(x, y);
            if (d > 17) continue;
            double grey = 40 + m[static_cast<size_t>(y * N + x)] * 90;
            if (d > 14.5) grey *= 0.35;  // the darker rim
            c.ink(x, y, static_cast<int>(std::lround(grey)));
        }
    return c;
}
}  // namespace

// In the order of the palette's pictures; one row for each picture box.
const StockBrush StockBrushTable[] = {
    {"disc", [] { return Disc().px; }},
    {"dot", [] { return Dot().px; }},
    {"soft", [] { return Soft().px; }},
    {"aa-disc", [] { return AaDisc().px; }},
    {"grain", [] { return Grain(12).px; }},
    {"grain", [] { return Grain(14).px; }},
    {"mottle", [] { return MottleDisc().px; }},
    {"hairs", [] { return Hairs().px; }},
    {"rim", [] { return Rim().px; }},
    {"blots", [] { return Blots().px; }},
    {"band", [] { return Band().px; }},
    {"grass", [] { return Grass().px; }},
    {"leaf", [] { return Leaf().px; }},
    {"stems", [] { return Stems().px; }},
    {"frond", [] { return Frond().px; }},
    {"foam", [] { return Foam().px; }},
    {"bubbles", [] { return Bubbles().px; }},
    {"leaf 2", [] { return Leaf2().px; }},
    {"leaves", [] { return Leaves().px; }},
    {"wash", [] { return Wash().px; }},
};

static_assert(StockBrushTableSize == Form2::StockBrushCount, "one stock brush for each palette picture");

std::vector<uint8_t> MakeStockBrush(int i) {
    if (i < 0 || i >= StockBrushTableSize) return Canvas().px;  // blank: paints nothing
    return StockBrushTable[i].make();
}
