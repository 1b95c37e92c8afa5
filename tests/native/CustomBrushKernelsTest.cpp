// The custom brush kernels against slow references written from the formulas,
// with stamps that hang over each side of the picture.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>
#include <vector>

#include "native/CustomBrushKernels.h"

namespace {
using namespace kwbrush;

struct Picture {
    int W, H;
    size_t stride;
    std::vector<uint8_t> r, g, b, a;
    Picture(int w, int h, unsigned seed) : W(w), H(h), stride(static_cast<size_t>(w + 1)) {
        std::mt19937 rng(seed);
        for (auto* p : {&r, &g, &b, &a}) {
            p->resize(stride * static_cast<size_t>(h + 1));
            for (auto& v : *p) v = static_cast<uint8_t>(rng());
        }
        // Some pixels fully selected, some not at all.
        for (size_t i = 0; i < a.size(); i += 3) a[i] = 255;
        for (size_t i = 1; i < a.size(); i += 7) a[i] = 0;
    }
    CustomTarget target() { return {r.data(), g.data(), b.data(), a.data(), stride, W, H}; }
};

struct Brush {
    int w, h;
    size_t stride;
    std::vector<uint8_t> r, g, b, a;
    Brush(int w_, int h_, unsigned seed) : w(w_), h(h_), stride(static_cast<size_t>(w_ + 1)) {
        std::mt19937 rng(seed);
        for (auto* p : {&r, &g, &b, &a}) {
            p->resize(stride * static_cast<size_t>(h + 1));
            for (auto& v : *p) v = static_cast<uint8_t>(rng());
        }
        for (size_t i = 0; i < a.size(); i += 5) a[i] = 0;
        for (size_t i = 2; i < a.size(); i += 5) a[i] = 255;
    }
    BrushPlanes planes() const { return {r.data(), g.data(), b.data(), a.data(), stride, w, h}; }
};

// paint(x, y, u, v, old rgb, rgb out) gives the paint and returns the opacity, or -1 to leave the pixel.
using PaintFn = std::function<int(int, int, int, int, const int*, int*)>;

// The formulas, one pixel at a time, on a copy of the picture taken before the stamp.
Picture Reference(const Picture& before, const Brush& brush, int X, int Y, uint8_t alphaOff, const PaintFn& paint) {
    Picture out = before;
    for (int v = 0; v < brush.h; ++v)
        for (int u = 0; u < brush.w; ++u) {
            const int x = X + u, y = Y + v;
            if (x < 0 || y < 0 || x >= before.W || y >= before.H) continue;
            const size_t at = static_cast<size_t>(y) * before.stride + static_cast<size_t>(x);
            const int old[3] = {before.r[at], before.g[at], before.b[at]};
            int rgb[3];
            const int o = paint(x, y, u, v, old, rgb);
            if (o < 0) continue;
            const int a = brush.a[static_cast<size_t>(v) * brush.stride + static_cast<size_t>(u)] * o / 255;
            const int e = before.a[at] | alphaOff;
            std::vector<uint8_t>* planes[3] = {&out.r, &out.g, &out.b};
            for (int k = 0; k < 3; ++k) {
                int nv = (old[k] * (255 - a) + rgb[k] * a) / 255;
                if (e < 255) nv = (old[k] * (255 - e) + nv * e) / 255;
                (*planes[k])[at] = static_cast<uint8_t>(nv);
            }
        }
    return out;
}

void ExpectSame(const Picture& got, const Picture& want, const char* what) {
    EXPECT_EQ(got.r, want.r) << what;
    EXPECT_EQ(got.g, want.g) << what;
    EXPECT_EQ(got.b, want.b) << what;
}

// Stamps that hang over the left/top, the right/bottom, lie inside and lie wholly outside.
const std::pair<int, int> Places[] = {{-5, -4}, {25, 17}, {8, 6}, {-30, 3}, {40, 40}};
constexpr int PW = 32, PH = 24;

std::vector<uint8_t> Table() {
    std::vector<uint8_t> t(65536);
    for (int i = 0; i < 65536; ++i) t[static_cast<size_t>(i)] = static_cast<uint8_t>((i % 256) ^ (i / 256));
    return t;
}

struct Paper {
    std::vector<float> f;
    std::vector<uint8_t> b;
    PaperPlanes planes;
    Paper() {
        const int w = 7, h = 5;
        f.resize(static_cast<size_t>((w + 1) * (h + 1)));
        b.resize(f.size());
        for (size_t i = 0; i < f.size(); ++i) {
            f[i] = (static_cast<float>(i % 9) - 4.0f) / 40.0f;
            b[i] = static_cast<uint8_t>(i * 37);
        }
        planes = {f.data(), b.data(), static_cast<size_t>(w + 1), w, h};
    }
    size_t at(int x, int y) const { return static_cast<size_t>(y % planes.h) * planes.stride + static_cast<size_t>(x % planes.w); }
    int lift(int x, int y) const { return static_cast<int>(std::nearbyint(f[at(x, y)] * 256.0f)); }
    int dry(int x, int y, int o, int n, float strength) const {
        const float lost = static_cast<float>(std::abs(n - b[at(x, y)])) * (strength / 100.0f);
        return std::max(0, static_cast<int>(std::nearbyint(static_cast<float>(o) - lost)));
    }
};

int Hold(int v) { return std::clamp(v, 0, 255); }

TEST(CustomBrushKernels, ColourBlitsMatchTheFormulasOnEverySide) {
    const Brush brush(11, 9, 7);
    const auto table = Table();
    const Paper paper;
    for (auto [X, Y] : Places)
        for (uint8_t alphaOff : {uint8_t(0), uint8_t(255)}) {
            const Picture before(PW, PH, 3);
            auto brushAt = [&](int u, int v, int* rgb) {
                const size_t src = static_cast<size_t>(v) * brush.stride + static_cast<size_t>(u);
                rgb[0] = brush.r[src], rgb[1] = brush.g[src], rgb[2] = brush.b[src];
            };
            Picture got = before;
            CustomBrushBlit(brush.planes(), got.target(), X, Y, 200, alphaOff);
            ExpectSame(got, Reference(before, brush, X, Y, alphaOff, [&](int, int, int u, int v, const int*, int* rgb) {
                           brushAt(u, v, rgb);
                           return 200;
                       }), "CustomBrushBlit");
            got = before;
            Full_CustomBrushBlit(brush.planes(), got.target(), table.data(), paper.planes, X, Y, 300, alphaOff, 1);
            ExpectSame(got, Reference(before, brush, X, Y, alphaOff, [&](int x, int y, int u, int v, const int* old, int* rgb) {
                           brushAt(u, v, rgb);
                           for (int k = 0; k < 3; ++k) rgb[k] = Hold(table[static_cast<size_t>(old[k] + 256 * rgb[k])] + paper.lift(x, y));
                           return 255;  // above 255 counts as 255
                       }), "Full_CustomBrushBlit");
        }
}

TEST(CustomBrushKernels, MatteBlitsMatchTheFormulasOnEverySide) {
    const Brush brush(13, 10, 9);
    const auto table = Table();
    const Paper paper;
    for (auto [X, Y] : Places) {
        const Picture before(PW, PH, 4);
        const PaintFn dab = [](int, int, int, int, const int*, int* rgb) {
            rgb[0] = 10, rgb[1] = 128, rgb[2] = 250;
            return 180;
        };
        const Picture want = Reference(before, brush, X, Y, 0, dab);
        Picture got = before;
        CustomMatteBlit(brush.planes(), got.target(), 10, 128, 250, X, Y, 180, 0);
        ExpectSame(got, want, "CustomMatteBlit");
        got = before;
        Fast_CustomMatteBlit(brush.planes(), got.target(), 10, 128, 250, X, Y, 180, 0);
        ExpectSame(got, want, "Fast_CustomMatteBlit");
        for (int flags : {1, 2, 3, 6, 7}) {
            const int n = flags & Negative ? 255 : 0;
            auto paperPaint = [&](bool useTable) {
                return [&, useTable](int x, int y, int, int, const int* old, int* rgb) {
                    const int c[3] = {10, 128, 250};
                    for (int k = 0; k < 3; ++k) {
                        rgb[k] = useTable ? table[static_cast<size_t>(old[k] + 256 * c[k])] : c[k];
                        if (flags & Bumpiness) rgb[k] = Hold(rgb[k] + paper.lift(x, y));
                    }
                    return flags & Drybrush ? paper.dry(x, y, 180, n, 40.0f) : 180;
                };
            };
            got = before;
            Paper_CustomMatteBlit(brush.planes(), got.target(), 10, 128, 250, X, Y, 180, 0, paper.planes, 40.0f, flags);
            ExpectSame(got, Reference(before, brush, X, Y, 0, paperPaint(false)), "Paper_CustomMatteBlit");
            got = before;
            Full_CustomMatteBlit(brush.planes(), got.target(), table.data(), 10, 128, 250, paper.planes, 40.0f, X, Y, 180,
                                 0, 1, flags);
            ExpectSame(got, Reference(before, brush, X, Y, 0, paperPaint(true)), "Full_CustomMatteBlit");
        }
    }
}

TEST(CustomBrushKernels, SourceModesReadSwapTileAndPicture) {
    const Brush brush(9, 8, 11);
    for (auto [X, Y] : Places)
        for (uint8_t alphaOff : {uint8_t(0), uint8_t(255)}) {
            const Picture before(PW, PH, 5), swap(PW, PH, 6);
            Picture got = before;
            RubBrushBlit(brush.planes(), got.target(), {swap.r.data(), swap.g.data(), swap.b.data()}, X, Y, 150, alphaOff);
            ExpectSame(got, Reference(before, brush, X, Y, alphaOff, [&](int x, int y, int, int, const int*, int* rgb) {
                           const size_t at = static_cast<size_t>(y) * swap.stride + static_cast<size_t>(x);
                           rgb[0] = swap.r[at], rgb[1] = swap.g[at], rgb[2] = swap.b[at];
                           return 150;
                       }), "RubBrushBlit");
            got = before;
            PatBrushBlit(brush.planes(), got.target(), X, Y, 255, alphaOff, -3, 5);
            ExpectSame(got, Reference(before, brush, X, Y, alphaOff, [&](int x, int y, int, int, const int*, int* rgb) {
                           const int u = ((x - 3) % 9 + 9) % 9, v = (y + 5) % 8;
                           const size_t src = static_cast<size_t>(v) * brush.stride + static_cast<size_t>(u);
                           rgb[0] = brush.r[src], rgb[1] = brush.g[src], rgb[2] = brush.b[src];
                           return 255;
                       }), "PatBrushBlit");
        }
}

TEST(CustomBrushKernels, CloneReadsThePictureBeforeItChanges) {
    const Brush brush(10, 10, 13);
    for (auto [DX, DY] : {std::pair{3, 2}, std::pair{-4, -1}, std::pair{2, -3}, std::pair{3, 0}, std::pair{-2, 0}})
        for (auto [X, Y] : Places) {
            const Picture before(PW, PH, 8);
            Picture got = before;
            CloneBrushBlit(brush.planes(), got.target(), X, Y, 255, 255, 0, DX, DY);
            // Each pixel takes the picture as it was before the stamp: the scan
            // against the offset reads every source before writing it.
            ExpectSame(got, Reference(before, brush, X, Y, 255, [&](int x, int y, int, int, const int*, int* rgb) {
                           const int sx = x - DX, sy = y - DY;
                           if (sx < 0 || sy < 0 || sx >= PW || sy >= PH) return -1;
                           const size_t at = static_cast<size_t>(sy) * before.stride + static_cast<size_t>(sx);
                           rgb[0] = before.r[at], rgb[1] = before.g[at], rgb[2] = before.b[at];
                           return 255;
                       }), "CloneBrushBlit");
        }
}

TEST(CustomBrushKernels, NothingOutsideThePictureIsWritten) {
    const Brush brush(40, 30, 2);
    Picture pic(PW, PH, 1);
    const std::vector<uint8_t> before = pic.r;
    CustomMatteBlit(brush.planes(), pic.target(), 0, 0, 0, -4, -3, 255, 255);
    // The extra column and row are no part of the picture.
    for (int y = 0; y <= PH; ++y) EXPECT_EQ(pic.r[static_cast<size_t>(y) * pic.stride + PW], before[static_cast<size_t>(y) * pic.stride + PW]);
    for (int x = 0; x <= PW; ++x) EXPECT_EQ(pic.r[static_cast<size_t>(PH) * pic.stride + static_cast<size_t>(x)], before[static_cast<size_t>(PH) * pic.stride + static_cast<size_t>(x)]);
}
}  // namespace
