// The natural brush driven as the mouse drives it: stepping, the counter carried
// between segments, presses without motion, dryout, bleed, the marquee and the
// refresh of what changed.
#include "tests/canvas/CanvasFixture.h"

#include <cstring>

#include "brush/FormDraw.h"

namespace {
// A one-pixel brush: radius 0 and only the centre cell paints.
void OnePixelBrush() {
    Form2::HScroll5.Value = 1;
    std::memset(BrushMask, 255, sizeof BrushMask);
    MaskCell(BrushMask, 17, 17) = 0;
}
}  // namespace

TEST_F(CanvasTest, StepZeroAndOneGiveTheSameStroke) {
    std::vector<uint8_t> strokes[2];
    for (int step : {0, 1}) {
        MakeTestDocument(W, H);
        Form2::slider1.Value = step;
        Stroke({{10, 10}, {40, 30}, {70, 12}});
        strokes[step] = Pixels();
    }
    EXPECT_EQ(strokes[0], strokes[1]);
    EXPECT_GT(Painted(), 100);
}

TEST_F(CanvasTest, StepsCarryTheirCountIntoTheNextSegment) {
    OnePixelBrush();
    ASSERT_EQ(BrushRadius, 0);
    Form2::slider1.Value = 3;
    auto painted = [] {
        std::vector<int> xs;
        for (int x = 0; x < W; ++x)
            if (BufR(x, 10) != 255) xs.push_back(x);
        return xs;
    };
    Move(MouseButton::None, 10, 10);
    Press(MouseButton::Left, 10, 10);
    Move(MouseButton::Left, 15, 10);  // length 5: dabs at distance 0 and 3
    EXPECT_EQ(painted(), (std::vector<int>{10, 13}));
    Move(MouseButton::Left, 20, 10);  // the count goes on: 16 and 19, not 15 and 18
    Release(MouseButton::Left, 20, 10);
    EXPECT_EQ(painted(), (std::vector<int>{10, 13, 16, 19}));
    EXPECT_EQ(Painted(), 4);
}

TEST_F(CanvasTest, APressWithoutMotionPaintsNothingAndTakesOneUndoStep) {
    int16_t before = UndoIndex;
    Move(MouseButton::None, 30, 30);
    Press(MouseButton::Left, 30, 30);
    Move(MouseButton::Left, 30.3f, 29.8f);  // still the same pixel
    Release(MouseButton::Left, 30, 30);
    EXPECT_NE(UndoIndex, before);
    // The stroke starts where the press is, wherever the cursor was seen last.
    Move(MouseButton::None, 5, 5);
    Press(MouseButton::Left, 50, 40);
    Release(MouseButton::Left, 50, 40);
    EXPECT_EQ(Painted(), 0);
}

TEST_F(CanvasTest, DryoutFadesTheLeftButtonOnly) {
    Form2::Shape1.FillColor = vb::RGB(0, 0, 255);
    OnePixelBrush();
    BrushOptions::Hscroll8.Value = 64;
    Stroke({{10, 40}, {40, 40}});
    EXPECT_LT(BufR(11, 40), BufR(25, 40)) << "each dab lays less paint than the one before";
    EXPECT_LT(BufR(25, 40), BufR(38, 40));
    Stroke({{10, 50}, {40, 50}}, MouseButton::Right);
    EXPECT_EQ(BufR(11, 50), BufR(38, 50));
}

TEST_F(CanvasTest, BleedPicksUpAtTheSegmentStartAndAlphaOf128KeepsTheOldPick) {
    OnePixelBrush();
    BrushOptions::Hscroll5.Value = 255;  // all pickup
    for (int x = 0; x < W; ++x) BufR(x, 10) = 200, BufG(x, 10) = 100, BufB(x, 10) = 50;
    PickR = PickG = PickB = 0;
    App.AlphaOff = 0;
    BufA(10, 10) = 128;
    Move(MouseButton::None, 10, 20);
    int16_t b = MouseButton::Left, s = ShiftState::None;
    float x = 10, y = 10;
    LastX = 10, LastY = 10;
    Form1::Form_Draw(b, s, x = 20, y = 10);
    EXPECT_EQ(PickR, 0) << "alpha 128 is not above 128";
    BufA(30, 10) = 129;  // the first segment painted over (10, 10): start on fresh paint
    LastX = 30, LastY = 10;
    Form1::Form_Draw(b, s, x = 40, y = 10);
    EXPECT_EQ(PickR, 200);
    EXPECT_EQ(PickB, 50);
}

TEST_F(CanvasTest, APlainStrokePaintsThroughTheSelectionUnlessTheMarqueeRan) {
    App.AlphaOff = 0;  // the alpha plane masks...
    FillPicture(BufA, 0);
    Stroke({{10, 20}, {40, 20}});
    EXPECT_GT(Painted(), 0) << "...but the fast case does not read it";
    MakeTestDocument(W, H);
    App.AlphaOff = 0;
    FillPicture(BufA, 0);
    Form1::Timer1.TimerEnabled = true;  // the marquee runs at the press
    Stroke({{10, 20}, {40, 20}});
    EXPECT_EQ(Painted(), 0);
    EXPECT_TRUE(Form1::Timer1.TimerEnabled) << "the release restores the marquee";
    App.AlphaOff = 255;
    Stroke({{10, 20}, {40, 20}});
    EXPECT_GT(Painted(), 0);
}

TEST_F(CanvasTest, MovesRefreshOnlyTheSegmentsRectangleAtAnyZoom) {
    for (int zoom : {25, 100, 300}) {
        MakeTestDocument(W, H);
        App.ZoomPercent = zoom;
        host.changedRects.clear();
        const float z = zoom / 100.0f;
        Move(MouseButton::None, 10 * z, 10 * z);
        Press(MouseButton::Left, 10 * z, 10 * z);
        size_t afterPress = host.changedRects.size();
        for (int i = 1; i <= 10; ++i) Move(MouseButton::Left, (10 + 3 * i) * z, (10 + i) * z);
        ASSERT_GT(host.changedRects.size(), afterPress);
        for (size_t i = afterPress; i < host.changedRects.size(); ++i) {
            const auto& r = host.changedRects[i];
            EXPECT_LT((r.right - r.left) * (r.bottom - r.top), W * H * z * z / 4) << "zoom " << zoom;
        }
        Release(MouseButton::Left, 40 * z, 20 * z);
        EXPECT_GT(Painted(), 0);
    }
}
