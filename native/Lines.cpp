// The line drawers: midpoint, bilinear anti-aliased and colour ramp.
#include "native/Lines.h"

#include <cmath>
#include <cstdlib>

#include "native/Rounding.h"

namespace kwline {
namespace {
using kwround::RoundD;
using kwround::RoundF;

inline size_t At(const RgbPlanes& p, int x, int y) {
    return static_cast<size_t>(y) * p.stride + static_cast<size_t>(x);
}

inline void Plot(const RgbPlanes& p, int x, int y, uint8_t R, uint8_t G, uint8_t B, int W, int H) {
    if (x < 0 || y < 0 || x > W || y > H) return;
    const size_t i = At(p, x, y);
    p.r[i] = R;
    p.g[i] = G;
    p.b[i] = B;
}

// Two stages, each rounded: the first weighs along x, the second along y.
inline uint8_t Stage(uint8_t old, float C, float wOld1, float wC1, float wOld2, float wC2) {
    const int t = RoundF(static_cast<float>(old) * wOld1 + C * wC1);
    const int v = RoundF(static_cast<float>(t) * wOld2 + C * wC2);
    return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
}

inline void BlendPixel(const RgbPlanes& p, size_t i, const float c[3], float w1, float k1, float w2, float k2) {
    p.r[i] = Stage(p.r[i], c[0], w1, k1, w2, k2);
    p.g[i] = Stage(p.g[i], c[1], w1, k1, w2, k2);
    p.b[i] = Stage(p.b[i], c[2], w1, k1, w2, k2);
}

// The 2 x 2 stamp at (px, py): the pixel nearest the position takes most of C.
inline void Stamp(const RgbPlanes& p, float px, float py, const float c[3], int W, int H) {
    const float fix = std::floor(px), fiy = std::floor(py);
    if (!(fix >= 0 && fiy >= 0 && fix < static_cast<float>(W) && fiy < static_cast<float>(H))) return;
    const int ix = static_cast<int>(fix), iy = static_cast<int>(fiy);
    const float fx = px - fix, gx = 1 - fx, fy = py - fiy, gy = 1 - fy;
    const size_t i = At(p, ix, iy);
    BlendPixel(p, i, c, fx, gx, fy, gy);
    BlendPixel(p, i + 1, c, gx, fx, fy, gy);
    BlendPixel(p, i + p.stride, c, fx, gx, gy, fy);
    BlendPixel(p, i + p.stride + 1, c, gx, fx, gy, fy);
}

// D + 1 stamps from (x1, y1) by steps of length about one pixel.
void StampRun(const RgbPlanes& p, float x1, float y1, float dx, float dy, long D, const float c[3], int W, int H) {
    const float sx = (dx == 0 || D == 0) ? 0.0f : dx / static_cast<float>(D);
    const float sy = (dy == 0 || D == 0) ? 0.0f : dy / static_cast<float>(D);
    float px = x1, py = y1;
    for (long i = 0; i <= D; ++i) {
        Stamp(p, px, py, c, W, H);
        px += sx;
        py += sy;
    }
}
}  // namespace

void MidPointLine(const RgbPlanes& p, int X1, int Y1, int X2, int Y2, uint8_t R, uint8_t G, uint8_t B, int W, int H) {
    const int sx = X2 >= X1 ? 1 : -1, sy = Y2 >= Y1 ? 1 : -1;
    const long adx = std::labs(static_cast<long>(X2) - X1), ady = std::labs(static_cast<long>(Y2) - Y1);
    int x = X1, y = Y1;
    Plot(p, x, y, R, G, B, W, H);
    // Each octant is the first one mirrored (signs) or with the axes exchanged.
    const bool shallow = adx >= ady;
    const long major = shallow ? adx : ady, minor = shallow ? ady : adx;
    long d = 2 * minor - major;
    for (long i = 0; i < major; ++i) {
        if (d <= 0) {
            d += 2 * minor;
        } else {
            d += 2 * (minor - major);
            if (shallow) y += sy;
            else x += sx;
        }
        if (shallow) x += sx;
        else y += sy;
        Plot(p, x, y, R, G, B, W, H);
    }
}

void AALine(const RgbPlanes& p, int X1, int Y1, int X2, int Y2, uint8_t R, uint8_t G, uint8_t B, int W, int H) {
    const double dx = static_cast<double>(X2) - X1, dy = static_cast<double>(Y2) - Y1;
    const long D = RoundD(std::sqrt(dx * dx + dy * dy));
    const float c[3] = {float(R), float(G), float(B)};
    StampRun(p, static_cast<float>(X1), static_cast<float>(Y1), static_cast<float>(dx), static_cast<float>(dy), D, c,
             W, H);
}

void AAFloatLine(const RgbPlanes& p, float X1, float Y1, float X2, float Y2, uint8_t R, uint8_t G, uint8_t B, int W,
                 int H) {
    const float dx = X2 - X1, dy = Y2 - Y1;
    const double len = std::sqrt(static_cast<double>(dx) * dx + static_cast<double>(dy) * dy);
    if (!std::isfinite(len) || len > 1e7) return;  // no line worth a million stamps
    const float c[3] = {float(R), float(G), float(B)};
    StampRun(p, X1, Y1, dx, dy, RoundD(len), c, W, H);
}

void GradAALine(const RgbPlanes& p, int X1, int Y1, int X2, int Y2, int R1, int G1, int B1, int R2, int G2, int B2,
                int W, int H) {
    const double dx = static_cast<double>(X2) - X1, dy = static_cast<double>(Y2) - Y1;
    const long D = RoundD(std::sqrt(dx * dx + dy * dy));
    const float sx = D == 0 ? 0.0f : static_cast<float>(dx) / static_cast<float>(D);
    const float sy = D == 0 ? 0.0f : static_cast<float>(dy) / static_cast<float>(D);
    const float n = D == 0 ? 1.0f : static_cast<float>(D);
    const float step[3] = {(R2 - R1) / n, (G2 - G1) / n, (B2 - B1) / n};
    float c[3] = {static_cast<float>(R1), static_cast<float>(G1), static_cast<float>(B1)};
    float px = static_cast<float>(X1), py = static_cast<float>(Y1);
    for (long i = 0; i <= D; ++i) {
        const float fx = std::floor(px), fy = std::floor(py);
        if (fx >= 0 && fy >= 0 && fx < static_cast<float>(W) && fy < static_cast<float>(H)) {
            const size_t at = At(p, static_cast<int>(fx), static_cast<int>(fy));
            uint8_t* planes[3] = {p.r, p.g, p.b};
            for (int k = 0; k < 3; ++k) {
                const int v = RoundF(static_cast<float>(planes[k][at]) * 0.8f + (c[k] > 255 ? 255 : c[k]) * 0.2f);
                planes[k][at] = static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
            }
        }
        for (int k = 0; k < 3; ++k) c[k] = c[k] + step[k] > 255 ? 255 : c[k] + step[k];
        px += sx;
        py += sy;
    }
}

}  // namespace kwline
