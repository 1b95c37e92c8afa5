// Resampling kernels for the buffer's Resample command.
#include "native/Resample.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kwresample {
namespace {
inline size_t At(int x, int y, int w) { return static_cast<size_t>(y) * (static_cast<size_t>(w) + 1) + x; }
bool Empty(int sw, int sh, int dw, int dh) { return sw < 1 || sh < 1 || dw < 1 || dh < 1; }
}  // namespace

void Nearest(const uint8_t* src, int sw, int sh, uint8_t* dst, int dw, int dh) {
    if (Empty(sw, sh, dw, dh)) return;
    for (int y = 0; y < dh; ++y) {
        int sy = static_cast<int>(static_cast<long long>(y) * sh / dh);
        for (int x = 0; x < dw; ++x) {
            int sx = static_cast<int>(static_cast<long long>(x) * sw / dw);
            dst[At(x, y, dw)] = src[At(sx, sy, sw)];
        }
    }
}

void Bilinear(const uint8_t* src, int sw, int sh, uint8_t* dst, int dw, int dh) {
    if (Empty(sw, sh, dw, dh)) return;
    // Pixel centres map onto pixel centres; edges clamp.
    const double fx = static_cast<double>(sw) / dw, fy = static_cast<double>(sh) / dh;
    for (int y = 0; y < dh; ++y) {
        double py = std::clamp((y + 0.5) * fy - 0.5, 0.0, static_cast<double>(sh - 1));
        int y0 = static_cast<int>(py);
        int y1 = std::min(y0 + 1, sh - 1);
        double ty = py - y0;
        for (int x = 0; x < dw; ++x) {
            double px = std::clamp((x + 0.5) * fx - 0.5, 0.0, static_cast<double>(sw - 1));
            int x0 = static_cast<int>(px);
            int x1 = std::min(x0 + 1, sw - 1);
            double tx = px - x0;
            double top = src[At(x0, y0, sw)] * (1 - tx) + src[At(x1, y0, sw)] * tx;
            double bot = src[At(x0, y1, sw)] * (1 - tx) + src[At(x1, y1, sw)] * tx;
            dst[At(x, y, dw)] = static_cast<uint8_t>(std::nearbyint(std::clamp(top * (1 - ty) + bot * ty, 0.0, 255.0)));
        }
    }
}

void BilinearPlus(const uint8_t* src, int sw, int sh, uint8_t* dst, int dw, int dh) {
    if (Empty(sw, sh, dw, dh)) return;
    if (dw >= sw && dh >= sh) return Bilinear(src, sw, sh, dst, dw, dh);
    // Box average over the exact source area of each destination pixel, with
    // partial coverage of the border pixels weighted by how much they fall inside.
    const double fx = static_cast<double>(sw) / dw, fy = static_cast<double>(sh) / dh;
    for (int y = 0; y < dh; ++y) {
        double y0 = y * fy, y1 = (y + 1) * fy;
        int iy0 = static_cast<int>(y0), iy1 = std::min(static_cast<int>(std::ceil(y1)), sh);
        for (int x = 0; x < dw; ++x) {
            double x0 = x * fx, x1 = (x + 1) * fx;
            int ix0 = static_cast<int>(x0), ix1 = std::min(static_cast<int>(std::ceil(x1)), sw);
            double sum = 0, area = 0;
            for (int sy = iy0; sy < iy1; ++sy) {
                double wy = std::min<double>(sy + 1, y1) - std::max<double>(sy, y0);
                if (wy <= 0) continue;
                for (int sx = ix0; sx < ix1; ++sx) {
                    double wx = std::min<double>(sx + 1, x1) - std::max<double>(sx, x0);
                    if (wx <= 0) continue;
                    sum += src[At(sx, sy, sw)] * wx * wy;
                    area += wx * wy;
                }
            }
            dst[At(x, y, dw)] = static_cast<uint8_t>(std::nearbyint(area > 0 ? sum / area : 0));
        }
    }
}
}  // namespace kwresample
