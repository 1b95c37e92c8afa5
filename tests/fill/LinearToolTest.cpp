// The linear tool's gradient, circular, fader and warp variants driven with
// the mouse: one variant checked at a time, drags under a pixel, the ends of
// the ramp, the zoom, the fader's alpha and the warp's reach.
#include "tests/canvas/CanvasFixture.h"

#include <algorithm>

#include "colour/Gradients.h"
#include "core/frame/MDIForm1.h"
#include "fill/FillPanels.h"

namespace {
class LinearToolTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        App.GradientIndex = 2;
        for (int i = 0; i < 256; ++i) {
            GradientData[2][0][i] = static_cast<uint8_t>(i);
            GradientData[2][1][i] = 40;
            GradientData[2][2][i] = static_cast<uint8_t>(255 - i);
            GradientData[2][3][i] = 255;
        }
        BufA.fill(0);
        Form2::Option18.Value = true;
    }
    void TearDown() override { Menus::linetool_Line.press(); }
    static void Drag(float x1, float y1, float x2, float y2) {
        Press(MouseButton::Left, x1, y1);
        Move(MouseButton::Left, x2, y2);
        Release(MouseButton::Left, x2, y2);
    }
};

TEST_F(LinearToolTest, VariantsAreCheckedOneAtATime) {
    MenuEntry* all[] = {&Menus::linetool_Line, &Menus::Linetool_Gradient, &Menus::Circular_Gradient,
                        &Menus::LinearWarp, &Menus::LinearAlhpaFader};
    for (MenuEntry* chosen : all) {
        chosen->press();
        for (MenuEntry* e : all) EXPECT_EQ(e->Checked.get(), e == chosen) << e->Name;
    }
    EXPECT_NE(std::find(host.shown.begin(), host.shown.end(), "Warp"), host.shown.end()) << "picking the warp shows its panel";
}

TEST_F(LinearToolTest, LinearGradientRampsAlongTheDragAndAShortDragChangesNothing) {
    Menus::Linetool_Gradient.press();
    const auto before = Pixels();
    const int16_t undo = UndoIndex;
    Drag(30, 20, 30.4f, 20.3f);
    EXPECT_NE(UndoIndex, undo) << "the press took its undo step";
    EXPECT_EQ(Pixels(), before);
    Drag(10, 20, 60, 20);
    EXPECT_EQ(BufR(0, 5), 0) << "before the start: the first step";
    EXPECT_EQ(BufR(80, 40), 255) << "past the end: the last";
    EXPECT_NEAR(BufR(35, 30), 128, 8) << "half way: the middle of the ramp";
    EXPECT_EQ(BufG(35, 30), 40);
    EXPECT_LT(BufR(20, 0), BufR(50, 0));
    // A diagonal drag ramps along itself: across it the step is the same.
    Drag(10, 10, 50, 50);
    EXPECT_EQ(BufR(5, 5), 0);
    EXPECT_EQ(BufR(55, 55), 255);
    EXPECT_NEAR(BufR(50, 10), BufR(10, 50), 8);
    EXPECT_NEAR(BufR(50, 10), 128, 8);
    // At 200 % the same drag in window pixels is half as long in the picture.
    App.ZoomPercent = 200;
    Drag(20, 40, 70, 40);
    EXPECT_EQ(BufR(36, 10), 255);
    EXPECT_EQ(BufR(9, 10), 0);
}

TEST_F(LinearToolTest, CircularGradientUsesTheLastStepBeyondTheRadius) {
    Menus::Circular_Gradient.press();
    Drag(40, 30, 50, 30);
    EXPECT_EQ(BufR(40, 30), 0);
    EXPECT_EQ(BufR(45, 30), 128);
    EXPECT_EQ(BufR(40, 40), 255);
    EXPECT_EQ(BufR(0, 0), 255);
    EXPECT_EQ(BufB(90, 60), 0);
}

TEST_F(LinearToolTest, FaderThinsAlphaAlongTheDragAndShowsTheSelection) {
    BufA.fill(200);
    Menus::LinearAlhpaFader.press();
    Drag(10, 5, 10, 55);
    EXPECT_EQ(BufA(30, 2), 200) << "before the start alpha stays";
    EXPECT_EQ(BufA(30, 60), 0) << "past the end it is gone";
    EXPECT_GT(BufA(30, 30), 50);
    EXPECT_LT(BufA(30, 30), 150);
    EXPECT_TRUE(AlphaOn());
    EXPECT_EQ(BufR(30, 30), 255) << "the picture is untouched";
}

TEST_F(LinearToolTest, WarpDragsThePressToTheReleaseAndLeavesFarPixelsAlone) {
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) BufR(x, y) = static_cast<uint8_t>(x * 2), BufG(x, y) = static_cast<uint8_t>(y * 3);
    Menus::LinearWarp.press();
    for (int aa : {0, 1}) {
        Warp::Check1.Value = aa;
        Warp::HScroll4.Value = 10;
        EXPECT_EQ(WarpStrength, 1.0f);
        Drag(30, 30, 40, 30);
        EXPECT_EQ(BufR(40, 30), 60) << "the release shows what lay under the press";
        EXPECT_EQ(BufR(60, 30), 120) << "beyond the drag's reach nothing moves";
        EXPECT_EQ(BufR(40, 45), 80);
        RepaintUndo();
    }
    Warp::Check1.Value = 0;
}
}  // namespace
