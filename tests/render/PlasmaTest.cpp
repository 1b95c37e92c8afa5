// The doubling renders and the Perlin Bumpy toy: the noise step, the schedule
// at K = 1 and on tiny canvases, alpha, repeatability, and the panels.
#include <vector>

#include "native/FilterThreads.h"
#include "native/Noise.h"
#include "render/Plasma.h"
#include "tests/render/RenderFixture.h"

using PlasmaTest = RenderTest;

TEST_F(PlasmaTest, NoiseStepReflectsAtZeroAndHoldsAt255) {
    TempPlane = Plane::Make(3, 2);
    for (int y = 0; y <= 2; ++y)
        for (int x = 0; x <= 3; ++x) TempPlane(x, y) = static_cast<uint8_t>((x + y) % 2 ? 255 : 0);
    vb::Randomize(77);
    std::vector<double> draws;
    for (int i = 0; i < 12; ++i) draws.push_back(vb::Rnd());
    vb::Randomize(77);
    DoNoise(3, 2, 200);
    bool reflected = false, held = false;
    for (int y = 0, i = 0; y <= 2; ++y)
        for (int x = 0; x <= 3; ++x, ++i) {
            const int t = (x + y) % 2 ? 255 : 0;
            const int v = vb::CInt(t + (0.5 - draws[i]) * 200 * 2);
            EXPECT_EQ(TempPlane(x, y), std::min(std::abs(v), 255));
            reflected |= v < 0;
            held |= v > 255;
        }
    EXPECT_TRUE(reflected && held);  // the seed reaches both ends
}

TEST_F(PlasmaTest, OneIterationIsFullNoiseDoubledOnceAndTopLeftOnly) {
    Picture(6, 4);
    SelectAll(255);
    vb::Randomize(5);
    RenderPlasma(6, 4, 1);
    const std::vector<uint8_t> got = Snapshot();
    // The same by hand: noise at full amplitude over (0..6, 0..4), one doubling.
    vb::Randomize(5);
    std::vector<int> t(7 * 5);
    for (int& v : t) v = std::min(std::abs(vb::CInt((0.5 - vb::Rnd()) * 255 * 2)), 255);
    auto T = [&](int x, int y) { return t[y * 7 + x]; };
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x) {
            const int cx = x / 2, cy = y / 2;
            const int a = T(cx, cy), b = T(cx + 1, cy), c = T(cx, cy + 1), d = T(cx + 1, cy + 1);
            const int n = x % 2 == 0 ? (y % 2 == 0 ? a : (a + c) >> 1) : (y % 2 == 0 ? (a + b) >> 1 : (a + b + c + d) >> 2);
            for (int ch = 0; ch < 3; ++ch) EXPECT_EQ(got[ch * 24 + y * 6 + x], n) << x << "," << y;
        }
    EXPECT_EQ(TempPlane.ubX(), 1);  // the field is shrunk afterwards
}

TEST_F(PlasmaTest, TinyCanvasesAtEveryIterationCount) {
    for (auto [w, h] : {std::pair{1, 1}, {2, 1}, {1, 3}, {7, 2}})
        for (int K = 1; K <= 8; ++K) {
            Picture(w, h);
            SelectAll(255);
            RenderPlasma(w, h, K);
            RenderColorPlasma(w, h, K);
            SetAlphaOn(true);
            RenderBumpy(w, h, K, 2);
            RenderBumpyPerlin(w, h, K, 1, 2);
            EXPECT_EQ(BufR.ubX(), w);
        }
    // 1 x 1, one pass: the one cell is the noise at full amplitude.
    Picture(1, 1);
    SelectAll(255);
    vb::Randomize(9);
    const int expect = std::min(std::abs(vb::CInt((0.5 - vb::Rnd()) * 510)), 255);
    vb::Randomize(9);
    RenderPlasma(1, 1, 1);
    EXPECT_EQ(BufG(0, 0), expect);
}

TEST_F(PlasmaTest, PlasmaObeysAlphaEvenSwitchedOffWhileBumpyIgnoresIt) {
    Picture(16, 12);
    SelectAll(0);
    SetAlphaOn(false);
    const auto before = Snapshot();
    RenderPlasma(16, 12, 3);
    RenderColorPlasma(16, 12, 3);
    EXPECT_EQ(Snapshot(), before);
    RenderBumpy(16, 12, 3, 2);
    EXPECT_NE(Snapshot(), before);
    // With alpha on the same empty selection keeps the bumps out.
    Picture(16, 12);
    SelectAll(0);
    SetAlphaOn(true);
    RenderBumpy(16, 12, 3, 2);
    EXPECT_EQ(Snapshot(), before);
    // Bumps go through the gradient: green is the mirror of red in slot 2.
    SelectAll(255);
    RenderBumpy(16, 12, 3, 2);
    for (int x = 0; x < 16; ++x) EXPECT_EQ(BufG(x, 5), 255 - BufR(x, 5));
}

TEST_F(PlasmaTest, TheSameSeedGivesTheSamePicture) {
    auto render = [](uint32_t seed, bool colour) {
        Picture(33, 21);
        SelectAll(255);
        vb::Randomize(seed);
        colour ? RenderColorPlasma(33, 21, 4) : RenderPlasma(33, 21, 4);
        return Snapshot();
    };
    for (bool colour : {false, true}) {
        EXPECT_EQ(render(42, colour), render(42, colour));
        EXPECT_NE(render(42, colour), render(43, colour));
    }
    const auto c = render(42, true);
    EXPECT_NE(std::vector<uint8_t>(c.begin(), c.begin() + 33 * 21),
              std::vector<uint8_t>(c.begin() + 33 * 21, c.begin() + 2 * 33 * 21));  // a field per channel
}

TEST_F(PlasmaTest, PerlinBumpsAreNoise2ThroughTheGradientOnAnyThreadCount) {
    Picture(50, 30);
    SetAlphaOn(false);
    kwthreads::SetThreads(1);
    RenderBumpyPerlin(50, 30, 3, 2, 2);
    const auto one = Snapshot();
    kwthreads::SetThreads(2);
    Picture(50, 30);
    RenderBumpyPerlin(50, 30, 3, 2, 2);
    EXPECT_EQ(Snapshot(), one);
    for (int y : {0, 17, 29})
        for (int x : {0, 9, 49}) {
            float acc = 0;
            for (int i = 1; i <= 3; ++i) {
                const float v[2] = {static_cast<float>(x / (10.0 * i) + 100 * i), static_cast<float>(y / (10.0 * i) + 100 * i)};
                acc = kwfilter::noise2(v) * 256 + acc + 128;
            }
            const int step = vb::CLng(std::clamp(acc / 3, 0.0f, 255.0f));
            EXPECT_EQ(BufR(x, y), step);
            EXPECT_EQ(BufB(x, y), step / 3);
        }
    // With alpha on, the after-pass keeps the unselected half as it was.
    Picture(50, 30);
    SelectLeftHalf();
    const auto before = Snapshot();
    SaveUndo();
    RenderBumpyPerlin(50, 30, 3, 2, 2);
    EXPECT_EQ(BufR(40, 3), before[3 * 50 + 40]);
    EXPECT_EQ(BufR(3, 3), one[3 * 50 + 3]);
}

TEST_F(PlasmaTest, PanelsRenderOnOkAsOneUndoStepAndBumpyRendersAgain) {
    Picture(20, 10);
    SelectAll(255);
    const auto before = Snapshot();
    Plasma_Click();
    EXPECT_TRUE(PlasmaOptions::form.Visible);
    PlasmaOptions::Command2.press();
    EXPECT_EQ(Snapshot(), before);  // Cancel renders nothing
    Plasma_Click();
    PlasmaOptions::Check1.Value = 1;
    PlasmaOptions::Command1.press();
    EXPECT_FALSE(PlasmaOptions::form.Visible);
    const auto plasma = Snapshot();
    EXPECT_NE(plasma, before);
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);

    BumpyToy_Click();
    BumpyOptions::Hscroll1.Value = 2;
    EXPECT_EQ(BumpyOptions::Label1.Caption.get(), "Gradient 3");
    BumpyOptions::Combo3.ListIndex = 1;
    BumpyOptions::Command3.press();
    EXPECT_TRUE(BumpyOptions::form.Visible);  // another try can be made
    const auto first = Snapshot();
    BumpyOptions::Command3.press();
    EXPECT_NE(Snapshot(), first);  // the generator moved on
    BumpyOptions::Combo3.ListIndex = 0;
    BumpyOptions::Command1.press();
    EXPECT_FALSE(BumpyOptions::form.Visible);
    for (int x = 0; x < 20; ++x) EXPECT_EQ(BufG(x, 4), 255 - BufR(x, 4));
}
