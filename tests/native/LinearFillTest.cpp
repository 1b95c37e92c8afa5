// The linear tool family's kernels against their formulas written out pixel
// by pixel: the eight-lane walk against one sequential float walk per row (its
// rounding drift included), the gradient's opacity and alpha, the circular
// gradient's last step beyond the radius, the warp's untouched pixels and the
// map to a gradient.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "native/LinearFill.h"

namespace {
struct Pic {
    int W, H;
    size_t stride;
    std::vector<uint8_t> r, g, b, a;
    Pic(int w, int h, unsigned seed) : W(w), H(h), stride(static_cast<size_t>(w) + 1) {
        std::mt19937 rng(seed);
        for (auto* p : {&r, &g, &b, &a}) {
            p->resize(stride * static_cast<size_t>(h + 1));
            for (auto& v : *p) v = static_cast<uint8_t>(rng() >> 24);
        }
    }
    kwlinear::Planes planes(uint8_t alphaOff) {
        kwlinear::Planes p;
        p.r = r.data(), p.g = g.data(), p.b = b.data(), p.a = a.data(), p.stride = stride, p.alphaOff = alphaOff;
        return p;
    }
    size_t at(int x, int y) const { return static_cast<size_t>(y) * stride + static_cast<size_t>(x); }
};

struct Grad {
    uint8_t r[256], g[256], b[256], a[256];
    explicit Grad(bool opaque) {
        for (int i = 0; i < 256; ++i) {
            r[i] = static_cast<uint8_t>(i), g[i] = static_cast<uint8_t>(255 - i), b[i] = static_cast<uint8_t>(i * 7);
            a[i] = opaque ? 255 : static_cast<uint8_t>(i % 3 == 0 ? 255 : i);
        }
    }
    kwlinear::GradientSteps steps() const { return {r, g, b, a}; }
};

// One sequential walk: each row first adds cy, each pixel first adds cx.
std::vector<uint8_t> ReferenceSteps(float start, float cx, float cy, int W, int H) {
    std::vector<uint8_t> out(static_cast<size_t>(W) * static_cast<size_t>(H));
    float row = start;
    for (int y = 0; y < H; ++y) {
        row += cy;
        float col = row;
        for (int x = 0; x < W; ++x) {
            col += cx;
            const long i = std::lrint(-static_cast<double>(col));
            out[static_cast<size_t>(y) * W + x] = static_cast<uint8_t>(std::clamp<long>(i, 0, 255));
        }
    }
    return out;
}

unsigned Mix(unsigned n, unsigned old, unsigned a) { return (n * a + old * (255 - a)) / 255; }
}  // namespace

TEST(LinearFill, EightLaneWalkGivesTheSequentialWalksStepsAtEveryAngle) {
    for (float angle : {0.0f, 17.0f, 90.0f, 133.3f, 180.0f, 251.0f, 300.0f}) {
        for (float d : {3.0f, 37.0f, 400.0f}) {
            const int W = 61, H = 19;  // neither a multiple of the lanes
            const float cx = std::cos(angle * 0.017453292f) / (d / 255), cy = -std::sin(angle * 0.017453292f) / (d / 255);
            const float start = -(13.5f * cx + 7.25f * cy);
            const auto want = ReferenceSteps(start, cx, cy, W, H);
            std::vector<uint8_t> got(want.size());
            float rowAcc = start;
            for (int y0 = 0; y0 < H; y0 += 8)
                kwlinear::LinearSteps(rowAcc, cx, cy, W, std::min(8, H - y0), got.data() + static_cast<size_t>(y0) * W);
            ASSERT_EQ(got, want) << "angle " << angle << " length " << d;
        }
    }
    // Far beyond the table on either side the steps hold at its ends.
    std::vector<uint8_t> ends(8 * 4);
    float acc = 1e9f;
    kwlinear::LinearSteps(acc, 0, 0, 4, 8, ends.data());
    for (uint8_t v : ends) EXPECT_EQ(v, 0);
    acc = -1e9f;
    kwlinear::LinearSteps(acc, 0, 0, 4, 8, ends.data());
    for (uint8_t v : ends) EXPECT_EQ(v, 255);
}

TEST(LinearFill, GradientMixesItsOpacityThenAlphaAndFadeThinsAlpha) {
    const int W = 23, H = 11;
    const float cx = -255.0f / 20, cy = 0, start = -(2 * cx);
    const auto steps = ReferenceSteps(start, cx, cy, W, H);
    for (bool opaque : {true, false})
        for (uint8_t alphaOff : {uint8_t{255}, uint8_t{0}}) {
            Pic p(W, H, 3), before(W, H, 3);
            const Grad g(opaque);
            kwlinear::LinearGradient(p.planes(alphaOff), W, H, start, cx, cy, g.steps());
            for (int y = 0; y < H; ++y)
                for (int x = 0; x < W; ++x) {
                    const unsigned i = steps[static_cast<size_t>(y) * W + x], ga = g.a[i];
                    const unsigned al = before.a[p.at(x, y)] | alphaOff;
                    const unsigned old = before.r[p.at(x, y)];
                    ASSERT_EQ(p.r[p.at(x, y)], Mix(Mix(g.r[i], old, ga), old, al)) << x << "," << y;
                }
            // The extra column is never written.
            for (int y = 0; y < H; ++y) EXPECT_EQ(p.g[p.at(W, y)], before.g[p.at(W, y)]);
        }
    Pic p(W, H, 5), before(W, H, 5);
    kwlinear::LinearAlphaFade(p.a.data(), p.stride, W, H, start, cx, cy);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            ASSERT_EQ(p.a[p.at(x, y)], before.a[p.at(x, y)] * (255 - steps[static_cast<size_t>(y) * W + x]) / 255);
    EXPECT_EQ(p.a[p.at(0, 0)], before.a[p.at(0, 0)]) << "before the start alpha stays";
    EXPECT_EQ(p.a[p.at(W - 1, 5)], 0) << "past the end it is gone";
}

TEST(LinearFill, CircularGradientTakesTheLastStepBeyondItsRadius) {
    const int W = 40, H = 30;
    Pic p(W, H, 9);
    const Grad g(true);
    kwlinear::CircularGradient(p.planes(255), W, H, 10, 12, 8, 1, g.steps());
    EXPECT_EQ(p.r[p.at(10, 12)], 0) << "the centre is the first step";
    EXPECT_EQ(p.r[p.at(14, 12)], 128) << "half the radius: 127.5 rounds to even";
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            if (std::hypot(x - 10.0, y - 12.0) >= 8) {
                ASSERT_EQ(p.r[p.at(x, y)], 255) << x << "," << y;
            }
    // A power of two bends the ramp: half the radius is a quarter of the way.
    kwlinear::CircularGradient(p.planes(255), W, H, 10, 12, 8, 2, g.steps());
    EXPECT_EQ(p.r[p.at(14, 12)], 64);
    // Radius 0 changes nothing.
    Pic q(W, H, 9), same(W, H, 9);
    kwlinear::CircularGradient(q.planes(255), W, H, 10, 12, 0, 1, g.steps());
    EXPECT_EQ(q.r, same.r);
}

TEST(LinearFill, WarpMovesThePressToTheReleaseAndLeavesFarPixelsAlone) {
    const int W = 50, H = 40;
    Pic src(W, H, 1), dst(W, H, 2), untouched(W, H, 2);
    const uint8_t* const from[3] = {src.r.data(), src.g.data(), src.b.data()};
    for (bool aa : {false, true}) {
        Pic out(W, H, 2);
        const kwlinear::WarpLine line{10, 10, 20, 14, std::hypot(10.0f, 4.0f), 1.0f, aa};
        kwlinear::LinearWarp(out.planes(255), from, W, H, line);
        // At the release the pixel shows what lay under the press.
        EXPECT_EQ(out.r[out.at(20, 14)], src.r[src.at(10, 10)]);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                const float t = 1 - std::hypot(20.0f - x, 14.0f - y) / line.d;
                if (t < 0) {
                    ASSERT_EQ(out.r[out.at(x, y)], untouched.r[untouched.at(x, y)]) << x << "," << y;
                }
            }
    }
    // Anti-aliased, a fractional source is the bilinear mix of its four neighbours.
    Pic out(W, H, 2);
    const kwlinear::WarpLine half{10.5f, 10, 20, 10, 10, 1.0f, true};
    kwlinear::LinearWarp(out.planes(255), from, W, H, half);
    const double mixed = (src.r[src.at(10, 10)] + src.r[src.at(11, 10)]) / 2.0;
    EXPECT_EQ(out.r[out.at(20, 10)], static_cast<uint8_t>(std::nearbyint(mixed)));
    // A drag that ends on the last column reads nothing beyond the picture.
    Pic edge(W, H, 2);
    kwlinear::LinearWarp(edge.planes(255), from, W, H, {W - 1.0f, H - 1.0f, W - 1.0f - 5, H - 1.0f, 5, 2.0f, false});
    EXPECT_EQ(edge.r[edge.at(W - 6, H - 1)], src.r[src.at(W - 1, H - 1)]);
}

TEST(LinearFill, MapToGradientPicksTheStepOfEachPixelsMeanThroughAlpha) {
    const int W = 17, H = 9;
    const Grad g(true);
    for (uint8_t alphaOff : {uint8_t{255}, uint8_t{0}}) {
        Pic p(W, H, 4), before(W, H, 4);
        kwlinear::MapToGradient(p.planes(alphaOff), W, H, g.steps());
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                const size_t i = p.at(x, y);
                const int v = static_cast<int>(std::nearbyint((before.r[i] + before.g[i] + before.b[i]) / 3.0));
                const unsigned al = before.a[i] | alphaOff;
                ASSERT_EQ(p.g[i], (before.g[i] * (255 - al) + g.g[v] * al) / 255) << x << "," << y;
            }
    }
}
