// Gradient noise: one permutation of 0..255 hashes the lattice, 256 unit
// gradients serve the plane and the twelve cube-edge directions the volume,
// and the cubic s-curve 3t^2 - 2t^3 blends the corners.
#include "native/Noise.h"

#include <array>
#include <cmath>
#include <new>
#include <vector>

namespace kwfilter {
namespace {
struct Tables {
    std::array<uint8_t, 256> perm;
    std::array<float, 256> gx, gy;
    Tables() {
        for (int i = 0; i < 256; ++i) perm[i] = static_cast<uint8_t>(i);
        // A fixed shuffle: the lattice is the same in every run of the program.
        uint32_t state = 0x2545F491u;
        for (int i = 255; i > 0; --i) {
            state = state * 1664525u + 1013904223u;
            const int j = static_cast<int>((state >> 8) % static_cast<uint32_t>(i + 1));
            std::swap(perm[i], perm[j]);
        }
        for (int i = 0; i < 256; ++i) {
            const double angle = (perm[(i * 7 + 3) & 255] + 0.5) * (6.283185307179586 / 256.0);
            gx[i] = static_cast<float>(std::cos(angle));
            gy[i] = static_cast<float>(std::sin(angle));
        }
    }
};
const Tables& T() {
    static const Tables t;
    return t;
}

inline int Hash(const Tables& t, int ix, int iy) { return t.perm[(t.perm[ix & 255] + iy) & 255]; }
inline int Hash3(const Tables& t, int ix, int iy, int iz) {
    return t.perm[(t.perm[(t.perm[ix & 255] + iy) & 255] + iz) & 255];
}
inline float Fade(float t) { return t * t * (3.0f - 2.0f * t); }
inline float Lerp(float u, float a, float b) { return a + u * (b - a); }

// The twelve directions to the edges of a cube, the volume's gradients.
constexpr float Edge[12][3] = {{1, 1, 0}, {-1, 1, 0}, {1, -1, 0}, {-1, -1, 0}, {1, 0, 1}, {-1, 0, 1},
                               {1, 0, -1}, {-1, 0, -1}, {0, 1, 1}, {0, -1, 1}, {0, 1, -1}, {0, -1, -1}};
inline float Dot3(int h, float x, float y, float z) {
    const float* g = Edge[h % 12];
    return g[0] * x + g[1] * y + g[2] * z;
}

// One lattice coordinate: the cell below it and the place inside the cell.
struct Axis {
    int i;
    float f;
};
inline Axis Split(float v) {
    const float fl = std::floor(v);
    return {static_cast<int>(fl), v - fl};
}
}  // namespace

float noise2(const float* vec) {
    const Tables& t = T();
    const Axis x = Split(vec[0]), y = Split(vec[1]);
    const float fx1 = x.f - 1.0f, fy1 = y.f - 1.0f;
    const int h00 = Hash(t, x.i, y.i), h10 = Hash(t, x.i + 1, y.i);
    const int h01 = Hash(t, x.i, y.i + 1), h11 = Hash(t, x.i + 1, y.i + 1);
    // Each corner's term is its x product plus its y product, in that order:
    // the row kernel below forms the y products once a row and must agree.
    const float a = t.gx[h00] * x.f + t.gy[h00] * y.f;
    const float b = t.gx[h10] * fx1 + t.gy[h10] * y.f;
    const float c = t.gx[h01] * x.f + t.gy[h01] * fy1;
    const float d = t.gx[h11] * fx1 + t.gy[h11] * fy1;
    const float u = Fade(x.f);
    return Lerp(Fade(y.f), Lerp(u, a, b), Lerp(u, c, d));
}

float noise3(const float* vec) {
    const Tables& t = T();
    const Axis x = Split(vec[0]), y = Split(vec[1]), z = Split(vec[2]);
    const float fx1 = x.f - 1, fy1 = y.f - 1, fz1 = z.f - 1;
    const float u = Fade(x.f), v = Fade(y.f), w = Fade(z.f);
    auto corner = [&](int dx, int dy, int dz) {
        return Dot3(Hash3(t, x.i + dx, y.i + dy, z.i + dz), dx ? fx1 : x.f, dy ? fy1 : y.f, dz ? fz1 : z.f);
    };
    const float near = Lerp(v, Lerp(u, corner(0, 0, 0), corner(1, 0, 0)), Lerp(u, corner(0, 1, 0), corner(1, 1, 0)));
    const float far = Lerp(v, Lerp(u, corner(0, 0, 1), corner(1, 0, 1)), Lerp(u, corner(0, 1, 1), corner(1, 1, 1)));
    return Lerp(w, near, far);
}

// ---- the octave sum a row at a time
// Per octave the column coordinates do not depend on the row: their cells,
// fractions and s-curve are worked out once. The columns of one cell form a
// run, inside which the four corners' gradients and y products are constants.
struct PerlinColumns {
    struct Run {
        int cell, x0, x1;  // columns x0..x1-1 lie in cell `cell`
    };
    struct Octave {
        double s, o;
        std::vector<float> fx, fx1, u;
        std::vector<Run> runs;
    };
    int W = 0;
    std::vector<Octave> octaves;
};

PerlinColumns* MakePerlinColumns(int W, int K, int scale) {
    auto* pc = new PerlinColumns;
    pc->W = W < 0 ? 0 : W;
    for (int i = 1; i <= K; ++i) {
        PerlinColumns::Octave oc;
        oc.s = static_cast<double>(scale) * i * 5;
        oc.o = 100.0 * i;
        oc.fx.resize(pc->W), oc.fx1.resize(pc->W), oc.u.resize(pc->W);
        for (int x = 0; x < pc->W; ++x) {
            const Axis a = Split(static_cast<float>(x / oc.s + oc.o));
            oc.fx[x] = a.f;
            oc.fx1[x] = a.f - 1.0f;
            oc.u[x] = Fade(a.f);
            if (oc.runs.empty() || oc.runs.back().cell != a.i) oc.runs.push_back({a.i, x, x});
            oc.runs.back().x1 = x + 1;
        }
        pc->octaves.push_back(std::move(oc));
    }
    return pc;
}

void FreePerlinColumns(PerlinColumns* columns) { delete columns; }

void PerlinOctaveRow(const PerlinColumns* pc, double y, float* out) {
    const Tables& t = T();
    for (int x = 0; x < pc->W; ++x) out[x] = 0.0f;
    for (const PerlinColumns::Octave& oc : pc->octaves) {
        const Axis ay = Split(static_cast<float>(y / oc.s + oc.o));
        const float fy1 = ay.f - 1.0f, v = Fade(ay.f);
        const float* fx = oc.fx.data();
        const float* fx1 = oc.fx1.data();
        const float* uu = oc.u.data();
        for (const PerlinColumns::Run& r : oc.runs) {
            const int h00 = Hash(t, r.cell, ay.i), h10 = Hash(t, r.cell + 1, ay.i);
            const int h01 = Hash(t, r.cell, ay.i + 1), h11 = Hash(t, r.cell + 1, ay.i + 1);
            const float g00 = t.gx[h00], g10 = t.gx[h10], g01 = t.gx[h01], g11 = t.gx[h11];
            const float c00 = t.gy[h00] * ay.f, c10 = t.gy[h10] * ay.f;
            const float c01 = t.gy[h01] * fy1, c11 = t.gy[h11] * fy1;
            for (int x = r.x0; x < r.x1; ++x) {
                const float a = g00 * fx[x] + c00, b = g10 * fx1[x] + c10;
                const float c = g01 * fx[x] + c01, d = g11 * fx1[x] + c11;
                const float n = Lerp(v, Lerp(uu[x], a, b), Lerp(uu[x], c, d));
                out[x] = n * 256 + out[x] + 128;
            }
        }
    }
}

float PerlinOctaves(float t, float v, int K, int scale) {
    float acc = 0.0f;
    for (int i = 1; i <= K; ++i) {
        const double s = static_cast<double>(scale) * i * 5, o = 100.0 * i;
        const float vec[2] = {static_cast<float>(t / s + o), static_cast<float>(v / s + o)};
        acc = noise2(vec) * 256 + acc + 128;
    }
    return acc;
}
}  // namespace kwfilter
