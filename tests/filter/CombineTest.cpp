// Combining with the swap page: the table formulas at their ends, the alpha ways,
// mix buffers and the emboss of an even page.
#include "filter/Combine.h"
#include "tests/filter/FilterFixture.h"

using CombineTest = FilterTest;

TEST_F(CombineTest, TableFormulasAtTheirEndsAreOneUndoStepEach) {
    MakeTestDocument(4, 2);
    Fill(BufR, 0), Fill(SwapR, 0);
    Fill(BufG, 100), Fill(SwapG, 127);
    Fill(BufB, 100), Fill(SwapB, 128);
    CombineDiv_Click();
    EXPECT_EQ(BufR(1, 1), 255);  // swap 0 gives 255 even when main is 0
    RepaintUndo();
    EXPECT_EQ(BufR(1, 1), 0);
    CombineAroundGrey_Click();
    EXPECT_EQ(BufG(2, 0), 100);  // 127 is neutral
    EXPECT_EQ(BufB(2, 0), 101);  // 128 raises by one
    Fill(SwapR, 200), Fill(BufR, 100);
    CombineAdd_Click();
    EXPECT_EQ(BufR(0, 0), 255);
    CombineSub_Click();
    EXPECT_EQ(BufR(0, 0), 55);
}

TEST_F(CombineTest, AfterPassAndPerPixelBothKeepTheUnselectedHalf) {
    MakeTestDocument(8, 4);
    Fill(BufR, 60), Fill(SwapR, 90), Fill(BufG, 60), Fill(SwapG, 90), Fill(BufB, 60), Fill(SwapB, 90);
    SelectLeftHalf();
    CombineMult_Click();  // after-pass
    EXPECT_EQ(BufR(1, 1), 60 * 90 / 255);
    EXPECT_EQ(BufR(6, 1), 60);
    CombineDifference_Click();  // per pixel
    EXPECT_EQ(BufR(6, 1), 60);
    CobineOverlay_Click();  // alpha blit: the swap where selected
    EXPECT_EQ(BufG(0, 0), 90);
    EXPECT_EQ(BufG(7, 0), 60);
}

TEST_F(CombineTest, MixBuffersPreviewsAndCancels) {
    MakeTestDocument(6, 3);
    Fill(BufR, 10), Fill(SwapR, 210);
    CombineMix_Click();
    MixBufs::HScroll1.Value = 255;
    EXPECT_EQ(BufR(2, 2), 210);
    MixBufs::HScroll1.Value = 0;
    EXPECT_EQ(BufR(2, 2), 10);
    MixBufs::HScroll1.Value = 51;
    EXPECT_EQ(BufR(2, 2), (210 * 51 + 10 * 204) / 255);
    SelectLeftHalf();  // the box path gives the same in the box, nothing outside
    MixBufs::HScroll1.Value = 255;
    EXPECT_EQ(BufR(0, 0), 210);
    EXPECT_EQ(BufR(5, 0), 10);
    MixBufs::Command2.press();
    EXPECT_EQ(BufR(0, 0), 10);
}

TEST_F(CombineTest, EmbossByAnEvenSwapLeavesThePictureInEveryDirection) {
    MakeTestDocument(7, 6);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 7; ++x) BufR(x, y) = BufG(x, y) = BufB(x, y) = static_cast<uint8_t>(x * 30 + y);
    Fill(SwapR, 33), Fill(SwapG, 34), Fill(SwapB, 35);
    const auto before = Snapshot();
    for (int d = 0; d < 8; ++d) {
        EmbossMap(d);
        EXPECT_EQ(Snapshot(), before) << d;
    }
    // A bright column in the page lights its left side from the left.
    for (int y = 0; y < 6; ++y) SwapR(4, y) = SwapG(4, y) = SwapB(4, y) = 255;
    EmbossMap(7);  // (1, 0) and (-1, 0)
    EXPECT_GT(BufR(3, 2), before[2 * 7 + 3]);
    EXPECT_LT(BufR(5, 2), before[2 * 7 + 5]);
}
