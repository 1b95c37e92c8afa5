// The guards of the three handlers, ctrl drags, the baster, shift-clicks and
// the clone offset, the keys of the brush and NudgeAlpha.
#include "tests/canvas/CanvasFixture.h"

#include "core/Display.h"
#include "core/MDIForm1.h"

TEST_F(CanvasTest, ButtonCombinationsDoNothingInAnyHandler) {
    int16_t undo = UndoIndex;
    for (int combo : {3, 5, 6}) {
        Press(combo, 10, 10);
        Move(combo, 40, 30);
        Release(combo, 40, 30);
    }
    EXPECT_EQ(UndoIndex, undo);
    EXPECT_EQ(Painted(), 0);
    EXPECT_EQ(App.MouseButton, 0);
}

TEST_F(CanvasTest, LockAndWaitingRefuseThePaintPathButNotCtrl) {
    App.LockCount = 1;
    int16_t undo = UndoIndex;
    Stroke({{10, 10}, {40, 30}});
    EXPECT_EQ(UndoIndex, undo) << "no snapshot on the paint path";
    EXPECT_EQ(Painted(), 0);
    Press(1, 10, 10, 2);
    EXPECT_NE(UndoIndex, undo) << "a ctrl press takes one";
    Release(1, 10, 10, 2);
    App.LockCount = 0;
    // While a procedure waits for a click, the release only clears the flag.
    App.WaitingForClick = 255;
    undo = UndoIndex;
    Stroke({{10, 10}, {40, 30}});
    EXPECT_EQ(App.WaitingForClick, 0);
    EXPECT_EQ(UndoIndex, undo);
    EXPECT_EQ(Painted(), 0);
    // Nor does the canvas paint while it is not the active window.
    host.canvasActive = false;
    Stroke({{10, 10}, {40, 30}});
    EXPECT_EQ(Painted(), 0);
    host.canvasActive = true;
}

TEST_F(CanvasTest, CtrlDragMovesTheSelectionAtMostEveryThirtiethOfASecond) {
    FillPicture(BufA, 0);
    BufA(10, 10) = 255;
    host.clock = 100;
    Press(1, 10, 10, 2);
    Move(1, 13, 12, 2);
    EXPECT_EQ(BufA(13, 12), 255);
    EXPECT_EQ(BufA(10, 10), 0);
    host.clock += 0.01;  // too soon: the move is skipped
    Move(1, 20, 12, 2);
    EXPECT_EQ(BufA(13, 12), 255);
    host.clock += 0.05;
    Move(1, 20, 12, 2);
    EXPECT_EQ(BufA(20, 12), 255);
    Release(1, 20, 12, 2);
    EXPECT_EQ(Painted(), 0);
}

TEST_F(CanvasTest, TheBasterReadsInsideAndTakesNoUndoStep) {
    Form2::Option6.Value = true;
    BufR(W - 1, 5) = 10;
    BufG(W - 1, 5) = 20;
    BufB(W - 1, 5) = 30;
    int16_t undo = UndoIndex;
    Press(1, W, 5);  // X = W is refused
    EXPECT_EQ(Form2::Shape4.FillColor, 0u);
    Press(1, W - 1, 5);
    EXPECT_EQ(Form2::Shape4.FillColor, vb::RGB(10, 20, 30));
    EXPECT_EQ(Form2::HScroll1.Value, 10);
    Release(1, W - 1, 5);
    Press(2, W - 1, 5);
    EXPECT_EQ(Form2::Shape1.FillColor, vb::RGB(10, 20, 30));
    Release(2, W - 1, 5);
    EXPECT_EQ(UndoIndex, undo);
    // Moving with the button held keeps picking, through the zoom.
    App.ZoomPercent = 200;
    BufR(3, 4) = 99;
    Move(1, 6, 8);
    EXPECT_EQ(Form2::HScroll1.Value, 99);
    App.ZoomPercent = 100;
    Form2::Option1.Value = true;
}

TEST_F(CanvasTest, AShiftClickSetsTheCloneSourceAndPantoTakesItsOffset) {
    Stroke({{10, 10}, {10, 10}});
    Press(1, 30, 20, 1);
    Move(1, 50, 20, 1);
    Release(1, 30, 20, 1);
    EXPECT_EQ(Painted(), 0) << "shift never paints";
    EXPECT_EQ(App.CloneSourceX, 30);
    EXPECT_FALSE(Form1::CloneCross.Visible);
    // In panto a shift-drag from source to destination marks the offset, with a cross meanwhile.
    Form2::Combo4.ListIndex = 8;
    ASSERT_EQ(App.PaintMode, 5);
    Press(1, 20, 30, 1);
    EXPECT_TRUE(Form1::CloneCross.Visible);
    Release(1, 60, 35, 1);
    EXPECT_FALSE(Form1::CloneCross.Visible);
    EXPECT_EQ(PantoX, 40);
    EXPECT_EQ(PantoY, 5);
    // A panto stroke at the destination copies the source.
    for (int x = 15; x < 26; ++x) BufR(x, 25) = BufG(x, 25) = BufB(x, 25) = 7;
    Stroke({{55, 30}, {66, 30}});
    EXPECT_EQ(BufR(60, 30), 7);
}

TEST_F(CanvasTest, KeysPickToolsSizeModeStepAndOpacity) {
    auto key = [](int c) {
        int16_t k = static_cast<int16_t>(c);
        Form1::Form_KeyPress(k);
    };
    auto keyUp = [](int code, int shift) {
        int16_t k = static_cast<int16_t>(code);
        Form1::Form_KeyUp(k, static_cast<int16_t>(shift));
    };
    key(',');
    EXPECT_TRUE(Form2::Option6.Value);
    key('d');
    EXPECT_TRUE(Form2::Option1.Value);
    EXPECT_FALSE(Form2::Option6.Value);
    Form2::HScroll5.Value = 68;
    key('+');
    EXPECT_EQ(Form2::HScroll5.Value, 68);
    key('-');
    key('_');
    EXPECT_EQ(Form2::HScroll5.Value, 66);
    EXPECT_EQ(BrushRadius, 16);
    key('0');
    EXPECT_EQ(App.PaintMode, 6) << "0 is list position 9, Smear";
    key('5');
    EXPECT_EQ(App.PaintMode, 9) << "5 is Divide";
    key('@');
    EXPECT_EQ(App.PaintMode, 8);
    key('1');
    EXPECT_EQ(App.PaintMode, 0);
    keyUp(117, 1);
    Form2::HScroll4.Value = 10;
    keyUp(117, 1);
    EXPECT_EQ(Form2::HScroll4.Value, 10) << "shift with F6 does nothing";
    keyUp(117, 0);
    EXPECT_EQ(Form2::HScroll4.Value, 255);
    keyUp(119, 0);
    EXPECT_EQ(Form2::HScroll4.Value, 64);
    Form2::slider1.Value = 9;
    keyUp(116, 0);
    EXPECT_EQ(Form2::slider1.Value, 1);
    // Esc puts the brush back to neutral; o shows its options.
    BrushOptions::Hscroll1.Value = 20;
    BrushOptions::Option3.Value = true;
    Form2::Check1.Value = 1;
    key('3');
    key(27);
    EXPECT_EQ(BrushOptions::Hscroll1.Value, 0);
    EXPECT_TRUE(BrushOptions::Option1.Value);
    EXPECT_EQ(Form2::Check1.Value, 0);
    EXPECT_EQ(App.PaintMode, 0);
    key('o');
    EXPECT_EQ(host.shown.back(), "BrushOptions");
}

TEST_F(CanvasTest, ShiftArrowsNudgeTheAlphaWithWrapAround) {
    FillPicture(BufA, 0);
    BufA(0, 0) = 255;
    int16_t left = 37;
    Form1::Form_KeyUp(left, 1);
    EXPECT_EQ(BufA(W - 1, 0), 255);
    EXPECT_EQ(BufA(0, 0), 0);
    int16_t down = 40;
    Form1::Form_KeyUp(down, 1);
    EXPECT_EQ(BufA(W - 1, 1), 255);
    // A source a whole picture height above reads the extra row H; a whole
    // height below wraps onto the row itself.
    FillPicture(BufA, 0);
    for (int x = 0; x <= W; ++x) BufA(x, H) = 9;
    BufA(5, 3) = 200;
    NudgeAlpha(0, H);
    EXPECT_EQ(BufA(5, 0), 9);
    EXPECT_EQ(BufA(5, 3), 200);
    NudgeAlpha(0, -H);
    EXPECT_EQ(BufA(5, 0), 9);
    EXPECT_EQ(BufA(5, 3), 200);
}

TEST_F(CanvasTest, TheInfoBoxShowsTheModeOfTheListAndTheCursor) {
    Form2::Combo4.ListIndex = 6;
    GetCurrentInfo();
    Move(0, 12, 34);
    EXPECT_EQ(Form2::Info1.Caption.get(),
              "Paint mode = Around grey\nFill mode = Default\nBrush mode = Color\nX = 12\nY = 34");
}
