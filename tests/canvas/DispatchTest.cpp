// The guards of the three handlers, ctrl drags, the baster, shift-clicks and
// the clone offset, the keys of the brush and NudgeAlpha, the numbers the
// painting mode list stores and the info box.
#include "tests/canvas/CanvasFixture.h"

#include <iterator>
#include <string>

#include "core/display/Display.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Codes.h"
#include "core/framework/Commands.h"

using kwmode::PaintMode;

TEST_F(CanvasTest, GuardsRefuseThePaintPathButNotCtrl) {
    const int16_t undo = UndoIndex;
    auto refused = [&](const char* why) {
        EXPECT_EQ(UndoIndex, undo) << why;
        EXPECT_EQ(Painted(), 0) << why;
    };
    using namespace MouseButton;
    for (int combo : {Left + Right, Left + Middle, Right + Middle}) {
        Press(combo, 10, 10);
        Move(combo, 40, 30);
        Release(combo, 40, 30);
    }
    refused("button combinations");
    App.WaitingForClick = 255;
    Stroke({{10, 10}, {40, 30}});
    refused("waiting for a click");
    EXPECT_EQ(App.WaitingForClick, 0) << "the release only clears the flag";
    host.canvasActive = false;
    Stroke({{10, 10}, {40, 30}});
    refused("canvas not active");
    host.canvasActive = true;
    App.LockCount = 1;
    Stroke({{10, 10}, {40, 30}});
    refused("locked");
    Press(MouseButton::Left, 10, 10, ShiftState::Ctrl);
    EXPECT_NE(UndoIndex, undo) << "a ctrl press takes a snapshot even when locked";
    Release(MouseButton::Left, 10, 10, ShiftState::Ctrl);
}

TEST_F(CanvasTest, CtrlDragMovesTheSelectionAtMostEveryThirtiethOfASecond) {
    FillPicture(BufA, 0);
    BufA(10, 10) = 255;
    host.clock = 100;
    Press(MouseButton::Left, 10, 10, ShiftState::Ctrl);
    Move(MouseButton::Left, 13, 12, ShiftState::Ctrl);
    EXPECT_EQ(BufA(13, 12), 255);
    EXPECT_EQ(BufA(10, 10), 0);
    host.clock += 0.01;  // too soon: the move is skipped
    Move(MouseButton::Left, 20, 12, ShiftState::Ctrl);
    EXPECT_EQ(BufA(13, 12), 255);
    host.clock += 0.05;
    Move(MouseButton::Left, 20, 12, ShiftState::Ctrl);
    EXPECT_EQ(BufA(20, 12), 255);
    Release(MouseButton::Left, 20, 12, ShiftState::Ctrl);
    EXPECT_EQ(Painted(), 0);
}

TEST_F(CanvasTest, TheBasterReadsInsideAndTakesNoUndoStep) {
    Form2::Option6.Value = true;
    BufR(W - 1, 5) = 10, BufG(W - 1, 5) = 20, BufB(W - 1, 5) = 30;
    BufR(W, 5) = 77;
    int16_t undo = UndoIndex;
    Press(MouseButton::Left, W, 5);  // X = W, the extra column, is refused
    EXPECT_EQ(Form2::Shape4.FillColor, 0u);
    Press(MouseButton::Left, W - 1, 5);
    EXPECT_EQ(Form2::Shape4.FillColor, vb::RGB(10, 20, 30));
    EXPECT_EQ(Form2::HScroll1.Value, 10);
    Release(MouseButton::Left, W - 1, 5);
    Press(MouseButton::Right, W - 1, 5);
    EXPECT_EQ(Form2::Shape1.FillColor, vb::RGB(10, 20, 30));
    Release(MouseButton::Right, W - 1, 5);
    EXPECT_EQ(UndoIndex, undo);
    // Moving with the button held keeps picking, through the zoom.
    App.ZoomPercent = 200;
    BufR(3, 4) = 99;
    Move(MouseButton::Left, 6, 8);
    EXPECT_EQ(Form2::HScroll1.Value, 99);
    Release(MouseButton::Left, 6, 8);
    // So does the press: right of the middle at 200 % it picks at once.
    Press(MouseButton::Left, 2 * (W - 1), 10);
    EXPECT_EQ(Form2::HScroll1.Value, 10);
    Release(MouseButton::Left, 2 * (W - 1), 10);
    // A right click on its button chooses its size; on the brush, the media.
    Commands().toolOf(Form2::Option6)->settings();
    Commands().toolOf(Form2::Option1)->settings();
    EXPECT_EQ(host.popups, (std::vector<std::string>{"TBaster", "Media"}));
}

TEST_F(CanvasTest, AShiftClickSetsTheCloneSourceAndPantoTakesItsOffset) {
    Press(MouseButton::Left, 30, 20, ShiftState::Shift);
    Move(MouseButton::Left, 50, 20, ShiftState::Shift);
    Release(MouseButton::Left, 30, 20, ShiftState::Shift);
    EXPECT_EQ(Painted(), 0) << "shift never paints";
    EXPECT_FALSE(Form1::CloneCross.Visible);
    // In panto a shift-drag from source to destination marks the offset, with a cross meanwhile.
    Form2::Combo4.ListIndex = 8;
    ASSERT_EQ(App.PaintMode, PaintMode::Panto);
    Press(MouseButton::Left, 20, 30, ShiftState::Shift);
    EXPECT_TRUE(Form1::CloneCross.Visible);
    Release(MouseButton::Left, 60, 35, ShiftState::Shift);
    EXPECT_FALSE(Form1::CloneCross.Visible);
    EXPECT_EQ(PantoX, 40);
    EXPECT_EQ(PantoY, 5);
    // A panto stroke at the destination copies the source.
    for (int x = 15; x < 26; ++x) BufR(x, 25) = BufG(x, 25) = BufB(x, 25) = 7;
    Stroke({{55, 30}, {66, 30}});
    EXPECT_EQ(BufR(60, 30), 7);
}

TEST_F(CanvasTest, KeysPickToolsSizeModeStepAndOpacity) {
    Key(',');
    EXPECT_TRUE(Form2::Option6.Value);
    Key('d');
    EXPECT_TRUE(Form2::Option1.Value);
    Form2::HScroll5.Value = 68;
    Key('+');
    EXPECT_EQ(Form2::HScroll5.Value, 68);
    Key('-');
    Key('_');
    EXPECT_EQ(Form2::HScroll5.Value, 66);
    EXPECT_EQ(BrushRadius, 16);
    // Digits pick list positions: 0 is the ninth, Smear; 5 is Divide.
    for (auto [key, mode] : {std::pair{'0', PaintMode::Smear}, {'5', PaintMode::Divide}, {'@', PaintMode::OffsetPattern},
                             {'1', PaintMode::Default}}) {
        Key(key);
        EXPECT_EQ(App.PaintMode, mode) << key;
    }
    // F6 full opacity (not with shift), F8 a quarter, F5 step 1.
    Form2::HScroll4.Value = 10;
    Form2::slider1.Value = 9;
    auto* opacity = &Form2::HScroll4.Value;
    for (auto [code, shift, value, want] :
         {std::tuple{VirtualKey::F6, ShiftState::Shift, opacity, 10}, {VirtualKey::F6, ShiftState::None, opacity, 255},
          {VirtualKey::F8, ShiftState::None, opacity, 64}, {VirtualKey::F5, ShiftState::None, &Form2::slider1.Value, 1}}) {
        KeyUp(code, shift);
        EXPECT_EQ(*value, want) << code << " shift " << shift;
    }
    // Esc puts the brush back to neutral; o shows its options.
    BrushOptions::Hscroll1.Value = 20;
    BrushOptions::Option3.Value = true;
    Form2::Check1.Value = 1;
    Key('3');
    Key(KeyChar::Escape);
    EXPECT_EQ(BrushOptions::Hscroll1.Value, 0);
    EXPECT_TRUE(BrushOptions::Option1.Value);
    EXPECT_EQ(Form2::Check1.Value, 0);
    EXPECT_EQ(App.PaintMode, PaintMode::Default);
    Key('o');
    EXPECT_EQ(host.shown.back(), "BrushOptions");
}

TEST_F(CanvasTest, ShiftArrowsNudgeTheAlphaWithWrapAround) {
    FillPicture(BufA, 0);
    BufA(0, 0) = 255;
    KeyUp(VirtualKey::Left, ShiftState::Shift);
    EXPECT_EQ(BufA(W - 1, 0), 255);
    EXPECT_EQ(BufA(0, 0), 0);
    KeyUp(VirtualKey::Down, ShiftState::Shift);
    EXPECT_EQ(BufA(W - 1, 1), 255);
    // A source a whole picture height above reads the extra row H; a whole
    // height below wraps onto the row itself.
    FillPicture(BufA, 0);
    for (int x = 0; x <= W; ++x) BufA(x, H) = 9;
    BufA(5, 3) = 200;
    for (int dy : {H, -H}) {
        NudgeAlpha(0, dy);
        EXPECT_EQ(BufA(5, 0), 9) << dy;
        EXPECT_EQ(BufA(5, 3), 200) << dy;
    }
}

TEST_F(CanvasTest, TheInfoBoxShowsTheModeOfTheListAndTheCursor) {
    Form2::Combo4.ListIndex = 6;
    GetCurrentInfo();
    Move(MouseButton::None, 12, 34);
    EXPECT_EQ(Form2::Info1.Caption.get(),
              "Paint mode = Around grey\nFill mode = Default\nBrush mode = Color\nX = 12\nY = 34");
}

// Settings and files keep the numbers, so each list entry must give its own.
TEST_F(CanvasTest, ThePaintingModeListStoresEachModeUnderItsNumber) {
    const int stored[] = {0, 1, 2, 3, 9, 10, 11, 4, 5, 6, 7, 8};  // in the order of the list
    ASSERT_EQ(Form2::Combo4.items.size(), std::size(stored));
    for (int i = 11; i >= 0; --i) {  // from the end: position 0 is already chosen
        Form2::Combo4.ListIndex = i;
        EXPECT_EQ(static_cast<int>(App.PaintMode), stored[i]) << Form2::Combo4.Text();
    }
}

TEST_F(CanvasTest, TheInfoBoxNamesTheFillModeAndAlphaKeepsTheLastName) {
    using kwmode::FillMode;
    auto fillLine = [] {
        GetCurrentInfo();
        PrintUserInfo();
        const std::string& c = Form2::Info1.Caption.get();
        const size_t at = c.find("Fill mode = ");
        return c.substr(at + 12, c.find('\n', at) - at - 12);
    };
    const std::pair<FillMode, const char*> names[] = {
        {FillMode::Add, "Add"},           {FillMode::Subtract, "Subtract"}, {FillMode::Multiply, "Multiply"},
        {FillMode::Divide, "Divide"},     {FillMode::Screen, "Screen"},     {FillMode::Rubthrough, "Rubthrough"},
        {FillMode::Default, "Default"}};
    for (auto [mode, name] : names) {
        App.FillMode = mode;
        EXPECT_EQ(fillLine(), name);
    }
    App.FillMode = FillMode::Screen;
    fillLine();
    for (FillMode nameless : {FillMode::Alpha, static_cast<FillMode>(8)}) {
        App.FillMode = nameless;
        EXPECT_EQ(fillLine(), "Screen") << static_cast<int>(nameless);
    }
    App.FillMode = FillMode::Default;
}
