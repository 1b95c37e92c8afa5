// The colour adjustments: the value table's deliberate quirks, previews that
// rebuild from the undo planes, Ok and Cancel, and the direct commands' ends.
#include "filter/AdjustPanels.h"
#include "filter/AdjustTone.h"
#include "filter/AdjustValue.h"
#include "filter/ColourCommands.h"
#include "filter/FadeLast.h"
#include "tests/filter/FilterFixture.h"

using AdjustTest = FilterTest;

TEST_F(AdjustTest, DefaultValueTableLiftsBlackByOne) {
    BuildValueTable(100, 0, 100);
    // Entry i is (i + 1) steps of 255 / 254.0001 up the ramp.
    for (int i : {0, 1, 127, 128, 200, 253})
        EXPECT_EQ(ValueLUT[i], static_cast<int>(std::nearbyint((i + 1) * (255 / 254.0001)))) << i;
    EXPECT_EQ(ValueLUT[0], 1);
    EXPECT_EQ(ValueLUT[254], 255);
    EXPECT_EQ(ValueLUT[255], 255);
    // Brightness 200 pushes the ramp below 0: every ramp index clamps to 0 and
    // the tail from there up takes the last value.
    BuildValueTable(200, 0, 100);
    for (int i : {0, 1, 100, 255}) EXPECT_EQ(ValueLUT[i], 255) << i;
    // Low contrast pulls toward mid grey; gamma below 100 brightens the middle.
    BuildValueTable(100, -100, 100);
    EXPECT_EQ(ValueLUT[0], 127);
    EXPECT_EQ(ValueLUT[255], 127);
    BuildValueTable(100, 0, 90);
    EXPECT_GT(ValueLUT[128], 129);
}

TEST_F(AdjustTest, ValuePreviewRebuildsFromUndoAndCancelRestores) {
    Picture(16, 9);
    const auto before = Snapshot();
    ColorBalance_Click();
    EXPECT_EQ(BufR(3, 2), ValueLUT[UndoR(3, 2)]);  // defaults already applied: black lifted
    AdjustOptions::Hscroll1.Value = 150;
    AdjustOptions::Hscroll1.Value = 100;  // back: the same as the first table, no drift
    EXPECT_EQ(BufG(5, 5), ValueLUT[UndoG(5, 5)]);
    BuildValueTable(100, 0, 100);
    EXPECT_EQ(BufG(5, 5), ValueLUT[UndoG(5, 5)]);
    int total = 0;
    for (int c = 0; c < 768; ++c) total += Spectrograph[c];
    EXPECT_EQ(total, 3 * 16 * 9);
    AdjustOptions::Command2_Click();
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(AdjustTest, ValueOkIsOneUndoStepAndFadeBlendsIt) {
    Picture(8, 8);
    const auto before = Snapshot();
    ColorBalance_Click();
    AdjustOptions::hscroll2.Value = 180;  // strong contrast
    AdjustOptions::Command1_Click();
    const auto after = Snapshot();
    EXPECT_NE(after, before);
    FadePrevious_Click();
    FadeLast::HScroll1.Value = 255;  // all the way back
    EXPECT_EQ(Snapshot(), before);
    FadeLast::Command2_Click();  // cancelling the fade keeps the adjustment
    EXPECT_EQ(Snapshot(), after);
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(AdjustTest, ColourBalanceWorksTheSelectionOnly) {
    Picture(10, 4);
    SelectLeftHalf();
    ColorBalance2_Click();
    AdjustColor::HScroll6.Value = 0;  // red off where selected
    EXPECT_EQ(BufR(1, 1), 0);
    EXPECT_EQ(BufR(8, 1), UndoR(8, 1));
    AdjustColor::Hscroll5.Value = 200;
    EXPECT_EQ(BufG(2, 2), std::min(255, UndoG(2, 2) * 2));
    ColorBalance(0.5f, 1.0f, 1.0f);  // the plain form: CInt rounds 0.5 * odd values half to even
    EXPECT_EQ(BufR(1, 1), static_cast<int>(std::nearbyint(UndoR(1, 1) * 0.5)));
    AdjustColor::Command2.press();
    EXPECT_EQ(BufR(1, 1), (1 * 37 + 1 * 11) % 256);
}

TEST_F(AdjustTest, SaturationHueAndPosterizeAtTheirNeutralPoints) {
    Picture(9, 7);
    const auto before = Snapshot();
    Adjust_Sat_Click();  // 255: the picture itself
    EXPECT_EQ(Snapshot(), before);
    AddjustSat::HScroll1.Value = 1;  // almost grey
    EXPECT_LE(std::abs(BufR(4, 4) - BufG(4, 4)), 2);
    AddjustSat::Command2.press();

    Addjust_Hue_Click();  // hue 180 means no turn, value 255 is neutral
    for (int i = 0; i < 3 * 63; ++i) EXPECT_LE(std::abs(Snapshot()[i] - before[i]), 1) << i;
    AdjustHue::Hscroll1.Value = 300;  // a turn of 120 degrees
    EXPECT_NE(Snapshot(), before);
    AdjustHue::Command3.press();  // reset: the turn is undone by the third slider's change
    for (int i = 0; i < 3 * 63; ++i) EXPECT_LE(std::abs(Snapshot()[i] - before[i]), 1) << i;
    AdjustHue::Command1.press();
    EXPECT_EQ(HuePlane.ubX(), 1);  // the memory is given back

    const auto afterHue = Snapshot();
    ColorPosterize_Click();  // step 1 is the identity
    EXPECT_EQ(Snapshot(), afterHue);
    Poster::HScroll1.Value = 64;
    EXPECT_EQ(BufB(3, 3), (UndoB(3, 3) / 64) * 64);
    Poster::Command2.press();
}

TEST_F(AdjustTest, ThresholdAtItsEndsAndPowerCurveKeepsWhite) {
    Picture(6, 5);
    Adj_Binary_Controst_Click();
    BinaryEnhance::HScroll1.Value = 255;
    EXPECT_EQ(BufR(2, 2), 0);
    EXPECT_EQ(BufB(6, 5), 0);  // one row and column further than the picture
    BinaryEnhance::Check1.Value = 1;
    EXPECT_EQ(BufG(3, 1), 255);
    BinaryEnhance::Command2.press();

    Fill(BufR, 255), Fill(BufG, 255), Fill(BufB, 255);
    BufR(0, 0) = 0, BufG(0, 0) = 0, BufB(0, 0) = 0;
    SatXVal_Click();
    EXPECT_EQ(BufR(1, 1), 255);
    EXPECT_EQ(BufG(0, 0), 0);
    PowerCurve::Command1.press();
}

TEST_F(AdjustTest, DirectCommandsAtTheirEnds) {
    Picture(5, 3);
    BufR(0, 0) = 0, BufG(0, 0) = 0, BufB(0, 0) = 0;
    BufR(1, 0) = 10, BufG(1, 0) = 20, BufB(1, 0) = 30;
    ColorInvertValue_Click();
    EXPECT_EQ(BufR(0, 0), 255);  // black's value inverted is white
    EXPECT_EQ(BufB(0, 0), 255);
    RepaintUndo();
    ColorRollChannels_Click();
    EXPECT_EQ(BufR(1, 0), 20);
    EXPECT_EQ(BufG(1, 0), 30);
    EXPECT_EQ(BufB(1, 0), 10);
    ColorSwapChannels_Click();
    EXPECT_EQ(BufR(1, 0), 10);
    EXPECT_EQ(BufB(1, 0), 20);
    GrayscaleVideo_Click();
    EXPECT_EQ(BufG(1, 0), vb::CLng(30 * 0.587 + 10 * 0.299 + 20 * 0.114));
    GrayscaleAverage_Click();
    EXPECT_EQ(BufR(1, 0), BufB(1, 0));

    SelectLeftHalf();  // negative honours alpha, invert does not
    const int right = BufR(4, 1);
    ColorNegative_Click();
    EXPECT_EQ(BufR(4, 1), right);
    BufferInvert_Click();
    EXPECT_EQ(BufR(4, 1), 255 - right);
}

TEST_F(AdjustTest, DynamicRangeOnTinyAndOneColourPictures) {
    // Under five pixels wide the black point finds nothing: lo stays 255 and the
    // picture goes black.
    Picture(4, 9);
    DynamicRangeCompensate_Click();
    for (uint8_t v : Snapshot()) ASSERT_EQ(v, 0);
    // One grey: after the black point it is all 0, hi = 0 = lo would stop; with a
    // grey of 90, lo = 90, the image goes to 0 and k = 255 keeps it black.
    MakeTestDocument(8, 8);
    Fill(BufR, 90), Fill(BufG, 90), Fill(BufB, 90);
    DynamicRangeCompensate_Click();
    EXPECT_EQ(BufG(4, 4), 0);
    // A real range is stretched to 0..255.
    Picture(12, 12);
    DynamicRangeCompensate_Click();
    int lo = 255, hi = 0;
    for (int y = 2; y < 10; ++y)
        for (int x = 2; x < 10; ++x) lo = std::min({lo, int(BufR(x, y)), int(BufG(x, y)), int(BufB(x, y))});
    for (int y = 1; y < 11; ++y)
        for (int x = 1; x < 11; ++x) hi = std::max({hi, int(BufR(x, y)), int(BufG(x, y)), int(BufB(x, y))});
    EXPECT_EQ(lo, 0);
    EXPECT_EQ(hi, 255);
}
