// Custom brush kernels: one clipped scan shared by every routine, each routine
// giving the paint of a pixel and its opacity.
#include "native/CustomBrushKernels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kwbrush {
namespace {

// The part of the stamp on the picture: brush columns u0..u1, rows v0..v1.
struct Clip {
    int u0, u1, v0, v1;
    bool empty() const { return u0 > u1 || v0 > v1; }
};

Clip ClipStamp(const BrushPlanes& brush, const CustomTarget& t, int X, int Y) {
    Clip c{std::max(0, -X), std::min(brush.w - 1, t.W - 1 - X), std::max(0, -Y), std::min(brush.h - 1, t.H - 1 - Y)};
    if (!brush.a || !t.r || brush.w <= 0 || brush.h <= 0) c.u1 = -1;
    return c;
}

inline int HoldOpacity(int o) { return std::clamp(o, 0, 255); }

// One channel: coverage, then the alpha plane.
inline uint8_t Mix(int old, int paint, int a, int e) {
    int v = (old * (255 - a) + paint * a) / 255;
    if (e < 255) v = (old * (255 - e) + v * e) / 255;
    return static_cast<uint8_t>(v);
}

// Scans the clipped stamp. paint(x, y, at, u, v, rgb) fills the paint of a
// pixel and returns its opacity, or -1 to leave the pixel. Rows and columns run
// backwards when asked, so that a source behind the scan is read before it changes.
template <typename Paint>
void Scan(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, uint8_t alphaOff, bool revRows,
          bool revCols, Paint paint) {
    const Clip c = ClipStamp(brush, t, X, Y);
    if (c.empty()) return;
    const int rows = c.v1 - c.v0, cols = c.u1 - c.u0;
    for (int j = 0; j <= rows; ++j) {
        const int v = revRows ? c.v1 - j : c.v0 + j;
        const int y = Y + v;
        const uint8_t* ba = brush.a + static_cast<size_t>(v) * brush.stride;
        const size_t row = static_cast<size_t>(y) * t.stride;
        for (int i = 0; i <= cols; ++i) {
            const int u = revCols ? c.u1 - i : c.u0 + i;
            const int cover = ba[u];
            if (cover == 0) continue;
            const int x = X + u;
            const size_t at = row + static_cast<size_t>(x);
            int rgb[3];
            const int opacity = paint(x, y, at, u, v, rgb);
            if (opacity < 0) continue;
            const int a = cover * opacity / 255;
            const int e = t.a[at] | alphaOff;
            t.r[at] = Mix(t.r[at], rgb[0], a, e);
            t.g[at] = Mix(t.g[at], rgb[1], a, e);
            t.b[at] = Mix(t.b[at], rgb[2], a, e);
        }
    }
}

inline int Clamp255(int v) { return v < 0 ? 0 : v > 255 ? 255 : v; }

// The paper under a pixel: bumpiness lifts the paint, drybrush lowers the opacity.
struct PaperStep {
    const PaperPlanes& p;
    bool bump, dry;
    int n;
    float strength;
    PaperStep(const PaperPlanes& paper, int flags, float s)
        : p(paper),
          bump((flags & Bumpiness) && paper.w > 0 && paper.h > 0 && paper.f),
          dry((flags & Drybrush) && paper.w > 0 && paper.h > 0 && paper.b),
          n(flags & Negative ? 255 : 0),
          strength(s / 100.0f) {}
    size_t At(int x, int y) const { return static_cast<size_t>(y % p.h) * p.stride + static_cast<size_t>(x % p.w); }
    void Lift(int x, int y, int* rgb) const {
        if (!bump) return;
        const int q = static_cast<int>(std::nearbyint(p.f[At(x, y)] * 256.0f));
        for (int k = 0; k < 3; ++k) rgb[k] = Clamp255(rgb[k] + q);
    }
    int Opacity(int x, int y, int opacity) const {
        if (!dry) return opacity;
        const float lost = static_cast<float>(std::abs(n - p.b[At(x, y)])) * strength;
        return std::max(0, static_cast<int>(std::nearbyint(static_cast<float>(opacity) - lost)));
    }
};

inline void Through(const uint8_t* table, const CustomTarget& t, size_t at, int* rgb) {
    rgb[0] = table[t.r[at] + 256 * rgb[0]];
    rgb[1] = table[t.g[at] + 256 * rgb[1]];
    rgb[2] = table[t.b[at] + 256 * rgb[2]];
}

inline int PositiveMod(int a, int m) {
    const int r = a % m;
    return r < 0 ? r + m : r;
}
}  // namespace

void CustomBrushBlit(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, int Opacity, uint8_t AlphaOff) {
    const int o = HoldOpacity(Opacity);
    const Clip c = ClipStamp(brush, t, X, Y);
    if (c.empty() || o == 0) return;
    // The coverage depends on the brush byte alone: one table per stamp.
    uint8_t cover[256];
    for (int k = 0; k < 256; ++k) cover[k] = static_cast<uint8_t>(k * o / 255);
    const bool masked = AlphaOff != 255;
    const uint8_t* src[3] = {brush.r, brush.g, brush.b};
    uint8_t* dst[3] = {t.r, t.g, t.b};
    const int n = c.u1 - c.u0 + 1;
    for (int v = c.v0; v <= c.v1; ++v) {
        const size_t from = static_cast<size_t>(v) * brush.stride + static_cast<size_t>(c.u0);
        const size_t to = static_cast<size_t>(Y + v) * t.stride + static_cast<size_t>(X + c.u0);
        const uint8_t* ba = brush.a + from;
        const uint8_t* ea = t.a + to;
        // One plane at a time: three short streams the compiler can keep in registers.
        for (int ch = 0; ch < 3; ++ch) {
            const uint8_t* s = src[ch] + from;
            uint8_t* d = dst[ch] + to;
            if (!masked) {
                for (int i = 0; i < n; ++i) {
                    const int a = cover[ba[i]];
                    d[i] = static_cast<uint8_t>((d[i] * (255 - a) + s[i] * a) / 255);
                }
                continue;
            }
            for (int i = 0; i < n; ++i) {
                const int a = cover[ba[i]];
                const int old = d[i];
                int nv = (old * (255 - a) + s[i] * a) / 255;
                const int e = ea[i] | AlphaOff;
                if (e < 255) nv = (old * (255 - e) + nv * e) / 255;
                d[i] = static_cast<uint8_t>(nv);
            }
        }
    }
}

void Full_CustomBrushBlit(const BrushPlanes& brush, const CustomTarget& t, const uint8_t* Table,
                          const PaperPlanes& paper, int X, int Y, int Opacity, uint8_t AlphaOff, int UseTable) {
    const int o = HoldOpacity(Opacity);
    const PaperStep step(paper, Bumpiness, 0);
    const uint8_t* table = UseTable ? Table : nullptr;
    Scan(brush, t, X, Y, AlphaOff, false, false, [&](int x, int y, size_t at, int u, int v, int* rgb) {
        const size_t src = static_cast<size_t>(v) * brush.stride + static_cast<size_t>(u);
        rgb[0] = brush.r[src];
        rgb[1] = brush.g[src];
        rgb[2] = brush.b[src];
        if (table) Through(table, t, at, rgb);
        step.Lift(x, y, rgb);
        return o;
    });
}

void CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, int DabR, int DabG, int DabB, int X, int Y,
                     int Opacity, uint8_t AlphaOff) {
    const int o = HoldOpacity(Opacity);
    const int c[3] = {Clamp255(DabR), Clamp255(DabG), Clamp255(DabB)};
    Scan(brush, t, X, Y, AlphaOff, false, false, [&](int, int, size_t, int, int, int* rgb) {
        rgb[0] = c[0];
        rgb[1] = c[1];
        rgb[2] = c[2];
        return o;
    });
}

void Fast_CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, int DabR, int DabG, int DabB, int X,
                          int Y, int Opacity, uint8_t AlphaOff) {
    const int o = HoldOpacity(Opacity);
    const Clip c = ClipStamp(brush, t, X, Y);
    if (c.empty() || o == 0) return;
    // The coverage and the colour's share depend on the brush byte alone: one
    // table of 256 entries per stamp replaces two multiplications per pixel.
    uint8_t cover[256];
    int share[3][256];
    const int colour[3] = {Clamp255(DabR), Clamp255(DabG), Clamp255(DabB)};
    for (int k = 0; k < 256; ++k) {
        cover[k] = static_cast<uint8_t>(k * o / 255);
        for (int ch = 0; ch < 3; ++ch) share[ch][k] = colour[ch] * cover[k];
    }
    uint8_t* planes[3] = {t.r, t.g, t.b};
    for (int v = c.v0; v <= c.v1; ++v) {
        const uint8_t* ba = brush.a + static_cast<size_t>(v) * brush.stride;
        const size_t row = static_cast<size_t>(Y + v) * t.stride + static_cast<size_t>(X);
        for (int u = c.u0; u <= c.u1; ++u) {
            const int a = cover[ba[u]];
            if (a == 0) continue;
            const size_t at = row + static_cast<size_t>(u);
            const int e = t.a[at] | AlphaOff;
            for (int ch = 0; ch < 3; ++ch) {
                const int old = planes[ch][at];
                int nv = (old * (255 - a) + share[ch][ba[u]]) / 255;
                if (e < 255) nv = (old * (255 - e) + nv * e) / 255;
                planes[ch][at] = static_cast<uint8_t>(nv);
            }
        }
    }
}

void Full_CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, const uint8_t* Table, int DabR, int DabG,
                          int DabB, const PaperPlanes& paper, float Strength, int X, int Y, int Opacity,
                          uint8_t AlphaOff, int UseTable, int Flags) {
    const int o = HoldOpacity(Opacity);
    const PaperStep step(paper, Flags, Strength);
    const uint8_t* table = UseTable ? Table : nullptr;
    const int c[3] = {Clamp255(DabR), Clamp255(DabG), Clamp255(DabB)};
    Scan(brush, t, X, Y, AlphaOff, false, false, [&](int x, int y, size_t at, int, int, int* rgb) {
        rgb[0] = c[0];
        rgb[1] = c[1];
        rgb[2] = c[2];
        if (table) Through(table, t, at, rgb);
        step.Lift(x, y, rgb);
        return step.Opacity(x, y, o);
    });
}

void Paper_CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, int DabR, int DabG, int DabB, int X,
                           int Y, int Opacity, uint8_t AlphaOff, const PaperPlanes& paper, float Strength, int Flags) {
    Full_CustomMatteBlit(brush, t, nullptr, DabR, DabG, DabB, paper, Strength, X, Y, Opacity, AlphaOff, 0, Flags);
}

void RubBrushBlit(const BrushPlanes& brush, const CustomTarget& t, const SwapPlanes& swap, int X, int Y, int Opacity,
                  uint8_t AlphaOff) {
    if (!swap.r || !swap.g || !swap.b) return;
    const int o = HoldOpacity(Opacity);
    Scan(brush, t, X, Y, AlphaOff, false, false, [&](int, int, size_t at, int, int, int* rgb) {
        rgb[0] = swap.r[at];
        rgb[1] = swap.g[at];
        rgb[2] = swap.b[at];
        return o;
    });
}

void PatBrushBlit(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, int Opacity, uint8_t AlphaOff,
                  int OrgX, int OrgY) {
    if (brush.h <= 0 || brush.w <= 0) return;
    const int o = HoldOpacity(Opacity);
    Scan(brush, t, X, Y, AlphaOff, false, false, [&](int x, int y, size_t, int, int, int* rgb) {
        const size_t src = static_cast<size_t>(PositiveMod(y + OrgY, brush.h)) * brush.stride +
                           static_cast<size_t>(PositiveMod(x + OrgX, brush.w));
        rgb[0] = brush.r[src];
        rgb[1] = brush.g[src];
        rgb[2] = brush.b[src];
        return o;
    });
}

void CloneBrushBlit(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, int Opacity, uint8_t AlphaOff,
                    int Kind, int DX, int DY) {
    (void)Kind;  // smear and panto differ only in where the caller takes the offset
    const int o = HoldOpacity(Opacity);
    Scan(brush, t, X, Y, AlphaOff, DY > 0, DX > 0, [&](int x, int y, size_t, int, int, int* rgb) {
        const int sx = x - DX, sy = y - DY;
        if (sx < 0 || sy < 0 || sx > t.W - 1 || sy > t.H - 1) return -1;
        const size_t src = static_cast<size_t>(sy) * t.stride + static_cast<size_t>(sx);
        rgb[0] = t.r[src];
        rgb[1] = t.g[src];
        rgb[2] = t.b[src];
        return o;
    });
}

}  // namespace kwbrush
