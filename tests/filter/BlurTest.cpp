// The blurs: the window, previews that never accumulate, the fade of the simple
// blur, the custom mask's symmetry and the alpha blur's question.
#include "core/framework/Boxes.h"
#include "filter/Blurs.h"
#include "filter/CustomBlur.h"
#include "filter/FadeLast.h"
#include "native/kwfilter.h"
#include "tests/filter/FilterFixture.h"

using BlurTest = FilterTest;

TEST_F(BlurTest, WindowEndsAndTheSmallestRadiusLeavesThePicture) {
    BuildFastGaussBuff(2);  // half 1: weights 1 and about 0
    ASSERT_GE(BlurWeights.size(), 4u);
    EXPECT_FLOAT_EQ(BlurWeights[0], 1.0f);
    EXPECT_GT(BlurWeights[1], 0.0f);
    EXPECT_LT(BlurWeights[1], 1e-3f);
    EXPECT_EQ(BlurWeights[2], 0.0f);
    BuildFastGaussBuff(24);
    EXPECT_NEAR(BlurWeights[6], 0.5f, 0.01f);  // a quarter turn: the middle of the cosine

    Picture(20, 12);
    const auto before = Snapshot();
    FastGaus_Click();
    FastGaussian::HScroll1.Value = 3;  // radius 2 again: half 1
    EXPECT_EQ(Snapshot(), before);
    FastGaussian::Command2.press();
}

TEST_F(BlurTest, GaussianPreviewDoesNotAccumulateAndCancelRestores) {
    Picture(30, 17);
    const auto before = Snapshot();
    FastGaus_Click();
    FastGaussian::HScroll1.Value = 12;
    const auto once = Snapshot();
    EXPECT_NE(once, before);
    FastGaussian::HScroll1.Value = 40;
    FastGaussian::HScroll1.Value = 12;
    EXPECT_EQ(Snapshot(), once);
    FastGaussian::Command2.press();
    EXPECT_EQ(Snapshot(), before);
    // Ok keeps it, one undo step.
    FastGaus_Click();
    FastGaussian::Command1.press();
    EXPECT_EQ(Snapshot(), once);
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(BlurTest, ADragOnlyArmsTheTimerAndTheBlurFollowsWhenIdle) {
    Picture(24, 10);
    FastGaussian::HScroll1.Value = 2;  // the panel keeps its slider between openings
    FastGaus_Click();
    const auto opened = Snapshot();
    FastGaussian::HScroll1.scrollTo(16);
    FastGaussian::HScroll1.scrollTo(30);
    EXPECT_EQ(Snapshot(), opened);  // the thumb moved, the picture not yet
    EXPECT_TRUE(FastGaussian::Timer1.TimerEnabled);
    FastGaussian::Timer1.fire();
    EXPECT_FALSE(FastGaussian::Timer1.TimerEnabled);
    EXPECT_EQ(BlurRadius, 30);  // the slider where it stands, not where the drag began
    const auto dragged = Snapshot();
    FastGaussian::HScroll1.Value = 2;
    FastGaussian::HScroll1.Value = 30;  // written outright: at once
    EXPECT_EQ(Snapshot(), dragged);
    FastGaussian::Command2.press();
}

TEST_F(BlurTest, GaussianHonoursTheSelection) {
    Picture(16, 16);
    SelectLeftHalf();
    FastGaus_Click();
    FastGaussian::HScroll1.Value = 20;
    EXPECT_EQ(BufR(12, 5), UndoR(12, 5));
    EXPECT_NE(BufR(3, 5), UndoR(3, 5));
    FastGaussian::Command1.press();
}

TEST_F(BlurTest, SimpleBlurFadeOkKeepsAndCancelRestoresTheStateBefore) {
    Picture(9, 9);
    const auto before = Snapshot();
    Simpleblur_Click();
    const int centre = (UndoG(3, 3) + UndoG(4, 3) + UndoG(5, 3) + UndoG(3, 4) + UndoG(4, 4) + UndoG(5, 4) +
                        UndoG(3, 5) + UndoG(4, 5) + UndoG(5, 5));
    EXPECT_EQ(BufG(4, 4), static_cast<int>(std::nearbyint(centre / 9.0f)));
    const auto full = Snapshot();
    SimpleBlur_Options::HScroll1.Value = 0;  // amount 255: the picture before
    EXPECT_EQ(Snapshot(), before);
    SimpleBlur_Options::HScroll1.Value = 255;  // amount 0 does nothing: the picture stays
    EXPECT_EQ(Snapshot(), before);
    SimpleBlur_Options::HScroll1.Value = 128;
    EXPECT_EQ(BufG(4, 4), (full[81 + 4 * 9 + 4] * 128 + UndoG(4, 4) * 127) / 255);
    SimpleBlur_Options::Command2.press();
    EXPECT_EQ(Snapshot(), before);
    EXPECT_TRUE(FadeR.empty());

    SimpleBlur_Options::HScroll1.Value = 255;  // the panel keeps its slider: full strength next time
    Simpleblur_Click();
    SimpleBlur_Options::Command1.press();
    EXPECT_EQ(Snapshot(), full);
    EXPECT_TRUE(FadeR.empty());
}

TEST_F(BlurTest, CustomMaskIsSymmetricWithoutIntensityAndThreeByThreeAtRadiusOne) {
    BuildBlurProfile(100);
    EXPECT_EQ(BlurProfile[0], 0);
    EXPECT_EQ(BlurProfile[255], 255);
    EXPECT_EQ(BlurProfile[256], 255);
    EXPECT_EQ(BlurProfile[128], 128);  // bias 0.5 is the straight line
    BuildGuassBuffer_Oct(1, 4, 0);
    EXPECT_EQ(BlurKernelSide, 3);
    BuildGuassBuffer_Oct(6, 3, 0);  // edges without intensity: circular
    const int n = BlurKernelSide;
    ASSERT_EQ(n, 13);
    for (int v = 0; v < n; ++v)
        for (int u = 0; u < n; ++u) {
            EXPECT_EQ(BlurKernel[v * n + u], BlurKernel[u * n + v]);
            EXPECT_EQ(BlurKernel[v * n + u], BlurKernel[v * n + (n - 1 - u)]);
        }
    BuildGuassBuffer_Oct(6, 3, 7);  // with intensity the lobes break the circle
    bool differs = false;
    for (int v = 0; v < n; ++v)
        for (int u = 0; u < n; ++u) differs |= BlurKernel[v * n + u] != BlurKernel[u * n + (n - 1 - v)];
    EXPECT_TRUE(differs);
}

TEST_F(BlurTest, CustomBlurOkBlursFromUndoAsOneStep) {
    Picture(14, 10);
    const auto before = Snapshot();
    Adjustableblur_Click();
    BlurOptions::HScroll1.Value = 2;
    BlurOptions::Command1.press();
    EXPECT_NE(Snapshot(), before);
    // An even picture stays even under any mask.
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);
    Fill(BufR, 77), Fill(BufG, 77), Fill(BufB, 77);
    BlurOptions::Command1.press();
    EXPECT_EQ(BufB(7, 5), 77);
}

TEST_F(BlurTest, LongCustomBlurWorksInBandsWithProgressAndGivesTheWholeResult) {
    Picture(70, 40);
    SelectLeftHalf();
    Adjustableblur_Click();
    BlurOptions::hscroll5.Value = 3;  // lobes: an uneven mask
    BlurOptions::hscroll4.Value = 4;
    BlurOptions::HScroll1.Value = 32;  // 65 x 65 taps: too long for one event
    host.shown.clear();
    BlurOptions::Command1.press();
    EXPECT_NE(std::find(host.shown.begin(), host.shown.end(), "Status"), host.shown.end());
    EXPECT_FALSE(Status::form.Visible);
    EXPECT_EQ(App.LockCount, 0);
    EXPECT_EQ(BarPosition, 100);
    // The bands together give what one pass over the picture gives.
    int32_t sum = 0;
    for (uint8_t k : BlurKernel) sum += k;
    Plane r, g, b;
    r.copyFrom(BufR), g.copyFrom(BufG), b.copyFrom(BufB);
    kwfilter::xBlurAlpha(UndoR.data(), UndoG.data(), UndoB.data(), r.data(), g.data(), b.data(), BufA.data(), 0, 70,
                         40, BlurKernel.data(), 32, sum, 0, 40);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 70; ++x) ASSERT_EQ(BufG(x, y), g(x, y)) << x << "," << y;
    EXPECT_EQ(BufR(60, 20), UndoR(60, 20));  // outside the selection
    EXPECT_NE(BufR(10, 20), UndoR(10, 20));
}

TEST_F(BlurTest, AlphaBlurAsksAndCancelLeavesAlpha) {
    Picture(12, 12);
    SelectLeftHalf();
    const auto alpha = AlphaSnapshot();
    host.Press("GenericOptions", "Command2");
    Alpha_Blur_Click();
    EXPECT_EQ(AlphaSnapshot(), alpha);
    host.Expect("GenericOptions", [] {
        EXPECT_EQ(GenericOptions::HScroll1.Max.get(), 64);
        GenericOptions::HScroll1.Value = 8;
        GenericOptions::Command1.press();
    });
    Alpha_Blur_Click();
    EXPECT_GT(BufA(6, 3), 0);    // softened across the edge at x = 6
    EXPECT_LT(BufA(5, 3), 255);
    EXPECT_EQ(BufA(0, 3), 255);  // far from the edge
    EXPECT_TRUE(host.AllAnswered());
}

TEST_F(BlurTest, LightDiffusionOnlyBrightensAndGivesTheSwapPageBack) {
    Picture(16, 12);
    Fill(SwapR, 5);
    BlurLightDifuse_Click();
    Adjust_LightDiffusion::HScroll1.Value = 8;
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x) ASSERT_GE(BufR(x, y), UndoR(x, y));
    EXPECT_EQ(SwapR(3, 3), 5);
    Adjust_LightDiffusion::Command2.press();
}
