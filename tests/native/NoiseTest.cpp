// Gradient noise and the render kernels against slow references written here.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "native/Noise.h"
#include "native/RenderKernels.h"

using namespace kwfilter;

TEST(Noise, ZeroOnTheLatticeBoundedAndContinuousBetween) {
    float lo = 0, hi = 0;
    for (int i = 0; i < 40; ++i)
        for (int j = 0; j < 40; ++j) {
            const float p[2] = {static_cast<float>(i - 7), static_cast<float>(j + 100)};
            EXPECT_EQ(noise2(p), 0.0f);
            const float q[3] = {static_cast<float>(i), static_cast<float>(j - 3), 5.0f};
            EXPECT_EQ(noise3(q), 0.0f);
            for (float f : {0.17f, 0.5f, 0.83f}) {
                const float a[2] = {i + f, j * 0.61f + 100};
                const float b[2] = {i + f + 0.001f, j * 0.61f + 100};
                const float n = noise2(a);
                lo = std::min(lo, n), hi = std::max(hi, n);
                EXPECT_NEAR(n, noise2(b), 0.01f);
                const float c[3] = {i + f, j * 0.37f, f * 3};
                EXPECT_LE(std::fabs(noise3(c)), 1.5f);
            }
        }
    EXPECT_GE(lo, -1.0f);
    EXPECT_LE(hi, 1.0f);
    EXPECT_LT(lo, -0.3f);  // a noise, not a constant
    EXPECT_GT(hi, 0.3f);
}

TEST(Noise, OctaveRowsGiveWhatNoise2GivesPixelByPixel) {
    for (int W : {1, 2, 37, 300})
        for (int K : {1, 5})
            for (int scale : {1, 3}) {
                PerlinColumns* pc = MakePerlinColumns(W, K, scale);
                std::vector<float> row(W);
                for (int y : {0, 1, 9, 250}) {
                    PerlinOctaveRow(pc, y, row.data());
                    for (int x = 0; x < W; ++x) {
                        float acc = 0;
                        for (int i = 1; i <= K; ++i) {
                            const double s = scale * i * 5.0, o = 100.0 * i;
                            const float v[2] = {static_cast<float>(x / s + o), static_cast<float>(y / s + o)};
                            acc = noise2(v) * 256 + acc + 128;
                        }
                        ASSERT_EQ(row[x], acc) << W << " " << K << " " << scale << " " << x << "," << y;
                        ASSERT_EQ(PerlinOctaves(static_cast<float>(x), static_cast<float>(y), K, scale), acc);
                    }
                }
                FreePerlinColumns(pc);
            }
}

TEST(RenderKernels, DoublingAveragesCornersAndCopiesTheLastRowAndColumn) {
    for (auto [w, h] : {std::pair{1, 1}, {3, 2}, {5, 4}}) {
        const size_t ss = w + 3, ds = 2 * w + 4;  // strides wider than needed
        std::vector<uint8_t> src(ss * (h + 1)), dst(ds * (2 * h + 1), 7);
        for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i * 89 % 256);
        DoubleField(src.data(), ss, w, h, dst.data(), ds);
        auto T = [&](int x, int y) { return int(src[y * ss + x]); };
        auto N = [&](int x, int y) { return int(dst[y * ds + x]); };
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                const int a = T(x, y), b = T(x + 1, y), c = T(x, y + 1), d = T(x + 1, y + 1);
                EXPECT_EQ(N(2 * x, 2 * y), a);
                EXPECT_EQ(N(2 * x + 1, 2 * y), (a + b) / 2);
                EXPECT_EQ(N(2 * x, 2 * y + 1), (a + c) / 2);
                EXPECT_EQ(N(2 * x + 1, 2 * y + 1), (a + b + c + d) / 4);
            }
        for (int y = 0; y <= 2 * h; ++y) EXPECT_EQ(N(2 * w, y), N(2 * w - 1, y));
        for (int x = 0; x <= 2 * w; ++x) EXPECT_EQ(N(x, 2 * h), N(x, 2 * h - 1));
        EXPECT_EQ(dst[2 * w + 1], 7);  // nothing written past the field
    }
    // A field 0 across writes nothing of its own: the cell keeps what it held.
    uint8_t one[1] = {9}, out[1] = {3};
    DoubleField(one, 1, 0, 0, out, 1);
    EXPECT_EQ(out[0], 3);
}

TEST(RenderKernels, PlasmaObeysAlphaAsItStandsAndTheGradientMapObeysAlphaOff) {
    const int W = 3, H = 2;
    std::vector<uint8_t> field = {200, 10, 0, 99, 255, 128, 50, 1, 77, 77}, A(12), P(12, 100);
    const uint8_t alphas[6] = {0, 255, 128, 1, 254, 60};
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) A[y * 4 + x] = alphas[y * 3 + x];
    std::vector<uint8_t> expect = P;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const int a = A[y * 4 + x], t = field[y * 5 + x];
            expect[y * 4 + x] = static_cast<uint8_t>((t * a + (255 - a) * 100) / 255);
        }
    PlasmaChannel(P.data(), field.data(), 5, A.data(), W, H);
    EXPECT_EQ(P, expect);

    std::vector<uint8_t> grad(768);
    for (int i = 0; i < 256; ++i) grad[i] = uint8_t(i), grad[256 + i] = uint8_t(255 - i), grad[512 + i] = uint8_t(i / 2);
    std::vector<uint8_t> R(12, 40), G(12, 40), B(12, 40);
    FieldThroughGradient(R.data(), G.data(), B.data(), field.data(), 5, grad.data(), A.data(), 255, W, H);
    EXPECT_EQ(R[0], 200);  // alpha 0, but alpha off: the gradient outright
    EXPECT_EQ(G[4 + 1], 255 - 50);
    std::fill(R.begin(), R.end(), 40), std::fill(B.begin(), B.end(), 40);
    FieldThroughGradient(R.data(), G.data(), B.data(), field.data(), 5, grad.data(), A.data(), 0, W, H);
    EXPECT_EQ(R[0], 40);  // alpha 0 keeps the picture
    EXPECT_EQ(R[1], 10);  // alpha 255 takes the gradient
    EXPECT_EQ(B[2], (40 * 127 + 0 * 128) / 255);
    EXPECT_EQ(R[3], 40);  // the extra column is never written
}

TEST(RenderKernels, OctaveSumsMapThroughTheGradientRoundedAndHeld) {
    std::vector<uint8_t> grad(768);
    for (int i = 0; i < 256; ++i) grad[i] = uint8_t(i), grad[256 + i] = uint8_t(255 - i), grad[512 + i] = uint8_t(i ^ 85);
    const float acc[6] = {-500.0f, 2.5f * 2, 3.5f * 2, 254.6f * 2, 9000.0f, 128.0f * 2};
    uint8_t R[6], G[6], B[6];
    AccThroughGradient(R, G, B, acc, 2, grad.data(), 6);
    const int want[6] = {0, 2, 4, 255, 255, 128};  // half to even
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(R[i], want[i]);
        EXPECT_EQ(G[i], 255 - want[i]);
        EXPECT_EQ(B[i], want[i] ^ 85);
    }
}

TEST(RenderKernels, NoiseRowsAddDrawsToTheUndoPictureAndClamp) {
    const uint8_t U[4] = {0, 255, 100, 3};
    const double rnd[12] = {0.0, 0.999, 0.5, 0.999, 0.0, 0.25, 0.75, 0.6, 0.4, 0.1, 0.9, 0.5};
    uint8_t R[4], G[4], B[4];
    ColorNoiseRow(R, G, B, U, U, U, rnd, 4, 40);
    for (int x = 0; x < 4; ++x) {
        const uint8_t* out[3] = {R, G, B};
        for (int c = 0; c < 3; ++c) {
            const double v = std::nearbyint(U[x] + (rnd[3 * x + c] - 0.5) * 40);
            EXPECT_EQ(out[c][x], std::clamp(v, 0.0, 255.0)) << x << " " << c;
        }
    }
    ValueNoiseRow(R, G, B, U, U, U, rnd, 4, 100);
    for (int x = 0; x < 4; ++x) {
        const long k = std::lround(std::nearbyint((rnd[x] - 0.5) * 100 * 255)) / 255;
        EXPECT_EQ(R[x], std::clamp<long>(U[x] + k, 0, 255));
        EXPECT_EQ(G[x], R[x]);
        EXPECT_EQ(B[x], R[x]);
    }
    EXPECT_EQ(R[0], 0);    // 0 - 50 held at 0
    EXPECT_EQ(R[1], 255);  // 255 + 49 held at 255
}
