// The filter kernels against slow references written from their formulas, on
// small asymmetric pictures with the extra column filled with junk (a kernel
// that reads or writes it is caught), and the two-thread runs against one thread.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <vector>

#include "native/ColourSpace.h"
#include "native/FilterThreads.h"
#include "native/kwfilter.h"

namespace {
using Bytes = std::vector<uint8_t>;

struct Pic {
    int W, H;
    Bytes r, g, b, a;
    Pic(int w, int h, uint32_t seed) : W(w), H(h) {
        std::mt19937 rng(seed);
        for (Bytes* p : {&r, &g, &b, &a}) {
            p->resize(static_cast<size_t>(W + 1) * (H + 1));
            for (auto& v : *p) v = static_cast<uint8_t>(rng());
        }
        // Alpha takes its ends often: they are the cases a mix gets wrong.
        for (size_t i = 0; i < a.size(); i += 3) a[i] = (i / 3) % 2 ? 255 : 0;
    }
    size_t at(int x, int y) const { return static_cast<size_t>(y) * (W + 1) + x; }
};

int Mix(int old, int neu, int a) { return (old * (255 - a) + neu * a) / 255; }
int Clamp(int v, int lo, int hi) { return std::max(lo, std::min(hi, v)); }

// Compares the picture area; the extra column must be left as it was.
void ExpectPlane(const Bytes& got, const Bytes& want, int W, int H, const char* what) {
    int bad = 0;
    for (int y = 0; y <= H && bad < 5; ++y)
        for (int x = 0; x <= W && bad < 5; ++x) {
            const size_t i = static_cast<size_t>(y) * (W + 1) + x;
            if (got[i] != want[i]) {
                ADD_FAILURE() << what << " at (" << x << ", " << y << "): " << int(got[i]) << " want " << int(want[i]);
                ++bad;
            }
        }
}

struct ThreadsGuard {
    explicit ThreadsGuard(int n) { kwthreads::SetThreads(n); }
    ~ThreadsGuard() { kwthreads::SetThreads(2); }
};
}  // namespace

TEST(FilterKernels, AlphaPassesAndTablesFollowTheirFormulas) {
    for (uint8_t off : {uint8_t(0), uint8_t(255)}) {
        Pic p(23, 11, 1), u(23, 11, 2), s(23, 11, 3);
        Pic want = p;
        for (int y = 0; y < p.H; ++y)
            for (int x = 0; x < p.W; ++x) {
                const size_t i = p.at(x, y);
                if (off == 0) want.r[i] = static_cast<uint8_t>(Mix(u.r[i], p.r[i], p.a[i]));
                if (off == 0) want.g[i] = static_cast<uint8_t>(Mix(u.g[i], p.g[i], p.a[i]));
                if (off == 0) want.b[i] = static_cast<uint8_t>(Mix(u.b[i], p.b[i], p.a[i]));
            }
        Pic got = p;
        kwfilter::Overlay_b(got.r.data(), got.g.data(), got.b.data(), u.r.data(), u.g.data(), u.b.data(), p.a.data(),
                            off, p.W, p.H);
        ExpectPlane(got.r, want.r, p.W, p.H, "Overlay_b red");
        ExpectPlane(got.b, want.b, p.W, p.H, "Overlay_b blue");

        got = p;
        kwfilter::Overlay(got.r.data(), got.g.data(), got.b.data(), s.r.data(), s.g.data(), s.b.data(), p.a.data(), off,
                          p.W, p.H);
        want = p;
        for (int y = 0; y < p.H; ++y)
            for (int x = 0; x < p.W; ++x) {
                const size_t i = p.at(x, y);
                want.g[i] = static_cast<uint8_t>(Mix(p.g[i], s.g[i], p.a[i] | off));
            }
        ExpectPlane(got.g, want.g, p.W, p.H, "Overlay green");

        // ChannelValue: CInt(undo * factor) held at 255; 1.5 * 3 = 4.5 rounds to 4.
        for (float factor : {0.0f, 0.37f, 1.0f, 1.5f, 2.0f}) {
            got = p;
            kwfilter::ChannelValue(got.r.data(), u.r.data(), p.a.data(), off, p.W, p.H, factor);
            want = p;
            for (int y = 0; y < p.H; ++y)
                for (int x = 0; x < p.W; ++x) {
                    const size_t i = p.at(x, y);
                    const int v = std::min(255, static_cast<int>(std::nearbyint(u.r[i] * factor)));
                    want.r[i] = static_cast<uint8_t>(Mix(u.r[i], v, p.a[i] | off));
                }
            ExpectPlane(got.r, want.r, p.W, p.H, "ChannelValue");
        }
    }
}

TEST(FilterKernels, LookUpTablesHistogramAndPosterize) {
    Pic p(31, 7, 4), u(31, 7, 5);
    uint8_t lut[256];
    for (int i = 0; i < 256; ++i) lut[i] = static_cast<uint8_t>(255 - i / 2);
    Pic got = p, want = p;
    kwfilter::SetValue(got.r.data(), got.g.data(), got.b.data(), lut, p.W, p.H);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) want.b[p.at(x, y)] = lut[p.b[p.at(x, y)]];
    ExpectPlane(got.b, want.b, p.W, p.H, "SetValue");

    got = p;
    kwfilter::SetValueAlpha(got.r.data(), got.g.data(), got.b.data(), lut, p.a.data(), 0, p.W, p.H);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) {
            const size_t i = p.at(x, y);
            want.r[i] = static_cast<uint8_t>(Mix(p.r[i], lut[p.r[i]], p.a[i]));
        }
    ExpectPlane(got.r, want.r, p.W, p.H, "SetValueAlpha");

    // From the undo planes into the main ones: the source stays, the mix is against it.
    got = p;
    kwfilter::SetValueAlphaFrom(got.r.data(), got.g.data(), got.b.data(), u.r.data(), u.g.data(), u.b.data(), lut,
                                p.a.data(), 0, p.W, p.H);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) want.b[p.at(x, y)] = static_cast<uint8_t>(Mix(u.b[p.at(x, y)], lut[u.b[p.at(x, y)]], p.a[p.at(x, y)]));
    ExpectPlane(got.b, want.b, p.W, p.H, "SetValueAlphaFrom");
    got = p;
    kwfilter::SetValueFrom(got.r.data(), got.g.data(), got.b.data(), u.r.data(), u.g.data(), u.b.data(), lut, p.W, p.H);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) want.g[p.at(x, y)] = lut[u.g[p.at(x, y)]];
    ExpectPlane(got.g, want.g, p.W, p.H, "SetValueFrom");

    std::vector<int32_t> hist(768, 99);
    kwfilter::BuildSpect(p.r.data(), p.g.data(), p.b.data(), hist.data(), p.W, p.H);
    std::vector<int32_t> ref(768, 0);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) {
            ++ref[p.r[p.at(x, y)]];
            ++ref[256 + p.g[p.at(x, y)]];
            ++ref[512 + p.b[p.at(x, y)]];
        }
    EXPECT_EQ(hist, ref);  // the extra column is not counted, old counts are not kept

    for (int step : {1, 3, 64, 255}) {
        got = p;
        kwfilter::FastPosterize(got.r.data(), got.g.data(), got.b.data(), p.a.data(), p.W, p.H, u.r.data(), u.g.data(),
                                u.b.data(), step, 0);
        for (int y = 0; y < p.H; ++y)
            for (int x = 0; x < p.W; ++x) {
                const size_t i = p.at(x, y);
                want.g[i] = static_cast<uint8_t>(Mix(u.g[i], (u.g[i] / step) * step, p.a[i]));
            }
        ExpectPlane(got.g, want.g, p.W, p.H, "FastPosterize");
    }
}

TEST(FilterKernels, HueShiftKeepsGreysAndClampsDoubledSaturation) {
    const int W = 4, H = 1;
    Pic p(W, H, 6);
    std::vector<float> hue = {0, 100, 350, 200}, sat = {1, 0, 0.8f, 0.6f}, val = {1, 0.5f, 0.9f, 0.7f};
    kwfilter::FastHSV(p.r.data(), p.g.data(), p.b.data(), p.a.data(), W, H, hue.data(), sat.data(), val.data(), 120,
                      2.0f, 1.0f, 255);
    // Pure red turned by 120 degrees is pure green.
    EXPECT_EQ(p.r[0], 0);
    EXPECT_EQ(p.g[0], 255);
    EXPECT_EQ(p.b[0], 0);
    // Saturation 0 stays grey whatever the turn: r = g = b = round(0.5 * 255) = 128.
    EXPECT_EQ(p.r[1], 128);
    EXPECT_EQ(p.g[1], 128);
    EXPECT_EQ(p.b[1], 128);
    // 350 + 120 wraps to 110; saturation 0.8 doubled is held at 1, so one channel is 0.
    float r, g, b;
    kwfilter::HSV_To_RGB(r, g, b, 110, 1.0f, 0.9f);
    EXPECT_EQ(p.r[2], static_cast<int>(std::nearbyint(r * 255)));
    EXPECT_EQ(p.g[2], static_cast<int>(std::nearbyint(g * 255)));
    EXPECT_EQ(p.b[2], 0);
}

TEST(FilterKernels, LuminanceTransformRoundTripsAndInvertsValue) {
    float y, u, v, r, g, b;
    kwfilter::f_rgb2yuv(1, 1, 1, y, u, v);
    EXPECT_NEAR(y, 1.0f, 1e-6f);
    EXPECT_NEAR(u, 0.0f, 1e-6f);
    kwfilter::f_rgb2yuv(0.2f, 0.7f, 0.4f, y, u, v);
    EXPECT_NEAR(y, 0.299f * 0.2f + 0.587f * 0.7f + 0.114f * 0.4f, 1e-6f);
    kwfilter::f_yuv2rgb(y, u, v, r, g, b);
    EXPECT_NEAR(r, 0.2f, 1e-5f);
    EXPECT_NEAR(g, 0.7f, 1e-5f);
    EXPECT_NEAR(b, 0.4f, 1e-5f);
}

namespace {
// The window's sum along one direction, in the kernel's order of operations.
uint8_t WindowAt(const Pic& p, const Bytes& s, int x, int y, bool horizontal, const float* w, int half) {
    auto px = [&](int k) {
        const int xx = horizontal ? Clamp(x + k, 0, p.W - 1) : x, yy = horizontal ? y : Clamp(y + k, 0, p.H - 1);
        return static_cast<float>(s[p.at(xx, yy)]);
    };
    float acc = w[0] * px(0), sum = w[0];
    for (int k = 1; k <= half; ++k) acc += w[k] * (px(-k) + px(k)), sum += 2.0f * w[k];
    return static_cast<uint8_t>(std::nearbyint(std::min(255.0f, acc / sum)));
}

std::vector<float> Window(int half) {
    const int r = 2 * half;
    std::vector<float> w(half + 3, 0.0f);
    for (int i = 0; i <= half; ++i) w[i] = static_cast<float>((std::cos((double(i) / r) * 360 * 0.0174) + 1) / 2);
    return w;
}
}  // namespace

TEST(FilterKernels, WindowPassesMatchTheSlowSumWithClampedEdges) {
    for (auto [W, H, half] : {std::tuple{1, 1, 1}, {3, 2, 4}, {37, 23, 3}, {50, 40, 12}, {9, 70, 32}}) {
        Pic p(W, H, 7 + W);
        const auto w = Window(half);
        Pic got = p, want = p;
        kwfilter::xFastGaussPass1(got.r.data(), got.g.data(), got.b.data(), p.r.data(), p.g.data(), p.b.data(), W, H,
                                  w.data(), half);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) want.g[p.at(x, y)] = WindowAt(p, p.g, x, y, true, w.data(), half);
        ExpectPlane(got.g, want.g, W, H, "pass 1");
        got = p;
        kwfilter::xFastGauss8Pass2(got.a.data(), p.a.data(), W, H, w.data(), half);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) want.a[p.at(x, y)] = WindowAt(p, p.a, x, y, false, w.data(), half);
        ExpectPlane(got.a, want.a, W, H, "8-bit pass 2");
    }
}

TEST(FilterKernels, MaskBlurAndThreeByThreeMatchTheirSums) {
    Pic p(19, 13, 9), d(19, 13, 10);
    const int radius = 2, n = 5;
    Bytes kernel(n * n);
    int32_t sum = 0;
    for (int i = 0; i < n * n; ++i) sum += kernel[i] = static_cast<uint8_t>((i * 37) % 11 == 3 ? 0 : i * 7 % 200);
    for (bool alpha : {false, true}) {
        Pic got = d, want = d;
        if (alpha)
            kwfilter::xBlurAlpha(p.r.data(), p.g.data(), p.b.data(), got.r.data(), got.g.data(), got.b.data(),
                                 p.a.data(), 0, p.W, p.H, kernel.data(), radius, sum, 0, p.H);
        else
            kwfilter::xBlur(p.r.data(), p.g.data(), p.b.data(), got.r.data(), got.g.data(), got.b.data(), p.W, p.H,
                            kernel.data(), radius, sum, 0, p.H);
        for (int y = 0; y < p.H; ++y)
            for (int x = 0; x < p.W; ++x) {
                int acc = 0;
                for (int j = 0; j < n; ++j)
                    for (int i = 0; i < n; ++i)
                        acc += kernel[j * n + i] * p.b[p.at(Clamp(x + i - radius, 0, p.W - 1), Clamp(y + j - radius, 0, p.H - 1))];
                const int v = (acc + sum / 2) / sum;
                want.b[p.at(x, y)] = static_cast<uint8_t>(alpha ? Mix(p.b[p.at(x, y)], v, p.a[p.at(x, y)]) : v);
            }
        ExpectPlane(got.b, want.b, p.W, p.H, alpha ? "xBlurAlpha" : "xBlur");
    }
    // A band of rows leaves the others alone.
    Pic band = d;
    kwfilter::xBlur(p.r.data(), p.g.data(), p.b.data(), band.r.data(), band.g.data(), band.b.data(), p.W, p.H,
                    kernel.data(), radius, sum, 4, 6);
    EXPECT_EQ(band.r[p.at(3, 3)], d.r[p.at(3, 3)]);
    EXPECT_EQ(band.r[p.at(3, 6)], d.r[p.at(3, 6)]);

    const kwfilter::Weights3x3 wt{{1, -2, 0.5f, 3, 1, 1, 0, 2, -1}};
    Pic got = d, want = d;
    kwfilter::ConvolveAlpha(got.r.data(), got.g.data(), got.b.data(), p.r.data(), p.g.data(), p.b.data(), p.a.data(),
                            0, p.W, p.H, wt, 3.0f, 10.0f);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) {
            float s = 0;
            for (int k = 0; k < 9; ++k)
                s += wt.w[k] * p.g[p.at(Clamp(x + k % 3 - 1, 0, p.W - 1), Clamp(y + k / 3 - 1, 0, p.H - 1))];
            const int v = static_cast<int>(std::nearbyint(std::clamp(s / 3.0f + 10.0f, 0.0f, 255.0f)));
            want.g[p.at(x, y)] = static_cast<uint8_t>(Mix(p.g[p.at(x, y)], v, p.a[p.at(x, y)]));
        }
    ExpectPlane(got.g, want.g, p.W, p.H, "ConvolveAlpha");
}

TEST(FilterKernels, CombineFormulasAtTheirEnds) {
    // One row: main and swap pairs that sit at the formulas' ends.
    const int W = 4, H = 1;
    Pic p(W, H, 11), s(W, H, 12);
    const int pairs[W][2] = {{255, 255}, {128, 128}, {255, 17}, {0, 99}};
    for (int x = 0; x < W; ++x) {
        p.r[x] = p.g[x] = p.b[x] = static_cast<uint8_t>(pairs[x][0]);
        s.r[x] = s.g[x] = s.b[x] = static_cast<uint8_t>(pairs[x][1]);
    }
    Pic d = p;
    kwfilter::CombinePixels(kwfilter::CombineFormula::Difference, d.r.data(), d.g.data(), d.b.data(), s.r.data(),
                            s.g.data(), s.b.data(), p.a.data(), 255, W, H);
    EXPECT_EQ(d.r[0], 0);    // equal whites give 0, not a difference of 0 by accident
    EXPECT_EQ(d.r[1], 127);  // (127 * 128 * 2) \ 255
    Pic l = p;
    kwfilter::CombinePixels(kwfilter::CombineFormula::Luminance, l.r.data(), l.g.data(), l.b.data(), s.r.data(),
                            s.g.data(), s.b.data(), p.a.data(), 255, W, H);
    EXPECT_EQ(l.g[2], 255);  // white main stays white
    EXPECT_EQ(l.g[3], 99);   // black main takes the swap
}

TEST(FilterKernels, CombineFormulasMatchTheSlowLoop) {
    Pic p(17, 9, 13), s(17, 9, 14);
    using F = kwfilter::CombineFormula;
    for (F f : {F::Luminance, F::Difference, F::Texture, F::Lighter, F::Darker, F::Binary}) {
        Pic got = p;
        kwfilter::CombinePixels(f, got.r.data(), got.g.data(), got.b.data(), s.r.data(), s.g.data(), s.b.data(),
                                p.a.data(), 0, p.W, p.H);
        Pic want = p;
        for (int y = 0; y < p.H; ++y)
            for (int x = 0; x < p.W; ++x) {
                const size_t i = p.at(x, y);
                const int B[3] = {p.r[i], p.g[i], p.b[i]}, S[3] = {s.r[i], s.g[i], s.b[i]};
                const int bs = B[0] + B[1] + B[2], ss = S[0] + S[1] + S[2];
                int n[3];
                for (int c = 0; c < 3; ++c) {
                    switch (f) {
                        case F::Luminance: n[c] = (S[c] * (255 - B[c]) + B[c] * B[c]) / 255; break;
                        case F::Difference: n[c] = ((255 - B[c]) * S[c] + (255 - S[c]) * B[c]) / 255; break;
                        case F::Texture: n[c] = B[c] * static_cast<int>(std::lround(ss / 3.0)) / 255; break;
                        case F::Lighter: n[c] = std::lround(ss / 3.0) > std::lround(bs / 3.0) ? S[c] : B[c]; break;
                        case F::Darker: n[c] = double(std::lround(ss / 3.0)) < bs / 3.0 ? S[c] : B[c]; break;
                        default: n[c] = std::lround(ss / 3.0) > std::lround(bs / 3.0) ? 0 : 255; break;
                    }
                }
                want.r[i] = static_cast<uint8_t>(Mix(B[0], n[0], p.a[i]));
                want.g[i] = static_cast<uint8_t>(Mix(B[1], n[1], p.a[i]));
                want.b[i] = static_cast<uint8_t>(Mix(B[2], n[2], p.a[i]));
            }
        ExpectPlane(got.r, want.r, p.W, p.H, "combine red");
        ExpectPlane(got.b, want.b, p.W, p.H, "combine blue");
    }
    Pic got = p;
    kwfilter::Premult(got.r.data(), got.g.data(), got.b.data(), s.r.data(), s.g.data(), s.b.data(), p.a.data(), p.W,
                      p.H);
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) {
            const size_t i = p.at(x, y);
            const int a = p.a[i], sp = static_cast<int>(std::nearbyint((255 - s.g[i]) * a / 255.0));
            EXPECT_EQ(got.g[i], static_cast<int>(std::nearbyint(((255 - a) * p.g[i] + (255 - sp) * a) / 255.0)));
        }
}

TEST(FilterKernels, EmbossByAnEvenPageLeavesThePicture) {
    Pic p(12, 9, 15), s(12, 9, 16);
    for (auto* pl : {&s.r, &s.g, &s.b}) std::fill(pl->begin(), pl->end(), 77);
    Pic got = p;
    kwfilter::EmbossMap(got.r.data(), got.g.data(), got.b.data(), s.r.data(), s.g.data(), s.b.data(), p.a.data(), 255,
                        p.W, p.H, 1, 1, -1, -1);
    EXPECT_EQ(got.r, p.r);
    // A step in the page lights the pixels beside it: h1 - h2 = +-90 gives k = CLng(44.5) = 44
    // and CLng(-45.5) = -46, both rounded half to even.
    for (int x = 0; x <= p.W; ++x) s.r[s.at(x, 5)] = s.g[s.at(x, 5)] = s.b[s.at(x, 5)] = 167;
    got = p;
    kwfilter::EmbossMap(got.r.data(), got.g.data(), got.b.data(), s.r.data(), s.g.data(), s.b.data(), p.a.data(), 255,
                        p.W, p.H, 0, 1, 0, -1);
    EXPECT_EQ(got.g[p.at(4, 4)], std::min(255, p.g[p.at(4, 4)] + 44));
    EXPECT_EQ(got.g[p.at(4, 6)], std::max(0, p.g[p.at(4, 6)] - 46));
    EXPECT_EQ(got.g[p.at(0, 4)], p.g[p.at(0, 4)]);  // the border stays
}

TEST(FilterKernels, KeyedPixelsAndSpill) {
    const int W = 4, H = 1;
    Pic u(W, H, 17), s(W, H, 18), d(W, H, 19);
    const int px[W][3] = {{255, 0, 0}, {0, 255, 0}, {255, 255, 255}, {100, 200, 90}};
    for (int x = 0; x < W; ++x) u.r[x] = px[x][0], u.g[x] = px[x][1], u.b[x] = px[x][2];
    uint8_t lut[256];
    for (int i = 0; i < 256; ++i) lut[i] = i < 64 ? 0 : 255;
    Bytes matte(u.r.size(), 9);
    kwfilter::KeyMatte(matte.data(), u.r.data(), u.g.data(), lut, W, H);
    EXPECT_EQ(matte[0], 0);    // red: foreground
    EXPECT_EQ(matte[1], 255);  // green: ground
    EXPECT_EQ(matte[2], 0);    // white: the red term keeps it
    EXPECT_EQ(matte[W], 9);    // the extra column is not written

    for (int x = 0; x < W; ++x) lut[x] = 0;
    std::fill(lut, lut + 256, 0);  // everything foreground: the spill rule alone shows
    kwfilter::FastGreenscreen(d.r.data(), d.g.data(), d.b.data(), u.a.data(), W, H, u.r.data(), u.g.data(), u.b.data(),
                              s.r.data(), s.g.data(), s.b.data(), lut, 128, 0);
    // (100, 200, 90): green exceeds red by 100, half of it (128 / 255) goes.
    EXPECT_EQ(d.g[3], 200 - 100 * 128 / 255);
    EXPECT_EQ(d.r[3], 100);
    EXPECT_EQ(d.g[2], 255);  // no excess, nothing taken
    std::fill(lut, lut + 256, 255);  // everything ground: the swap page shows
    kwfilter::FastBluescreen(d.r.data(), d.g.data(), d.b.data(), u.a.data(), W, H, u.r.data(), u.g.data(), u.b.data(),
                             s.r.data(), s.g.data(), s.b.data(), lut, 255, 0);
    EXPECT_EQ(d.b[1], s.b[1]);
}

TEST(FilterKernels, TwoThreadsGiveTheBytesOfOne) {
    Pic p(257, 131, 21), u(257, 131, 22), s(257, 131, 23);
    const auto w = Window(12);
    const kwfilter::Weights3x3 box{{1, 1, 1, 1, 1, 1, 1, 1, 1}};
    uint8_t lut[256];
    for (int i = 0; i < 256; ++i) lut[i] = static_cast<uint8_t>(std::min(255, i * 2));
    Bytes kernel(25, 3);
    auto runAll = [&](int threads) {
        ThreadsGuard g(threads);
        Pic d = p;
        kwfilter::xFastGaussPass1(d.r.data(), d.g.data(), d.b.data(), u.r.data(), u.g.data(), u.b.data(), p.W, p.H,
                                  w.data(), 12);
        kwfilter::xFastGaussPass2(d.r.data(), d.g.data(), d.b.data(), u.r.data(), u.g.data(), u.b.data(), p.W, p.H,
                                  w.data(), 12);
        Pic e = p;
        kwfilter::ConvolveAlpha(e.r.data(), e.g.data(), e.b.data(), u.r.data(), u.g.data(), u.b.data(), p.a.data(), 0,
                                p.W, p.H, box, 9, 0);
        kwfilter::SetValueAlpha(e.r.data(), e.g.data(), e.b.data(), lut, p.a.data(), 0, p.W, p.H);
        kwfilter::CombinePixels(kwfilter::CombineFormula::Darker, e.r.data(), e.g.data(), e.b.data(), s.r.data(),
                                s.g.data(), s.b.data(), p.a.data(), 0, p.W, p.H);
        kwfilter::EmbossMap(e.r.data(), e.g.data(), e.b.data(), s.r.data(), s.g.data(), s.b.data(), p.a.data(), 0, p.W,
                            p.H, 1, 0, -1, 0);
        Pic f = p;
        kwfilter::xBlurAlpha(u.r.data(), u.g.data(), u.b.data(), f.r.data(), f.g.data(), f.b.data(), p.a.data(), 0, p.W,
                             p.H, kernel.data(), 2, 75, 0, p.H);
        kwfilter::FastGreenscreen(f.r.data(), f.g.data(), f.b.data(), p.a.data(), p.W, p.H, u.r.data(), u.g.data(),
                                  u.b.data(), s.r.data(), s.g.data(), s.b.data(), lut, 100, 0);
        return std::vector<Bytes>{d.r, d.g, d.b, e.r, e.g, e.b, f.r, f.g, f.b};
    };
    const auto one = runAll(1), two = runAll(2);
    for (size_t k = 0; k < one.size(); ++k) EXPECT_EQ(one[k], two[k]) << "plane " << k;
    EXPECT_NE(one[0], p.r);  // the kernels did run
}

TEST(FilterThreads, EveryRowOnceNestedCallsAloneAndFailuresReachTheCaller) {
    ThreadsGuard g(2);
    std::vector<int> seen(100, 0);
    kwthreads::ForRows(100, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) ++seen[y];
        // A call from inside a band finds the worker taken and works alone.
        std::vector<int> inner(40, 0);
        kwthreads::ForRows(40, [&](int a, int b) {
            for (int y = a; y < b; ++y) ++inner[y];
        });
        for (int v : inner) ASSERT_EQ(v, 1);
    });
    for (int v : seen) EXPECT_EQ(v, 1);
    EXPECT_THROW(kwthreads::ForRows(100,
                                    [](int y0, int) {
                                        if (y0 > 0) throw std::runtime_error("lower band");
                                    }),
                 std::runtime_error);
    // The worker is free again afterwards.
    std::vector<int> after(64, 0);
    kwthreads::ForRows(64, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) ++after[y];
    });
    for (int v : after) EXPECT_EQ(v, 1);
}
