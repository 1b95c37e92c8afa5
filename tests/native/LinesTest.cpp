// The line drawers against slow references: the midpoint line in all eight
// octants, the anti-aliased stamp's two-stage blend, clipping on every side
// (planes framed by guard bytes that must stay untouched) and the colour ramp.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <vector>

#include "native/Lines.h"

namespace {
// Picture planes of W x H (plus the extra column and row) inside a frame of guard bytes.
struct Framed {
    static constexpr int M = 4;  // guard width
    static constexpr uint8_t Guard = 0xA5;
    int W, H;
    size_t stride;
    std::vector<uint8_t> r, g, b;
    Framed(int w, int h, uint8_t fill) : W(w), H(h), stride(static_cast<size_t>(w + 1 + 2 * M)) {
        for (auto* v : {&r, &g, &b}) {
            v->assign(stride * static_cast<size_t>(h + 1 + 2 * M), Guard);
            for (int y = 0; y <= h; ++y)
                for (int x = 0; x <= w; ++x) (*v)[Index(x, y)] = fill;
        }
    }
    size_t Index(int x, int y) const { return static_cast<size_t>(y + M) * stride + static_cast<size_t>(x + M); }
    kwline::RgbPlanes planes() { return {r.data() + Index(0, 0), g.data() + Index(0, 0), b.data() + Index(0, 0), stride}; }
    uint8_t R(int x, int y) const { return r[Index(x, y)]; }
    bool GuardsIntact() const {
        for (const auto* v : {&r, &g, &b})
            for (int y = -M; y <= H + M; ++y)
                for (int x = -M; x <= W + M; ++x) {
                    const bool inside = x >= 0 && y >= 0 && x <= W && y <= H;
                    if (!inside && (*v)[Index(x, y)] != Guard) return false;
                }
        return true;
    }
};

// The midpoint line's points: the minor axis at the nearest whole offset, a
// tie staying on the start's side.
std::vector<std::pair<int, int>> ReferenceMidpoint(int x1, int y1, int x2, int y2) {
    const int adx = std::abs(x2 - x1), ady = std::abs(y2 - y1), sx = x2 >= x1 ? 1 : -1, sy = y2 >= y1 ? 1 : -1;
    const bool shallow = adx >= ady;
    const int M = shallow ? adx : ady, m = shallow ? ady : adx;
    std::vector<std::pair<int, int>> pts;
    for (int i = 0; i <= M; ++i) {
        const int off = M == 0 ? 0 : (2 * i * m + M - 1) / (2 * M);
        pts.push_back(shallow ? std::make_pair(x1 + sx * i, y1 + sy * off) : std::make_pair(x1 + sx * off, y1 + sy * i));
    }
    return pts;
}

TEST(MidPointLine, EveryOctantMatchesTheNearestPointReference) {
    const int ends[][2] = {{30, 11}, {11, 30}, {-11, 30}, {-30, 11}, {-30, -11}, {-11, -30}, {11, -30}, {30, -11},
                           {20, 10}, {10, 20}, {-20, -10}, {7, 7}, {-7, 7}, {0, 9}, {9, 0}, {0, 0}};
    for (auto [dx, dy] : ends) {
        Framed f(80, 80, 0);
        kwline::MidPointLine(f.planes(), 40, 40, 40 + dx, 40 + dy, 200, 100, 50, f.W, f.H);
        std::vector<std::vector<int>> want(81, std::vector<int>(81, 0));
        for (auto [x, y] : ReferenceMidpoint(40, 40, 40 + dx, 40 + dy)) want[y][x] = 200;
        for (int y = 0; y <= 80; ++y)
            for (int x = 0; x <= 80; ++x) ASSERT_EQ(f.R(x, y), want[y][x]) << "to (" << dx << ", " << dy << ") at " << x << ", " << y;
        EXPECT_EQ(f.g[f.Index(40 + dx, 40 + dy)], 100);
    }
}

TEST(MidPointLine, ClippedOnEverySidePlotsOnlyInsideThePlanes) {
    Framed f(40, 30, 0);
    const int lines[][4] = {{-50, 15, 90, 15}, {20, -40, 20, 70}, {-30, -30, 80, 70}, {90, -10, -20, 50},
                            {-1000, -999, 1000, 1001}, {41, 31, 41, 31}};
    for (auto& l : lines) kwline::MidPointLine(f.planes(), l[0], l[1], l[2], l[3], 255, 255, 255, f.W, f.H);
    EXPECT_TRUE(f.GuardsIntact());
    EXPECT_EQ(f.R(0, 15), 255);
    EXPECT_EQ(f.R(40, 15), 255) << "the extra column is plotted: the test is x <= W";
    EXPECT_EQ(f.R(20, 30), 255) << "and the extra row";
}

// The anti-aliased stamp written out from the table of weights, in doubles
// rounded to single at each product, then rounded half to even per stage.
void ReferenceStamp(Framed& f, float px, float py, float C) {
    const float ix = std::floor(px), iy = std::floor(py);
    if (!(ix >= 0 && iy >= 0 && ix < f.W && iy < f.H)) return;
    const float fx = px - ix, gx = 1 - fx, fy = py - iy, gy = 1 - fy;
    struct W4 { int dx, dy; float a1, b1, a2, b2; } ws[] = {
        {0, 0, fx, gx, fy, gy}, {1, 0, gx, fx, fy, gy}, {0, 1, fx, gx, gy, fy}, {1, 1, gx, fx, gy, fy}};
    for (auto& w : ws) {
        uint8_t& p = f.r[f.Index(static_cast<int>(ix) + w.dx, static_cast<int>(iy) + w.dy)];
        const float t = std::nearbyint(p * w.a1 + C * w.b1);
        p = static_cast<uint8_t>(std::nearbyint(t * w.a2 + C * w.b2));
    }
}

TEST(AALine, StampsFollowTheTwoStageBlendAndClip) {
    const int lines[][4] = {{5, 5, 35, 17}, {35, 17, 5, 5}, {3, 25, 28, 2}, {10, 10, 10, 10}, {-10, 5, 50, 28},
                            {20, -8, 22, 40}, {39, 29, 39, 29}, {0, 0, 39, 29}};
    for (auto& l : lines) {
        Framed got(40, 30, 60), want(40, 30, 60);
        kwline::AALine(got.planes(), l[0], l[1], l[2], l[3], 220, 220, 220, got.W, got.H);
        const double dx = l[2] - l[0], dy = l[3] - l[1];
        const long D = std::lround(std::sqrt(dx * dx + dy * dy));
        const float sx = D ? static_cast<float>(dx) / D : 0, sy = D ? static_cast<float>(dy) / D : 0;
        float px = static_cast<float>(l[0]), py = static_cast<float>(l[1]);
        for (long i = 0; i <= D; ++i, px += sx, py += sy) ReferenceStamp(want, px, py, 220);
        EXPECT_EQ(got.r, want.r) << l[0] << "," << l[1] << " to " << l[2] << "," << l[3];
        EXPECT_TRUE(got.GuardsIntact());
    }
}

// On a whole position the right and lower neighbours take C in their second
// stage; the diagonal one has weight 0 on both axes and keeps its old value.
TEST(AALine, WholePositionStampsThreePixelsAndAPointIsOneStamp) {
    Framed f(20, 20, 0);
    kwline::AALine(f.planes(), 7, 9, 7, 9, 90, 90, 90, f.W, f.H);
    for (int y = 0; y <= 20; ++y)
        for (int x = 0; x <= 20; ++x) {
            const bool stamped = (x == 7 || x == 8) && (y == 9 || y == 10) && !(x == 8 && y == 10);
            EXPECT_EQ(f.R(x, y), stamped ? 90 : 0) << x << ", " << y;
        }
    Framed e(20, 20, 0);
    kwline::AAFloatLine(e.planes(), 7.0f, 9.0f, 7.0f, 9.0f, 90, 90, 90, e.W, e.H);
    EXPECT_EQ(e.r, f.r) << "the float line agrees on whole positions";
}

TEST(GradAALine, RampsFromOneColourToTheOtherAndBuildsUp) {
    Framed f(40, 10, 0);
    for (int pass = 0; pass < 40; ++pass) kwline::GradAALine(f.planes(), 0, 5, 30, 5, 0, 0, 0, 250, 100, 300, f.W, f.H);
    EXPECT_EQ(f.R(0, 5), 0);
    EXPECT_NEAR(f.R(30, 5), 250, 2);
    EXPECT_NEAR(f.R(15, 5), 125, 3);
    // Each pass rounds, so the mix settles a little short of its target.
    EXPECT_NEAR(f.b[f.Index(30, 5)], 255, 3) << "blue is held at 255 from above";
    EXPECT_EQ(f.R(15, 6), 0) << "one pixel per point";
    Framed once(40, 10, 0);
    kwline::GradAALine(once.planes(), 0, 5, 30, 5, 0, 0, 0, 250, 100, 200, once.W, once.H);
    EXPECT_EQ(once.R(30, 5), 50) << "one pass lays a fifth";
    kwline::GradAALine(once.planes(), -50, -5, 90, 20, 9, 9, 9, 9, 9, 9, once.W, once.H);
    EXPECT_TRUE(once.GuardsIntact());
}
}  // namespace
