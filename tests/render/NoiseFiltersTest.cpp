// Colour and value noise: the selection scales the noise, unselected pixels
// keep the main plane, value noise moves the channels together.
#include <cstdlib>

#include "render/NoiseFilters.h"
#include "tests/render/RenderFixture.h"

using NoiseFiltersTest = RenderTest;

TEST_F(NoiseFiltersTest, GrainScalesWithAlphaAndLeavesUnselectedPixelsAsTheMainPlaneHasThem) {
    Picture(12, 8);
    SaveUndo();
    Stamp(7);  // the main plane differs from undo, as after an earlier preview
    SelectLeftHalf();
    for (int y = 0; y < 8; ++y) BufA(0, y) = 64;
    RenderGrain(100);
    bool moved = false;
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 12; ++x) {
            if (x >= 5 || y == 7) {  // unselected, or the box's right column and bottom row
                EXPECT_EQ(BufR(x, y), 7);
                EXPECT_EQ(BufB(x, y), 9);
                continue;
            }
            const double strength = 200 * BufA(x, y) / 255.0;
            EXPECT_LE(std::abs(BufR(x, y) - UndoR(x, y)), strength / 2 + 1);
            EXPECT_LE(std::abs(BufG(x, y) - UndoG(x, y)), strength / 2 + 1);
            moved |= BufR(x, y) != UndoR(x, y);
        }
    EXPECT_TRUE(moved);
    // The box stops short of its right and bottom edges: the last selected column stays.
    Picture(12, 8);
    SaveUndo();
    Stamp(7);
    SetAlphaOn(true);
    Fill(BufA, 0);
    for (int y = 2; y <= 4; ++y)
        for (int x = 3; x <= 5; ++x) BufA(x, y) = 255;
    RenderGrain(255);
    for (int y = 2; y <= 4; ++y) EXPECT_EQ(BufR(5, y), 7);
    for (int x = 3; x <= 5; ++x) EXPECT_EQ(BufR(x, 4), 7);
    int changed = 0;
    for (int y = 2; y <= 3; ++y)
        for (int x = 3; x <= 4; ++x) changed += BufR(x, y) != 7;
    EXPECT_GT(changed, 0);
}

TEST_F(NoiseFiltersTest, ValueNoiseMovesTheChannelsTogetherOverTheWholeBox) {
    Picture(10, 6);
    SaveUndo();
    Stamp(7);
    SetAlphaOn(true);
    Fill(BufA, 0);
    for (int y = 1; y <= 3; ++y)
        for (int x = 2; x <= 4; ++x) BufA(x, y) = 255;
    RenderValueNoise(60);
    int moved = 0;
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 10; ++x) {
            if (BufA(x, y) == 0) {
                EXPECT_EQ(BufR(x, y), 7);
                continue;
            }
            const int k = BufR(x, y) - UndoR(x, y);
            EXPECT_LE(std::abs(k), 60);
            if (UndoG(x, y) + k >= 0 && UndoG(x, y) + k <= 255) {
                EXPECT_EQ(BufG(x, y) - UndoG(x, y), k);
            }
            moved += k != 0;
        }
    EXPECT_GT(moved, 4);  // the right and bottom edge of the box included
    EXPECT_NE(BufR(4, 3), 7);
}

TEST_F(NoiseFiltersTest, AlphaOffNoisesTheWholeCanvasFromUndoAndRepeatsWithTheSeed) {
    Picture(9, 5);
    SaveUndo();
    SetAlphaOn(false);
    vb::Randomize(3);
    RenderGrain(30);
    const auto first = Snapshot();
    Stamp(1);
    vb::Randomize(3);
    RenderGrain(30);
    EXPECT_EQ(Snapshot(), first);  // drawn from undo, not from what was there
    RenderGrain(0);
    Stamp(1);
    RenderGrain(0);
    EXPECT_EQ(BufR(8, 4), UndoR(8, 4));
}

TEST_F(NoiseFiltersTest, PanelsPreviewFromUndoAndCancelRestores) {
    Picture(8, 8);
    SetAlphaOn(false);
    const auto before = Snapshot();
    AddNoise_Click();
    EXPECT_TRUE(AdjustColorNoise::form.Visible);
    EXPECT_EQ(AdjustColorNoise::Label1.Caption.get(), "11");
    EXPECT_NE(Snapshot(), before);
    AdjustColorNoise::Hscroll1.Value = 0;
    EXPECT_EQ(Snapshot(), before);
    AdjustColorNoise::Hscroll1.Value = 200;
    EXPECT_EQ(AdjustColorNoise::Label1.Caption.get(), "200");
    AdjustColorNoise::Command2.press();
    EXPECT_EQ(Snapshot(), before);
    EXPECT_FALSE(AdjustColorNoise::form.Visible);

    AddValueNoise_Click();
    AdjustValueNoise::Hscroll1.Value = 90;
    AdjustValueNoise::Command1.press();
    EXPECT_NE(Snapshot(), before);
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);
}
