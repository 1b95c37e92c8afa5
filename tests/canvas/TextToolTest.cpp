// The text tool with the scripted host's fixed rasteriser (each character a
// 4 x 7 block in a 6-pixel cell): the box following a drag, Enter into the
// colour planes with a gradient fitted to the box, into alpha, clipping, the
// zoom, the font dialog, the nudge panel and the refusals.
#include "tests/canvas/CanvasFixture.h"

#include "canvas/TextTool.h"
#include "colour/Gradients.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Commands.h"

namespace {
class TextTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        TextFont = FontChoice{};
        App.FillMode = kwmode::FillMode::Default;
        App.FillStyle = kwmode::FillStyle::Colour;
        App.NoiseAmount = 0;
        Form2::Option19.Value = false;
        Form2::Option19.Value = true;
        Form2::Shape4.FillColor = vb::RGB(10, 20, 30);
    }
    void TearDown() override {
        App.FillStyle = kwmode::FillStyle::Colour;
        Form1::TextTool.Text = "";
    }
    // Drags the box to (x, y), types the text and presses Enter.
    static int16_t Type(const std::string& text, float x, float y) {
        Press(MouseButton::Left, x - 5, y - 5);
        Move(MouseButton::Left, x, y);
        Release(MouseButton::Left, x, y);
        Form1::TextTool.Text = text;
        int16_t key = 13;
        Form1::TextTool_KeyPress(key);
        return key;
    }
};

TEST_F(TextTest, EnterBurnsTheLettersInThePrimaryColourAsOneUndoStep) {
    EXPECT_TRUE(Form1::TextTool.Visible);
    const int16_t undo = UndoIndex;
    EXPECT_EQ(Type("AB", 10, 20), 0) << "the key is swallowed";
    EXPECT_EQ(Form1::TextToolFrame.Left, 10);
    EXPECT_EQ(Form1::TextToolFrame.Width, 12 + 6 + 8) << "the text, one blank and 8";
    EXPECT_NE(UndoIndex, undo);
    EXPECT_EQ(Painted(), 2 * 4 * 7);
    for (int x : {11, 14, 17, 20}) EXPECT_EQ(BufR(x, 21), 10) << x;
    EXPECT_EQ(BufR(15, 21), 255) << "between the letters";
    EXPECT_EQ(BufB(11, 27), 30);
    EXPECT_EQ(BufB(11, 28), 255);
    RepaintUndo();
    EXPECT_EQ(Painted(), 0);
}

TEST_F(TextTest, AGradientFillStyleFitsTheBoxOfTheText) {
    for (int i = 0; i < 256; ++i) {
        GradientData[0][0][i] = static_cast<uint8_t>(i);
        GradientData[0][1][i] = 0;
        GradientData[0][2][i] = static_cast<uint8_t>(255 - i);
        GradientData[0][3][i] = 255;
    }
    App.GradientIndex = 0;
    App.FillStyle = kwmode::FillStyle::Horizontal;
    Type("XYZ", 30, 10);
    const int width = 18 + 6 + 8;
    for (int x : {31, 34, 43, 46}) EXPECT_EQ(BufR(x, 12), vb::CInt((x - 30) * (255.0f / width))) << x;
    EXPECT_LT(BufR(31, 12), BufR(46, 12));
}

TEST_F(TextTest, InTheAlphaFillModeTheLettersBecomeTheSelection) {
    FillPicture(BufA, 255);
    App.FillMode = kwmode::FillMode::Alpha;
    Type("I", 40, 30);
    EXPECT_EQ(TextToAlpha, 255);
    EXPECT_EQ(Painted(), 0);
    int selected = 0;
    for (int y = 0; y < H - 1; ++y)
        for (int x = 0; x < W - 1; ++x) selected += BufA(x, y) == 255;
    EXPECT_EQ(selected, 4 * 7);
    EXPECT_EQ(BufA(41, 31), 255);
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked);
    EXPECT_TRUE(Form1::Timer1.TimerEnabled);
}

TEST_F(TextTest, TheBoxClipsAtTheEdgesAndFollowsTheZoom) {
    Type("WW", static_cast<float>(W - 3), static_cast<float>(H - 4));
    EXPECT_EQ(Painted(), 2 * 3) << "only the pixels on the picture";
    MakeTestDocument(W, H);
    App.ZoomPercent = 200;
    Type("M", 20, 40);
    EXPECT_EQ(BufR(11, 21), 10) << "the box's place is divided by the zoom";
    Type("M", -400, -400);
}

TEST_F(TextTest, EmptyTextAndMissingFontsChangeNothing) {
    const int16_t undo = UndoIndex;
    Type("", 10, 10);
    EXPECT_EQ(UndoIndex, undo);
    TextFont.Name = "";
    host.ExpectMessage("no font");
    Type("A", 10, 10);
    EXPECT_TRUE(host.AllAnswered());
    EXPECT_EQ(UndoIndex, undo);
    EXPECT_EQ(Painted(), 0);
}

TEST_F(TextTest, PopupFontDialogAndNudgePanel) {
    host.popups.clear();
    Commands().toolOf(Form2::Option19)->settings();
    EXPECT_EQ(host.popups, std::vector<std::string>{"Texttool"});
    FontChoice big;
    big.Name = "Serif";
    big.Size = 30;
    host.fonts.push_back(big);
    Form1::TextTool.Text = "ABC";
    Menus::Text_FontSettings.press();
    EXPECT_EQ(TextFont.Name, "Serif");
    EXPECT_GT(Form1::TextToolFrame.Height, 40);
    host.fonts.push_back(std::nullopt);
    Menus::Text_FontSettings.press();
    EXPECT_EQ(TextFont.Size, 30) << "cancel keeps the font";
    Form1::TextToolFrame.Left = 10;
    Form1::TextToolFrame.Top = 10;
    Menus::Text_NudgeTool.press();
    Nudge::Command2.press();
    Nudge::Command4.press();
    EXPECT_EQ(Form1::TextToolFrame.Left, 11);
    EXPECT_EQ(Form1::TextToolFrame.Top, 11);
    Form2::Option1.Value = true;
    Move(MouseButton::None, 5, 5);
    EXPECT_FALSE(Form1::TextTool.Visible) << "the box goes with another tool";
}
}  // namespace
