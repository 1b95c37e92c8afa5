// The flood fill and the magic wand from the user's side: a press fills the
// connected area and nothing else, the anti-aliased rim, the fitted gradient
// on a triangle, the alpha fill mode, the wand adding and subtracting, and
// presses on the picture's last row and column.
#include "tests/canvas/CanvasFixture.h"

#include "canvas/CanvasState.h"
#include "colour/Gradients.h"
#include "fill/FillPanels.h"

namespace {
class FloodTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        App.FillMode = kwmode::FillMode::Default;
        App.FillStyle = kwmode::FillStyle::Colour;
        App.NoiseAmount = 0;
        App.GradientIndex = 0;
        MaskFromShape = 0;
        Form4::HScroll1.Value = 0;
        Form4::Check1.Value = 0;
        Form2::Shape4.FillColor = vb::RGB(200, 10, 30);
        Form2::Shape1.FillColor = vb::RGB(5, 6, 7);
        BufA.fill(0);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) Paint(x, y, 255, 255, 255);
    }
    static void Paint(int x, int y, uint8_t r, uint8_t g, uint8_t b) { BufR(x, y) = r, BufG(x, y) = g, BufB(x, y) = b; }
    static void Click(OptionButton& tool, float x, float y, int button = MouseButton::Left, int shift = 0) {
        tool.Value = true;
        Press(button, x, y, shift);
        Release(button, x, y, shift);
    }
    // A closed box outline of wall colour, one pixel wide.
    static void Walls(int l, int t, int r, int b, uint8_t v = 0) {
        for (int x = l; x <= r; ++x) Paint(x, t, v, v, v), Paint(x, b, v, v, v);
        for (int y = t; y <= b; ++y) Paint(l, y, v, v, v), Paint(r, y, v, v, v);
    }
};

TEST_F(FloodTest, ToleranceZeroFillsExactlyTheEnclosedAreaAsOneUndoStep) {
    Walls(10, 10, 40, 30);
    Paint(20, 20, 254, 255, 255);  // one shade off: a hole at tolerance 0
    Key('f');
    ASSERT_TRUE(Form2::Option4.Value);
    const int16_t undo = UndoIndex;
    Click(Form2::Option4, 15, 15);
    EXPECT_NE(UndoIndex, undo);
    int filled = 0;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const bool inside = x > 10 && x < 40 && y > 10 && y < 30 && !(x == 20 && y == 20);
            filled += BufR(x, y) == 200;
            ASSERT_EQ(BufG(x, y) == 10, inside) << x << "," << y;
        }
    EXPECT_EQ(filled, 29 * 19 - 1);
    // A tolerance of one takes the off shade too; the right button the secondary colour.
    RepaintUndo();
    Form4::HScroll1.Value = 1;
    Click(Form2::Option4, 15, 15, MouseButton::Right);
    EXPECT_EQ(BufR(20, 20), 5);
    EXPECT_EQ(BufR(10, 10), 0) << "the wall stays";
    EXPECT_EQ(BufR(5, 5), 255) << "outside stays";
}

TEST_F(FloodTest, AntiAliasedRimReachesBeyondTheAreaBlendingIntoTheOldColour) {
    Walls(10, 10, 40, 30, 100);
    Form4::Check1.Value = 1;
    Click(Form2::Option4, 20, 20);
    EXPECT_EQ(BufR(20, 20), 200);
    EXPECT_EQ(BufG(25, 15), 10) << "inside is solid";
    // On the wall, one pixel beyond the area: a blend of the wall's 100 and the fill.
    EXPECT_GT(BufR(10, 20), 100);
    EXPECT_LT(BufR(10, 20), 200);
    EXPECT_LT(BufG(10, 20), 100);
    // Outside the wall only the faint touch of the softening, then nothing.
    EXPECT_LT(BufR(9, 20), 255);
    EXPECT_GT(BufG(9, 20), 200);
    EXPECT_EQ(BufG(8, 20), 255);
    EXPECT_EQ(TempPlane.count(), 1u) << "the mask is shrunk to one element after the fill";
}

TEST_F(FloodTest, FittedGradientGivesAFullRampOnEveryRowOfATriangle) {
    App.FillStyle = kwmode::FillStyle::FitHorizontal;
    for (int i = 0; i < 256; ++i) {
        GradientData[0][0][i] = static_cast<uint8_t>(i);
        GradientData[0][1][i] = static_cast<uint8_t>(255 - i);
        GradientData[0][2][i] = 0;
        GradientData[0][3][i] = 255;
    }
    // A triangle outline, two pixels thick so that its steps leave no
    // diagonal gap: the apex at the top, widening two pixels a row.
    for (int y = 5; y <= 40; ++y) {
        const int half = y - 5;
        for (int k : {1, 2}) Paint(48 - half - k, y, 0, 0, 250), Paint(48 + half + k, y, 0, 0, 250);
    }
    for (int k : {-1, 0, 1}) Paint(48 + k, 4, 0, 0, 250);
    for (int x = 0; x < W; ++x) Paint(x, 41, 0, 0, 250);
    Click(Form2::Option4, 48, 30);
    for (int y = 6; y <= 40; ++y) {
        const int half = y - 5;
        EXPECT_EQ(BufR(48 - half, y), 0) << "row " << y << " starts the ramp";
        EXPECT_EQ(BufR(48 + half, y), 255) << "row " << y << " ends it";
        EXPECT_EQ(BufB(48 - half - 1, y), 250) << "the outline stays";
    }
    EXPECT_EQ(BufR(48, 5), 0) << "a one-pixel row takes the ramp's start";
}

TEST_F(FloodTest, AlphaFillModeWritesTheDeliveredBrightnessOrTheCoverage) {
    Walls(10, 10, 40, 30);
    App.FillMode = kwmode::FillMode::Alpha;
    Click(Form2::Option4, 20, 20);
    EXPECT_EQ(BufA(20, 20), vb::CInt((200 + 10 + 30) / 3.0));
    EXPECT_EQ(BufA(5, 5), 0);
    EXPECT_EQ(BufR(20, 20), 255) << "the picture is untouched";
    EXPECT_TRUE(AlphaOn()) << "the new selection is shown";
    SetAlphaOn(false);
    MaskFromShape = 255;
    Click(Form2::Option4, 5, 5);
    EXPECT_EQ(BufA(5, 5), 255);
    EXPECT_EQ(BufA(60, 50), 255);
}

TEST_F(FloodTest, WandReplacesAddsAndSubtractsTheSelection) {
    Walls(10, 10, 40, 30);
    Walls(50, 10, 70, 30);
    Click(Form2::Option16, 20, 20);
    EXPECT_TRUE(AlphaOn());
    EXPECT_EQ(BufA(20, 20), 255);
    EXPECT_EQ(BufA(10, 10), 0);
    EXPECT_EQ(BufR(20, 20), 255) << "the wand leaves the picture alone";
    // Alt adds the second box, a plain click replaces both with it.
    Click(Form2::Option16, 60, 20, MouseButton::Left, ShiftState::Alt);
    EXPECT_EQ(BufA(20, 20), 255);
    EXPECT_EQ(BufA(60, 20), 255);
    // Alt with the right button takes the first away again.
    Click(Form2::Option16, 20, 20, MouseButton::Right, ShiftState::Alt);
    EXPECT_EQ(BufA(20, 20), 0);
    EXPECT_EQ(BufA(60, 20), 255);
    Click(Form2::Option16, 20, 20);
    EXPECT_EQ(BufA(60, 20), 0);
    // Anti-aliased, subtracting keeps the lower of old alpha and the complement.
    Form4::Check1.Value = 1;
    Click(Form2::Option16, 60, 20, MouseButton::Left, ShiftState::Alt);
    EXPECT_EQ(BufA(20, 20), 255);
    EXPECT_GT(BufA(50, 20), 0) << "the rim reaches the wall";
    Click(Form2::Option16, 60, 20, MouseButton::Right, ShiftState::Alt);
    EXPECT_EQ(BufA(60, 20), 0);
    EXPECT_EQ(BufA(5, 5), 0) << "subtracting never selects";
    EXPECT_EQ(BufA(20, 20), 255);
}

TEST_F(FloodTest, PressesOnTheLastRowAndColumnFillAndOffThePictureDoNothing) {
    for (int x = 0; x < W; ++x) Paint(x, H - 2, 0, 0, 0);
    Click(Form2::Option4, W - 1, H - 1);
    for (int x = 0; x < W; ++x) EXPECT_EQ(BufR(x, H - 1), 200) << x;
    EXPECT_EQ(BufR(0, 0), 255);
    const auto before = Pixels();
    Click(Form2::Option4, W, 3);
    Click(Form2::Option4, -2, 3);
    EXPECT_EQ(Pixels(), before);
    // At 200 % the press is in window pixels.
    App.ZoomPercent = 200;
    Click(Form2::Option4, 2 * (W - 1), 10);
    EXPECT_EQ(BufR(0, 0), 200);
}
}  // namespace
