// The rectangle, ellipse and selection tools driven with the mouse: symmetry
// of drags either way, fills into alpha, Alt adding and subtracting, the
// lasso's even-odd hole, clearing the selection and drags from off the canvas.
#include "tests/canvas/CanvasFixture.h"

#include "canvas/CanvasState.h"
#include "canvas/Shapes.h"
#include "colour/DeliverPixel.h"
#include "colour/Gradient.h"
#include "colour/Paper.h"
#include "colour/Gradients.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Commands.h"

namespace {
class ShapeTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        App.FillMode = kwmode::FillMode::Default;
        App.FillStyle = kwmode::FillStyle::Colour;
        App.NoiseAmount = 0;
        MaskFromShape = 0;
        Form2::Shape4.FillColor = vb::RGB(200, 10, 30);
    }
    static void Drag(OptionButton& tool, float x1, float y1, float x2, float y2, int button = MouseButton::Left,
                     int shift = 0) {
        tool.Value = true;
        Move(MouseButton::None, x1, y1);
        Press(button, x1, y1, shift);
        Move(button, (x1 + x2) / 2, (y1 + y2) / 2, shift);
        Move(button, x2, y2, shift);
        Release(button, x2, y2, shift);
    }
    static std::vector<uint8_t> Alpha() {
        std::vector<uint8_t> v;
        for (int y = 0; y < H; ++y) v.insert(v.end(), BufA.row(y), BufA.row(y) + W);
        return v;
    }
    static int Count(const Plane& p, uint8_t v) {
        int n = 0;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) n += p(x, y) == v;
        return n;
    }
};

TEST_F(ShapeTest, FilledRectangleIsTheBoxWhicheverWayItIsDraggedAndOneUndoStep) {
    Form2::Option2.Tag = "filled";
    const int16_t undo = UndoIndex;
    Drag(Form2::Option2, 10, 12, 30, 20);
    EXPECT_NE(UndoIndex, undo);
    const auto forward = Pixels();
    EXPECT_EQ(Count(BufR, 200), 21 * 9) << "the box includes both corners";
    EXPECT_EQ(BufG(10, 12), 10);
    EXPECT_EQ(BufG(30, 20), 10);
    EXPECT_EQ(BufG(31, 20), 255);
    EXPECT_FALSE(Form1::Shape1.Visible) << "the rubber box goes at the release";
    EXPECT_TRUE(Form1::Line1.Visible) << "and the crosshair comes back through the release";
    EXPECT_EQ(Form1::Line1.Y1, 20);
    EXPECT_EQ(Form1::Line2.X1, 30);
    RepaintUndo();
    EXPECT_EQ(Painted(), 0) << "one undo step takes it all back";
    Drag(Form2::Option2, 30, 20, 10, 12);
    EXPECT_EQ(Pixels(), forward);
}

TEST_F(ShapeTest, FilledEllipseMirrorsADragUpAndLeftAndIsSymmetric) {
    Form2::Option3.Tag = "filled";
    Drag(Form2::Option3, 40, 30, 52, 37);
    const auto downRight = Pixels();
    EXPECT_GT(Painted(), 200);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x <= 40; ++x) ASSERT_EQ(BufR(40 - x + 40, y) == 200, BufR(x, y) == 200 && x >= 28) << x << "," << y;
    MakeTestDocument(W, H);
    Drag(Form2::Option3, 40, 30, 28, 23);
    EXPECT_EQ(Pixels(), downRight);
    EXPECT_EQ(Form1::Shape1.Tag, Form1::OvalTag);
}

TEST_F(ShapeTest, ShapesInTheAlphaFillModeWriteCoverageOrBrightness) {
    Form2::Option2.Tag = "filled";
    App.FillMode = kwmode::FillMode::Alpha;
    FillPicture(BufA, 0);
    MaskFromShape = 255;
    Drag(Form2::Option2, 5, 5, 14, 9);
    EXPECT_EQ(Count(BufA, 255), 10 * 5);
    EXPECT_EQ(Painted(), 0) << "the colour planes are left alone";
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked);
    EXPECT_EQ(App.AlphaOff, 0);
    MaskFromShape = 0;
    App.AlphaOff = 255;
    Drag(Form2::Option2, 20, 20, 21, 21);
    EXPECT_EQ(BufA(20, 20), vb::CInt((200 + 10 + 30) / 3.0)) << "the mean of the delivered colour";
}

TEST_F(ShapeTest, RectangleSelectionReplacesAddsWithAltAndSubtractsWithAltRight) {
    FillPicture(BufA, 0);
    Drag(Form2::Option14, 10, 10, 19, 19);
    EXPECT_EQ(Count(BufA, 255), 100);
    Drag(Form2::Option14, 30, 30, 34, 34);
    EXPECT_EQ(Count(BufA, 255), 25) << "without Alt the old selection goes";
    Drag(Form2::Option14, 10, 10, 19, 19, MouseButton::Left, ShiftState::Alt);
    EXPECT_EQ(Count(BufA, 255), 125) << "Alt adds";
    Drag(Form2::Option14, 10, 10, 14, 19, MouseButton::Right, ShiftState::Alt);
    EXPECT_EQ(Count(BufA, 255), 75) << "Alt with the right button subtracts";
    EXPECT_TRUE(Form1::Timer1.TimerEnabled) << "the marquee runs";
}

TEST_F(ShapeTest, RectangleSelectionWorksInWindowPixelsAndClipsDragsFromOffTheCanvas) {
    App.ZoomPercent = 200;
    FillPicture(BufA, 0);
    Drag(Form2::Option14, 4, 4, 7, 5);
    EXPECT_EQ(Count(BufA, 255), 4 * 2) << "no zoom division";
    App.ZoomPercent = 100;
    Drag(Form2::Option14, -50, -40, 500, 400);
    EXPECT_EQ(Count(BufA, 255), W * H) << "held to the picture";
    Drag(Form2::Option14, 500, 400, 600, 700);
    Drag(Form2::Option15, -300, -300, -200, -100);
    Form2::Option3.Tag = "filled";
    Drag(Form2::Option3, 90, 60, 400, 300);
    Drag(Form2::Option3, 20, 20, 20, 20);  // zero size
    Form2::Option2.Tag = "filled";
    Drag(Form2::Option2, 200, 200, -300, -20);
}

TEST_F(ShapeTest, EllipseSelectionMatchesTheFilledEllipseAndRestoresTheFillSettings) {
    FillPicture(BufA, 0);
    App.FillMode = kwmode::FillMode::Add;
    Form2::Option3.Tag = "unfilled";
    Drag(Form2::Option15, 48, 32, 60, 40);
    const auto selected = Alpha();
    EXPECT_EQ(App.FillMode, kwmode::FillMode::Add);
    EXPECT_EQ(Form2::Option3.Tag, "unfilled");
    App.FillMode = kwmode::FillMode::Default;
    Form2::Option3.Tag = "filled";
    Drag(Form2::Option3, 48, 32, 60, 40);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) ASSERT_EQ(selected[y * W + x] == 255, BufR(x, y) == 200) << x << "," << y;
}

TEST_F(ShapeTest, LassoFillsEvenOddAndSubtractsWithAltRight) {
    // A fresh picture: alpha off and the plane all through; the lasso starts a selection.
    FillPicture(BufA, 255);
    Form2::Option13.Value = true;
    // A star of five points in one stroke: the middle is enclosed twice.
    const float star[][2] = {{48, 2}, {66, 60}, {18, 22}, {78, 22}, {30, 60}};
    Press(MouseButton::Left, star[0][0], star[0][1]);
    for (auto& p : star) Move(MouseButton::Left, p[0], p[1]);
    Release(MouseButton::Left, 30, 60);
    EXPECT_EQ(BufA(48, 10), 255);
    EXPECT_EQ(BufA(48, 30), 0) << "the doubly enclosed middle stays out";
    EXPECT_EQ(BufA(5, 5), 0) << "outside the outline";
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked);
    Press(MouseButton::Right, 40, 5, ShiftState::Alt);
    for (auto p : {std::pair{56.f, 5.f}, {56.f, 15.f}, {40.f, 15.f}}) Move(MouseButton::Right, p.first, p.second, ShiftState::Alt);
    Release(MouseButton::Right, 40, 15, ShiftState::Alt);
    EXPECT_EQ(BufA(48, 10), 0);
    Press(MouseButton::Left, 2, 40);
    for (auto p : {std::pair{10.f, 40.f}, {10.f, 50.f}, {2.f, 50.f}}) Move(MouseButton::Left, p.first, p.second);
    Release(MouseButton::Left, 2, 50);
    EXPECT_EQ(BufA(5, 45), 255) << "with a selection in force the lasso adds";
    EXPECT_EQ(BufA(25, 24), 255) << "and the star is kept";
    const auto before = Alpha();
    Press(MouseButton::Left, 5, 5);
    Release(MouseButton::Left, 5, 5);
    EXPECT_EQ(Alpha(), before) << "a lasso of one point does nothing";
}

TEST_F(ShapeTest, LassoKeepsAtMostTwoThousandAndOnePoints) {
    Form2::Option13.Value = true;
    Press(MouseButton::Left, 0, 0);
    for (int i = 0; i < 2100; ++i) Move(MouseButton::Left, static_cast<float>(i % W), static_cast<float>(i % H));
    EXPECT_EQ(LassoCount, 2000);
    EXPECT_EQ(LassoPoints[2000][0], 2099 % W) << "each further point replaces the last";
    EXPECT_EQ(LassoPoints[1999][0], 1998 % W);
    Release(MouseButton::Left, 0, 0);
}

TEST_F(ShapeTest, ClearSelectedMixesThroughAlphaAndSelectionBounds) {
    FillPicture(BufA, 0);
    App.AlphaOff = 0;
    BufA(5, 6) = 255;
    BufA(9, 3) = 102;
    ClearSelected(0);
    EXPECT_EQ(BufR(5, 6), 200);
    EXPECT_EQ(BufR(9, 3), (255 * 153 + 200 * 102) / 255);
    EXPECT_EQ(BufR(0, 0), 255);
    GetAlphaMinMax();
    EXPECT_EQ(AlphaLeft, 5);
    EXPECT_EQ(AlphaRight, 9);
    EXPECT_EQ(AlphaTop, 3);
    EXPECT_EQ(AlphaBottom, 6);
    FindSelection();
    EXPECT_EQ(SelLeft, 5);
    EXPECT_EQ(SelBottom, 6);
    AlphaToBlack();
    EXPECT_EQ(BufA(W, H), 0) << "the extra row and column too";
    GetAlphaMinMax();
    EXPECT_EQ(AlphaLeft, 8000);
    EXPECT_EQ(AlphaRight, 0);
}

TEST_F(ShapeTest, OutlinedShapesAreBrushStrokesAroundTheBox) {
    Form2::Option2.Tag = "unfilled";
    Form2::HScroll5.Value = 4;
    Drag(Form2::Option2, 20, 15, 70, 50);
    EXPECT_LT(BufR(20, 15), 255);
    EXPECT_LT(BufR(70, 32), 255);
    EXPECT_LT(BufR(45, 50), 255);
    EXPECT_EQ(BufR(45, 32), 255) << "the inside stays";
    MakeTestDocument(W, H);
    Form2::Option3.Tag = "unfilled";
    Drag(Form2::Option3, 48, 32, 68, 47);
    EXPECT_LT(BufR(68, 32), 255);
    EXPECT_LT(BufR(48, 47), 255);
    EXPECT_EQ(BufR(48, 32), 255);
}

TEST_F(ShapeTest, KeysPickTheToolsWithTheirFill) {
    Key('R');
    EXPECT_TRUE(Form2::Option2.Value);
    EXPECT_EQ(Form2::Option2.Tag, "filled");
    Key('r');
    EXPECT_EQ(Form2::Option2.Tag, "unfilled");
    Key('C');
    EXPECT_TRUE(Form2::Option3.Value);
    EXPECT_EQ(Form2::Option3.Tag, "filled");
    Key('c');
    EXPECT_EQ(Form2::Option3.Tag, "unfilled");
    Key('v');
    EXPECT_TRUE(Form2::Option18.Value);
}
}  // namespace

namespace {
TEST_F(ShapeTest, PopupsOfTheToolsAndTheClearButtonAndTheirEntries) {
    host.popups.clear();
    Form2::Command1.MouseDown(MouseButton::Right, 0, 1, 1);
    Commands().toolOf(Form2::Option18)->settings();
    EXPECT_EQ(host.popups, (std::vector<std::string>{"Clear_menu", "Linetool"}));
    EXPECT_TRUE(Menus::linetool_Line.Checked);
    FillPicture(BufA, 0);
    BufA(3, 4) = 255;
    App.AlphaOff = 0;
    const int16_t undo = UndoIndex;
    Menus::ClearAlphaSeconary.press();
    EXPECT_NE(UndoIndex, undo) << "one undo step";
    EXPECT_EQ(BufR(3, 4), 255) << "the secondary colour is white";
    Menus::ClearAlphaPrimary.press();
    EXPECT_EQ(BufG(3, 4), 10);
    EXPECT_EQ(BufG(4, 4), 255) << "outside the selection";
    RepaintUndo();
    EXPECT_EQ(BufG(3, 4), 255);
    host.shown.clear();
    Key('i');
    MDIForm1::Win_Spraxel.press();
    EXPECT_EQ(host.shown, (std::vector<std::string>{"Spraxel", "Spraxel"}));
}
}  // namespace

// A filled rectangle over the whole picture paints what the whole-buffer fill
// paints: the shapes take the plain colour's quick rows too, and they must give
// the pixel kernel's bytes in every mode, at every opacity, through alpha or not.
TEST_F(ShapeTest, AFilledRectangleOverThePictureIsTheWholeBufferFill) {
    Form2::Option2.Tag = "filled";
    for (int y = 0; y <= H; ++y)
        for (int x = 0; x <= W; ++x) {
            BufR(x, y) = static_cast<uint8_t>(x * 7 + y);
            BufG(x, y) = static_cast<uint8_t>(x * 3 + y * 5);
            BufB(x, y) = static_cast<uint8_t>(255 - x - y);
            BufA(x, y) = static_cast<uint8_t>(x * 11 + y * 13);
            SwapR(x, y) = SwapG(x, y) = SwapB(x, y) = static_cast<uint8_t>(x + y * 2);
        }
    Plane r0, g0, b0;
    r0.copyFrom(BufR), g0.copyFrom(BufG), b0.copyFrom(BufB);
    auto restore = [&] { BufR.copyFrom(r0), BufG.copyFrom(g0), BufB.copyFrom(b0); };
    using kwmode::FillMode;
    for (FillMode mode : {FillMode::Default, FillMode::Add, FillMode::Subtract, FillMode::Multiply, FillMode::Divide,
                          FillMode::Screen, FillMode::Rubthrough})
        for (int opacity : {0, 1, 127, 128, 254, 255})
            for (uint8_t alphaOff : {uint8_t(255), uint8_t(0)}) {
                App.FillMode = mode;
                Form2::HScroll4.Value = opacity;
                App.AlphaOff = alphaOff;
                restore();
                Drag(Form2::Option2, 0, 0, W - 1, H - 1);
                ASSERT_EQ(App.Opacity, opacity);
                const auto shape = Pixels();
                restore();
                DeliverFill(Form2::Shape4.FillColor);
                ASSERT_EQ(shape, Pixels()) << "mode " << int(mode) << " opacity " << opacity << " alpha "
                                           << (alphaOff == 0 ? "on" : "off");
            }
}

// A filled ellipse goes through the fill's rows a span at a time, each span
// starting where the ellipse does on its row; it must give what the pixel
// kernel gives pixel by pixel in every style, with noise and paper, through
// alpha or not, the noise drawn in the same order.
TEST_F(ShapeTest, AFilledEllipseIsThePixelKernelSpanBySpanInEveryStyle) {
    Form2::Option3.Tag = "filled";
    constexpr int cx = W / 2, cy = H / 2, rx = W / 2 - 5, ry = H / 2 - 4;
    for (Plane* p : {&BufR, &BufG, &BufB}) p->fill(0);
    Drag(Form2::Option3, cx, cy, cx + rx, cy + ry);  // the covered pixels: the plain colour over black
    std::vector<std::pair<int, int>> covered;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            if (BufR(x, y) == 200) covered.push_back({x, y});
    ASSERT_GT(covered.size(), size_t(W * H / 2));
    for (int y = 0; y <= H; ++y)
        for (int x = 0; x <= W; ++x) {
            BufR(x, y) = static_cast<uint8_t>(x * 7 + y);
            BufG(x, y) = static_cast<uint8_t>(x * 3 + y * 5);
            BufB(x, y) = static_cast<uint8_t>(255 - x - y);
            BufA(x, y) = static_cast<uint8_t>(x * 11 + y * 13);
        }
    Plane r0, g0, b0;
    r0.copyFrom(BufR), g0.copyFrom(BufG), b0.copyFrom(BufB);
    auto restore = [&] { BufR.copyFrom(r0), BufG.copyFrom(g0), BufB.copyFrom(b0); };
    // A gradient whose every step differs, opaque throughout.
    auto& gradient = GradientData[App.GradientIndex];
    std::vector<uint8_t> kept(&gradient[0][0], &gradient[0][0] + sizeof gradient);
    for (int i = 0; i < GradientSteps; ++i) {
        gradient[0][i] = static_cast<uint8_t>(i);
        gradient[1][i] = static_cast<uint8_t>(255 - i);
        gradient[2][i] = static_cast<uint8_t>(i * 3);
        gradient[3][i] = 255;
    }
    using kwmode::FillStyle;
    // The paper is the one the program starts with; at full opacity an opaque
    // gradient across takes its rows whole.
    for (int opacity : {200, 255})
    for (FillStyle style : {FillStyle::Colour, FillStyle::Horizontal, FillStyle::FitHorizontal, FillStyle::Vertical,
                            FillStyle::Circular})
        for (int noise : {0, 1, 2})  // none, one draw, a draw per channel
            for (int16_t paper : {0, 1})
                for (uint8_t alphaOff : {uint8_t(255), uint8_t(0)}) {
                    Form2::HScroll4.Value = opacity;
                    App.FillStyle = style;
                    App.NoiseAmount = noise ? 60 : 0;
                    App.NoiseMode = static_cast<uint8_t>(noise == 2);
                    BumpinessOn = DrybrushOn = paper;
                    App.AlphaOff = alphaOff;
                    restore();
                    vb::Randomize(11);
                    Drag(Form2::Option3, cx, cy, cx + rx, cy + ry);
                    const auto shape = Pixels();
                    restore();
                    vb::Randomize(11);
                    LoadFillOpacity();
                    DeliverRun run = DeliverBegin();
                    const uint32_t colour = Form2::Shape4.FillColor;
                    for (auto [x, y] : covered) {
                        const uint32_t v = DeliverPixel<kwfill::DpAll>(run.settings, run.state, colour, x, y, cx - rx,
                                                                       cy - ry, cx + rx, cy + ry);
                        BufR(x, y) = vb::RedOf(v), BufG(x, y) = vb::GreenOf(v), BufB(x, y) = vb::BlueOf(v);
                    }
                    DeliverEnd(run.state);
                    ASSERT_EQ(shape, Pixels()) << "opacity " << opacity << " style " << int(style) << " noise " << noise
                                               << " paper " << paper
                                               << " alpha " << (alphaOff == 0 ? "on" : "off");
                }
    BumpinessOn = DrybrushOn = 0;
    App.NoiseMode = 0;
    std::copy(kept.begin(), kept.end(), &gradient[0][0]);
}
