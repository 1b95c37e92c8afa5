// The six stock papers, made rather than stored: tileable grey height fields of
// 160 by 160 pixels from periodic value noise. Each lattice period divides 160,
// so the right edge meets the left and the bottom meets the top without a seam.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "colour/Paper.h"

namespace {
constexpr int N = StockPaperSide;
constexpr double Pi = 3.14159265358979323846;

double Lattice(int ix, int iy, uint32_t seed) {
    uint32_t h = static_cast<uint32_t>(ix) * 374761393u + static_cast<uint32_t>(iy) * 668265263u + seed * 2246822519u;
    h = (h ^ (h >> 13)) * 1274126177u;
    h ^= h >> 16;
    return (h & 0xFFFFFF) / double(0x1000000);
}

// Smooth value noise with `cells` lattice cells across the tile, wrapping.
double Noise(double x, double y, int cells, uint32_t seed) {
    double fx = x * cells / N, fy = y * cells / N;
    int x0 = static_cast<int>(std::floor(fx)), y0 = static_cast<int>(std::floor(fy));
    double tx = fx - x0, ty = fy - y0;
    tx = tx * tx * (3 - 2 * tx);
    ty = ty * ty * (3 - 2 * ty);
    auto at = [&](int i, int j) { return Lattice(((i % cells) + cells) % cells, ((j % cells) + cells) % cells, seed); };
    double a = at(x0, y0) + (at(x0 + 1, y0) - at(x0, y0)) * tx;
    double b = at(x0, y0 + 1) + (at(x0 + 1, y0 + 1) - at(x0, y0 + 1)) * tx;
    return a + (b - a) * ty;
}

double Fbm(double x, double y, int cells, int octaves, double persistence, uint32_t seed) {
    double sum = 0, amp = 1, norm = 0;
    for (int o = 0; o < octaves && cells <= N; ++o, cells *= 2, amp *= persistence) {
        sum += amp * Noise(x, y, cells, seed + 17u * o);
        norm += amp;
    }
    return sum / norm;
}

// Canvas weave: threads 8 pixels wide, over and under in a checker.
double Weave(int x, int y) {
    int tx = x / 8, ty = y / 8;
    double across = std::sin(Pi * ((x % 8) + 0.5) / 8), down = std::sin(Pi * ((y % 8) + 0.5) / 8);
    bool warpOnTop = ((tx + ty) & 1) == 0;
    return warpOnTop ? 0.35 + 0.65 * across * (0.8 + 0.2 * down) : 0.35 + 0.65 * down * (0.8 + 0.2 * across);
}

std::vector<uint8_t> Normalise(const std::vector<double>& v, int lo, int hi) {
    auto [mn, mx] = std::minmax_element(v.begin(), v.end());
    double range = std::max(*mx - *mn, 1e-9);
    std::vector<uint8_t> out(v.size());
    for (size_t i = 0; i < v.size(); ++i)
        out[i] = static_cast<uint8_t>(std::lround(lo + (v[i] - *mn) / range * (hi - lo)));
    return out;
}
}  // namespace

std::vector<uint8_t> MakeStockPaper(int index) {
    std::vector<double> h(static_cast<size_t>(N) * N);
    int lo = 60, hi = 240;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            double v = 0;
            switch (index) {
                case 0:  // watercolour: soft blotches and a fine tooth
                    v = 0.6 * Fbm(x, y, 4, 3, 0.5, 11) + 0.25 * Noise(x, y, 40, 12) + 0.15 * Noise(x, y, 80, 13);
                    break;
                case 1:  // canvas weave with a little slub in the thread
                    v = 0.8 * Weave(x, y) + 0.2 * Noise(x, y, 32, 21);
                    break;
                case 2:  // cold pressed: round bumps of medium size
                    v = Fbm(x, y, 10, 3, 0.45, 31);
                    break;
                case 3: {  // plaster: broad flats crossed by sharp ridges
                    double r = 1 - std::fabs(2 * Fbm(x, y, 5, 3, 0.5, 41) - 1);
                    v = 0.5 * Fbm(x, y, 2, 2, 0.5, 42) + 0.5 * std::pow(r, 3);
                    break;
                }
                case 4:  // rough: small sharp grain
                    v = Fbm(x, y, 20, 3, 0.6, 51);
                    break;
                default:  // more rough: fine grain with deep pits
                    v = 0.6 * Fbm(x, y, 32, 2, 0.7, 61) + 0.4 * std::pow(Noise(x, y, 80, 62), 2);
                    lo = 20;
                    hi = 250;
                    break;
            }
            h[static_cast<size_t>(y) * N + x] = v;
        }
    return Normalise(h, lo, hi);
}
