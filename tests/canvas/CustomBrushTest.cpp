// The custom brush from the user's side: cut with the selector tool, keyed,
// painted in colour and matte mode, turned and tiled, saved and loaded.
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "brush/BrushTransforms.h"
#include "brush/CustomBrush.h"
#include "core/frame/MDIForm1.h"
#include "file/TargaFile.h"
#include "tests/canvas/CanvasFixture.h"

namespace {
class CustomBrushTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        host.Answer("Free custom brush?", 1);
        MDIForm1::Cust_Free_Click();
        BrushKey::form.Visible = false;
        Form2::slider1.Value = 64;  // one dab per stroke unless a test says otherwise
        // A picture to cut from: each pixel its own colour.
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) BufR(x, y) = uint8_t(x), BufG(x, y) = uint8_t(y), BufB(x, y) = uint8_t(x + y);
    }
    // A drag of the selector tool from (x1, y1) to (x2, y2), window pixels.
    static void Cut(float x1, float y1, float x2, float y2) {
        Key('b');
        Press(MouseButton::Left, x1, y1);
        Move(MouseButton::Left, x2, y2);
        Release(MouseButton::Left, x2, y2);
    }
    // The brush as rows of packed colours with coverage.
    static std::vector<uint64_t> BrushPixels() {
        std::vector<uint64_t> v;
        for (int y = 0; y < BrushHeight; ++y)
            for (int x = 0; x < BrushWidth; ++x)
                v.push_back(uint64_t(BrushR(x, y)) | uint64_t(BrushG(x, y)) << 8 | uint64_t(BrushB(x, y)) << 16 |
                            uint64_t(BrushA(x, y)) << 24);
        return v;
    }
    std::string TempPath(const char* name) { return (std::filesystem::temp_directory_path() / name).string(); }
};

TEST_F(CustomBrushTest, TheSelectorCutsTheRectangleAndPaintsWithIt) {
    int w = 0, h = 5;
    EXPECT_EQ(CreateEmptyBrush(w, h), -1);
    EXPECT_EQ(BrushWidth, 0);
    App.ZoomPercent = 200;
    Cut(20, 10, 28, 16);  // picture pixels 10..13 by 5..7
    EXPECT_EQ(BrushWidth, 4);
    EXPECT_EQ(BrushHeight, 3);
    EXPECT_EQ(BrushR(0, 0), 10);
    EXPECT_EQ(BrushG(3, 2), 7);
    EXPECT_EQ(BrushA(1, 1), 255);  // alpha off: the whole rectangle covers
    EXPECT_EQ(App.CustomBrushOn, -1);
    EXPECT_TRUE(Form2::Option1.Value);
    EXPECT_EQ(Form2::slider1.Value, 16);
    EXPECT_TRUE(Form2::Picture58.Visible);
    EXPECT_TRUE(MDIForm1::Cust_Mode_Color.Checked);
    // A drag with no width picks nothing; one hanging over the picture is held to it.
    Cut(10, 10, 10, 30);
    EXPECT_EQ(BrushWidth, 4);
    App.ZoomPercent = 100;
    Cut(W - 3, H - 2, W + 40, H + 40);
    EXPECT_EQ(BrushWidth, 2);
    EXPECT_EQ(BrushHeight, 1);
    EXPECT_EQ(BrushR(0, 0), W - 3);
}

TEST_F(CustomBrushTest, ColourModePaintsTheBrushAndMattePaintsItsShape) {
    Cut(10, 10, 14, 14);
    ASSERT_EQ(BrushWidth, 4);
    Form2::slider1.Value = 64;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) BufR(x, y) = BufG(x, y) = BufB(x, y) = 255;
    BrushA(0, 0) = 0;
    Stroke({{50, 30}, {51, 30}});
    // The stamp's corner is the centre less half the size.
    EXPECT_EQ(BufR(49, 29), 11);
    EXPECT_EQ(BufG(51, 31), 13);
    EXPECT_EQ(BufR(48, 28), 255);  // no coverage there
    KeyUp(VirtualKey::F2, ShiftState::None);
    EXPECT_EQ(BrushMatte, 1);
    EXPECT_TRUE(MDIForm1::Cust_Mode_Matte.Checked);
    EXPECT_FALSE(MDIForm1::Cust_Mode_Color.Checked);
    Form2::Shape4.FillColor = vb::RGB(1, 2, 3);
    Stroke({{20, 30}, {21, 30}});
    EXPECT_EQ(Form2::Shape4.FillColor, vb::RGB(1, 2, 3));
    EXPECT_EQ(BufR(19, 29), 1);  // the primary colour
    EXPECT_EQ(BufB(20, 30), 3);
    // The right button paints the secondary colour in matte mode.
    Form2::Shape1.FillColor = vb::RGB(90, 91, 92);
    Stroke({{70, 30}, {71, 30}}, MouseButton::Right);
    EXPECT_EQ(BufG(69, 29), 91);
    KeyUp(VirtualKey::F1, ShiftState::None);
    EXPECT_EQ(BrushMatte, 0);
}

TEST_F(CustomBrushTest, TheColourKeyTakesOutTheSecondaryColour) {
    uint8_t curve[256];
    BuildKeyCurve(20, 40, false, curve);
    EXPECT_EQ(curve[0], 0);
    EXPECT_EQ(curve[20], 0);
    EXPECT_EQ(curve[40], 128);  // halfway up the soft edge
    EXPECT_EQ(curve[60], 255);
    for (int q = 1; q < 256; ++q) EXPECT_GE(curve[q], curve[q - 1]);
    BuildKeyCurve(20, 40, true, curve);
    EXPECT_EQ(curve[0], 255);
    BufR(5, 5) = 1, BufG(5, 5) = 2, BufB(5, 5) = 3;
    Form2::Shape1.FillColor = vb::RGB(1, 2, 3);
    BrushKey::form.Visible = true;
    Cut(4, 4, 8, 8);
    EXPECT_EQ(BrushA(1, 1), 0);    // the key colour
    EXPECT_EQ(BrushA(3, 3), 255);  // far from it
    BrushKey::Check2.Value = 1;  // keep the picture's alpha instead
    BufA(5, 5) = 77;
    App.AlphaOff = 0;
    Cut(4, 4, 8, 8);
    EXPECT_EQ(BrushA(1, 1), 77);
    BrushKey::Check2.Value = 0;
}

TEST_F(CustomBrushTest, FlipsAndTurnsComeBackToTheBrush) {
    Cut(3, 7, 10, 12);  // 7 by 5
    const auto original = BrushPixels();
    Key('x');
    EXPECT_NE(BrushPixels(), original);
    Key('x');
    EXPECT_EQ(BrushPixels(), original);
    Key('y');
    Key('y');
    EXPECT_EQ(BrushPixels(), original);
    KeyUp(VirtualKey::F2, ShiftState::None);
    Key('z');
    EXPECT_EQ(BrushWidth, 5);
    EXPECT_EQ(BrushHeight, 7);
    EXPECT_EQ(BrushMatte, 1);  // the mode stays
    Key('z');
    const auto halfTurn = BrushPixels();
    MDIForm1::Cust_RotateCC_Click();
    MDIForm1::Cust_RotateCC_Click();
    EXPECT_EQ(BrushPixels(), original);
    Key('x');
    Key('y');
    EXPECT_EQ(BrushPixels(), halfTurn);
    // A turn by nothing keeps the picture, whatever the box's rounding adds.
    Key('x');
    Key('y');
    RotateBrush(0);
    ASSERT_GE(BrushWidth, 7);
    ASSERT_GE(BrushHeight, 5);
    // The whole 7 by 5 picture (red = 3 + x, green = 7 + y) lies in the new brush.
    bool found = false;
    for (int oy = 0; oy + 5 <= BrushHeight; ++oy)
        for (int ox = 0; ox + 7 <= BrushWidth; ++ox) {
            bool all = true;
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 7; ++x)
                    all = all && BrushR(ox + x, oy + y) == 3 + x && BrushG(ox + x, oy + y) == 7 + y &&
                          BrushA(ox + x, oy + y) == 255;
            found = found || all;
        }
    EXPECT_TRUE(found);
    EXPECT_EQ(BrushMatte, 1);
}

TEST_F(CustomBrushTest, ResampleAndSeamlessMakeTheirSizes) {
    Cut(0, 0, 10, 10);
    BrushResample::Text1.Text = "20";
    BrushResample::Text2.Text = "5";
    BrushResample::Command1_Click();
    EXPECT_EQ(BrushWidth, 20);
    EXPECT_EQ(BrushHeight, 5);
    EXPECT_EQ(BrushR(19, 0), 9);  // the corners stay where they were
    EXPECT_EQ(BrushG(0, 4), 9);
    BrushResample::Check1.Value = 1;
    BrushResample::Text1.Text = "40";
    EXPECT_EQ(BrushResample::Text2.Text.get(), "10");
    BrushResample::Hscroll1.Value = 250;  // the scale writes both boxes, constrained or not
    EXPECT_EQ(BrushResample::Text1.Text.get(), "50");
    EXPECT_EQ(BrushResample::Text2.Text.get(), "12");  // 12.5 rounds half to even
    BrushResample::Check1.Value = 0;
    // Trim 30 % of 20 columns: 14 kept, the first six fading from the columns
    // beyond into their own, so that column 13 runs on into column 0.
    Cut(0, 0, 20, 4);
    EXPECT_FALSE(MakeSeamless(0, 50));  // no overlap across
    EXPECT_EQ(BrushWidth, 20);
    EXPECT_TRUE(MakeSeamless(30, 50));
    EXPECT_EQ(BrushWidth, 14);
    EXPECT_EQ(BrushHeight, 2);
    EXPECT_EQ(BrushR(0, 1), 14);
    EXPECT_EQ(BrushR(3, 1), 10);  // halfway: (17 + 3) / 2
    EXPECT_EQ(BrushR(6, 1), 6);
    EXPECT_EQ(BrushR(13, 1), 13);
    EXPECT_EQ(BrushG(0, 0), 2);  // the rows the same way
    EXPECT_EQ(BrushG(0, 1), 2);  // (3 + 1) / 2
    host.Answer("Free custom brush?", 1);
    MDIForm1::Cust_Free_Click();
    host.ExpectMessage("No custom brush");
    Seamless::Command1_Click();
    EXPECT_TRUE(host.AllAnswered());
}

TEST_F(CustomBrushTest, BrushFilesRoundTripAndBadFilesKeepTheBrush) {
    Cut(2, 3, 9, 8);
    BrushA(1, 1) = 40;
    const auto saved = BrushPixels();
    const std::string path = TempPath("kw_brush_roundtrip.tga");
    std::filesystem::remove(path);
    host.saveFiles.push_back(path);
    MDIForm1::Cust_Save_Click();
    host.Answer("Free custom brush?", 1);
    MDIForm1::Cust_Free_Click();
    EXPECT_EQ(BrushWidth, 0);
    host.openFiles.push_back(path);
    MDIForm1::Cust_Load_Click();
    EXPECT_EQ(BrushPixels(), saved);
    EXPECT_EQ(App.CustomBrushOn, -1);
    // "All supported files" reads any picture through the converter, alpha and all.
    const std::string png = TempPath("kw_brush_roundtrip.png");
    ASSERT_EQ(std::system(("convert TGA:" + path + " -auto-orient " + png).c_str()), 0);
    host.Answer("Free custom brush?", 1);
    MDIForm1::Cust_Free_Click();
    host.openFiles.push_back(png);
    host.openFilter = 2;
    MDIForm1::Cust_Load_Click();
    host.openFilter = 0;
    EXPECT_EQ(BrushPixels(), saved);
    // An all-transparent 32-bit file loads as an opaque brush.
    BrushA.fill(0);
    ASSERT_TRUE(SaveTargaBrush(path, 1));
    ASSERT_TRUE(LoadBrushFile(path));
    EXPECT_EQ(BrushA(3, 2), 255);
    // Not a Targa, cut short, larger than the picture: a message, the brush kept.
    const auto kept = BrushPixels();
    const std::string bad = TempPath("kw_brush_bad.tga");
    std::vector<uint8_t> bytes;
    ASSERT_TRUE(ReadWholeFile(path, bytes));
    auto writeBad = [&](std::vector<uint8_t> b) {
        std::ofstream(bad, std::ios::binary | std::ios::trunc).write(reinterpret_cast<const char*>(b.data()), std::streamsize(b.size()));
    };
    host.ExpectMessage("not a Targa");
    host.ExpectMessage("cut short");
    host.ExpectMessage("larger than the picture");
    writeBad({'h', 'e', 'l', 'l', 'o'});
    EXPECT_FALSE(LoadBrushFile(bad));
    writeBad(std::vector<uint8_t>(bytes.begin(), bytes.begin() + 40));
    EXPECT_FALSE(LoadBrushFile(bad));
    auto big = bytes;
    big[12] = uint8_t(W + 1), big[13] = 0;  // wider than the picture
    writeBad(big);
    EXPECT_FALSE(LoadBrushFile(bad));
    EXPECT_EQ(BrushPixels(), kept);
    EXPECT_TRUE(host.AllAnswered());
    std::filesystem::remove(path);
    std::filesystem::remove(bad);
}

TEST_F(CustomBrushTest, KeysReachTheBrushCommands) {
    EXPECT_FALSE(Form2::Option20.Value);
    Key('b');
    EXPECT_TRUE(Form2::Option20.Value);
    Cut(0, 0, 4, 4);
    Key('d');
    PickStockBrush(1);
    EXPECT_EQ(App.CustomBrushOn, 0);
    Key('B');  // the planes stayed: the custom brush comes back
    EXPECT_EQ(App.CustomBrushOn, -1);
    Key('h');
    EXPECT_TRUE(BrushKey::form.Visible);
    Key('Z');
    EXPECT_TRUE(RotateBrush_Options::form.Visible);
    // Shift with F1 is no key of the table.
    KeyUp(VirtualKey::F2, ShiftState::None);
    KeyUp(VirtualKey::F1, ShiftState::Shift);
    EXPECT_EQ(BrushMatte, 1);
}
}  // namespace

namespace {
TEST_F(CustomBrushTest, ALightPenStampsASmallerFainterBrush) {
    Cut(0, 0, 10, 10);
    KeyUp(VirtualKey::F2, ShiftState::None);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) BufR(x, y) = BufG(x, y) = BufB(x, y) = 255;
    auto paintedAt = [](int y) {
        int n = 0;
        for (int x = 0; x < W; ++x) n += BufR(x, y) != 255;
        return n;
    };
    App.Pressure = 0.5f;
    Stroke({{30, 20}, {31, 20}});
    EXPECT_EQ(paintedAt(20), 5);  // half the size
    EXPECT_EQ(paintedAt(24), 0);
    EXPECT_EQ(BufR(30, 20), 127);  // half the opacity: 255 * (255 - 127) / 255
    // Pressure off: the whole brush at full strength, whatever the pen says.
    BrushOptions::Check2.Value = 0;
    BrushOptions::Check3.Value = 0;
    Stroke({{30, 50}, {31, 50}});
    EXPECT_EQ(paintedAt(50), 10);
    EXPECT_EQ(BufR(30, 50), 0);
    BrushOptions::Check2.Value = 1;
    BrushOptions::Check3.Value = 1;
    App.Pressure = 1;
}
}  // namespace
