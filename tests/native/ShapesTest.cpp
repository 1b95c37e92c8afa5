// The even-odd polygon fill against a point-in-polygon test at every pixel
// centre (self-crossing outlines, clip boxes), and the ellipse's row spans
// against the per-pixel test.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "native/Shapes.h"

namespace {
// Even-odd crossing count of the ray to the right of (px, py), edges half-open in y.
bool InsideEvenOdd(const std::vector<int32_t>& xy, double px, double py) {
    const size_t n = xy.size() / 2;
    bool in = false;
    for (size_t i = 0; i < n; ++i) {
        const size_t j = (i + 1) % n;
        double xa = xy[2 * i], ya = xy[2 * i + 1], xb = xy[2 * j], yb = xy[2 * j + 1];
        if (ya == yb) continue;
        if (ya > yb) std::swap(xa, xb), std::swap(ya, yb);
        if (py < ya || py >= yb) continue;
        const double x = xa + (py - ya) * (xb - xa) / (yb - ya);
        if (x > px) in = !in;
    }
    return in;
}

void ExpectMatches(const std::vector<int32_t>& xy, int W, int H, int l, int t, int r, int b) {
    std::vector<uint8_t> plane(static_cast<size_t>((W + 1) * (H + 1)), 7);
    kwshape::PolygonEvenOdd(xy.data(), static_cast<int>(xy.size() / 2), plane.data(), W + 1, l, t, r, b, 255);
    for (int y = 0; y <= H; ++y)
        for (int x = 0; x <= W; ++x) {
            const bool clip = x >= l && x <= r && y >= t && y <= b;
            const int want = clip && InsideEvenOdd(xy, x + 0.5, y + 0.5) ? 255 : 7;
            ASSERT_EQ(plane[static_cast<size_t>(y * (W + 1) + x)], want) << x << ", " << y;
        }
}

TEST(PolygonEvenOdd, MatchesTheCentreTestOnRandomAndCrossingOutlines) {
    // A star drawn in one stroke: its centre pentagon is enclosed twice and stays out.
    ExpectMatches({50, 5, 79, 95, 3, 38, 97, 38, 21, 95}, 100, 100, 0, 0, 99, 99);
    std::vector<uint8_t> star(101 * 101, 0);
    const int32_t pts[] = {50, 5, 79, 95, 3, 38, 97, 38, 21, 95};
    kwshape::PolygonEvenOdd(pts, 5, star.data(), 101, 0, 0, 99, 99, 255);
    EXPECT_EQ(star[55 * 101 + 50], 0) << "the doubly enclosed middle is a hole";
    EXPECT_EQ(star[20 * 101 + 50], 255) << "a point of the star is filled";
    std::mt19937 gen(7);
    std::uniform_int_distribution<int> coord(-20, 80);
    for (int k = 0; k < 40; ++k) {
        std::vector<int32_t> xy;
        for (int i = 0, n = 3 + k % 9; i < n; ++i) xy.push_back(coord(gen)), xy.push_back(coord(gen));
        ExpectMatches(xy, 60, 50, k % 5, k % 7, 59 - k % 3, 49 - k % 4);
    }
}

TEST(PolygonEvenOdd, DegenerateOutlinesFillNothing) {
    std::vector<uint8_t> plane(21 * 21, 0);
    const int32_t line[] = {2, 2, 15, 15};
    kwshape::PolygonEvenOdd(line, 2, plane.data(), 21, 0, 0, 19, 19, 255);
    const int32_t flat[] = {2, 5, 15, 5, 9, 5};
    kwshape::PolygonEvenOdd(flat, 3, plane.data(), 21, 0, 0, 19, 19, 255);
    const int32_t outside[] = {-50, -50, -10, -50, -30, -5};
    kwshape::PolygonEvenOdd(outside, 3, plane.data(), 21, 0, 0, 19, 19, 255);
    for (uint8_t v : plane) ASSERT_EQ(v, 0);
}

TEST(EllipseRowSpan, AgreesWithThePixelTest) {
    // Small ones over 50 columns, every row; a picture-sized one over 4000 columns, a row in 37.
    const float cases[][4] = {{20.5f, 14, 30, 18}, {0, 0, 0.01f, 0.01f}, {33, 20, 7, 41},       {-5, 10, 40, 40},
                              {10, 10, 1, 1},      {2000, 1500, 4000, 3000}, {1234.5f, 700, 2501, 1399}};
    for (auto& c : cases) {
        const bool big = c[2] > 1000;
        const int x1 = big ? 3999 : 49;
        for (int y = -3; y < (big ? 3003 : 45); y += big ? 37 : 1) {
            int first = -1, last = -1;
            const bool any = kwshape::EllipseRowSpan(c[0], c[1], c[2], c[3], y, 0, x1, first, last);
            int wantFirst = -1, wantLast = -1;
            for (int x = 0; x <= x1; ++x)
                if (kwshape::InEllipse(static_cast<float>(x), static_cast<float>(y), c[0], c[1], c[2], c[3])) {
                    if (wantFirst < 0) wantFirst = x;
                    wantLast = x;
                }
            ASSERT_EQ(any, wantFirst >= 0) << c[0] << " row " << y;
            if (any) {
                EXPECT_EQ(first, wantFirst) << c[0] << " row " << y;
                EXPECT_EQ(last, wantLast) << c[0] << " row " << y;
            }
        }
    }
}
}  // namespace
