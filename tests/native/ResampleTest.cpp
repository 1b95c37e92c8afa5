// Resampling one plane: values known by hand at the edges and in between, the
// whole destination written and its extra column and row left alone, and empty
// sizes doing nothing.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "native/Resample.h"

namespace {
using Bytes = std::vector<uint8_t>;
using Fn = void (*)(const uint8_t*, int, int, uint8_t*, int, int);
constexpr uint8_t Pad = 0xEE;

// A w x h plane of stride w + 1 from rows of values; the extra column and row hold Pad.
Bytes Plane(int w, int h, const std::vector<std::vector<int>>& rows) {
    Bytes p(static_cast<size_t>((w + 1) * (h + 1)), Pad);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) p[static_cast<size_t>(y * (w + 1) + x)] = static_cast<uint8_t>(rows[y][x]);
    return p;
}

Bytes Resampled(Fn fn, const Bytes& src, int sw, int sh, int dw, int dh) {
    Bytes dst(static_cast<size_t>((dw + 1) * (dh + 1)), Pad);
    fn(src.data(), sw, sh, dst.data(), dw, dh);
    return dst;
}
}  // namespace

TEST(Resample, KnownValuesAtTheEdgesAndBetween) {
    // Two rows that differ, so a flip or a transposition cannot pass.
    const Bytes src = Plane(3, 2, {{0, 90, 180}, {30, 60, 255}});
    EXPECT_EQ(Resampled(kwresample::Nearest, src, 3, 2, 6, 2),
              Plane(6, 2, {{0, 0, 90, 90, 180, 180}, {30, 30, 60, 60, 255, 255}}));
    EXPECT_EQ(Resampled(kwresample::Nearest, src, 3, 2, 2, 1), Plane(2, 1, {{0, 90}}));
    // At the same size the bilinear routes give the picture back.
    EXPECT_EQ(Resampled(kwresample::Bilinear, src, 3, 2, 3, 2), src);
    EXPECT_EQ(Resampled(kwresample::BilinearPlus, src, 3, 2, 3, 2), src);
    // Doubling: centres at -0.25, 0.25, 0.75, 1.25 of [0, 200]; the edges hold.
    const Bytes pair = Plane(2, 1, {{0, 200}});
    EXPECT_EQ(Resampled(kwresample::Bilinear, pair, 2, 1, 4, 1), Plane(4, 1, {{0, 50, 150, 200}}));
    EXPECT_EQ(Resampled(kwresample::BilinearPlus, pair, 2, 1, 4, 1), Plane(4, 1, {{0, 50, 150, 200}}));
    // Shrinking 3 x 2 to 2 x 1: each pixel covers one and a half columns of both rows,
    // (0 + 30 + (90 + 60) / 2) / 3 and ((90 + 60) / 2 + 180 + 255) / 3.
    EXPECT_EQ(Resampled(kwresample::BilinearPlus, src, 3, 2, 2, 1), Plane(2, 1, {{35, 170}}));
    // Bilinear samples at the centres instead: (0.25, 0.5) and (1.75, 0.5).
    EXPECT_EQ(Resampled(kwresample::Bilinear, src, 3, 2, 2, 1), Plane(2, 1, {{30, 182}}));
}

TEST(Resample, EmptySizesWriteNothing) {
    const Bytes src = Plane(3, 2, {{1, 2, 3}, {4, 5, 6}});
    for (Fn fn : {kwresample::Nearest, kwresample::Bilinear, kwresample::BilinearPlus}) {
        EXPECT_EQ(Resampled(fn, src, 0, 2, 2, 2), Bytes(9, Pad));
        EXPECT_EQ(Resampled(fn, src, 3, 0, 2, 2), Bytes(9, Pad));
        EXPECT_EQ(Resampled(fn, src, 3, 2, 0, 2), Bytes(3, Pad));
        EXPECT_EQ(Resampled(fn, src, 3, 2, 2, 0), Bytes(3, Pad));
    }
}
