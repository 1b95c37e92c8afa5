// The whole-buffer fill through its menu entry and its key, the baster at the
// edges of the picture, the pickers' arithmetic and the start-up files.
#include <gtest/gtest.h>

#include "colour/Colour.h"
#include "colour/DeliverPixel.h"
#include "colour/Gradient.h"
#include "colour/Gradients.h"
#include "colour/Pickers.h"
#include "colour/Wells.h"
#include "core/framework/AppState.h"
#include "core/framework/Codes.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/document/Undo.h"
#include "tests/colour/ColourFixture.h"

namespace {
using namespace colourtest;

class FillTest : public ::testing::Test {
protected:
    void SetUp() override {
        MakeTestDocument(7, 5);
        InitGradientData();
        App.FillStyle = kwmode::FillStyle::Colour;
        App.FillMode = kwmode::FillMode::Default;
        Form2::HScroll4.Value = 255;
    }
    void Key(char c) {
        int16_t key = c;
        Form1::Form_KeyPress(key);
    }
    ScriptedHost host;
};

TEST_F(FillTest, MenuAndKeyFillTheWholePictureWithAnUndoStep) {
    Form2::Shape4.FillColor = vb::RGB(9, 8, 7);
    MDIForm1::Buffer_Fill.press();
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x) ASSERT_EQ(PixelAt(x, y), vb::RGB(9, 8, 7));
    EXPECT_EQ(BufR(7, 0), 0) << "the extra column is not part of the picture";
    // Key q with a horizontal black to white gradient and half opacity.
    App.FillStyle = kwmode::FillStyle::Horizontal;
    App.GradientIndex = 0;
    Form2::HScroll4.Value = 128;
    Key('q');
    EXPECT_EQ(App.Opacity, 128);
    EXPECT_EQ(BufR(0, 0), (0 * 128 + 9 * 127) / 255);
    EXPECT_EQ(BufR(6, 0), (255 * 128 + 9 * 127) / 255);
    RepaintUndo();
    EXPECT_EQ(BufR(6, 0), 9) << "undo brings back the first fill";
}

TEST_F(FillTest, KeysShowTheGradientPanelAndStepThroughTheGradient) {
    Key('p');
    EXPECT_NE(std::find(host.shown.begin(), host.shown.end(), "Gradient"), host.shown.end());
    App.GradientIndex = 0;
    Key('[');  // below 0 goes to 255: white
    EXPECT_EQ(Form2::Shape4.FillColor, 0xFFFFFFu);
    Key(']');  // past 255 back to 0: black
    EXPECT_EQ(Form2::Shape4.FillColor, 0u);
}

TEST_F(FillTest, BasterAveragesWithADarkerEdge) {
    for (Plane* p : {&BufR, &BufG, &BufB}) FillPicture(*p, 255);
    BufG(3, 2) = 0;
    // Pixels off the picture count as black: four of nine at the corner is 4 * 255 / 9.
    struct Case { MenuEntry* size; int x, y, r, g; };
    const Case cases[] = {{&Menus::Baster1, 3, 2, 255, 0},   {&Menus::baster5, 0, 0, 113, 113},
                          {&Menus::baster5, 3, 2, 255, 227}, {&Menus::baster9, 6, 4, 92, 92},
                          {&Menus::baster9, -1, 0, 0, 0},    {&Menus::baster9, 0, 6, 0, 0}};
    for (const Case& c : cases) {
        c.size->press();
        int32_t r, g, b;
        TurkeyColor(c.x, c.y, r, g, b);
        EXPECT_EQ(vb::RGB(r, g, b), vb::RGB(c.r, c.g, c.r)) << c.size->Name << " at " << c.x << "," << c.y;
    }
    EXPECT_FALSE(Menus::Baster1.Checked) << "one size checked at a time";
    Menus::Baster1.press();
}

TEST_F(FillTest, PickersTurnPositionsIntoColoursOnTheSliders) {
    EXPECT_EQ(HsvToColour({0, 1, 1}), vb::RGB(255, 0, 0));
    EXPECT_EQ(HsvToColour({120, 1, 1}), vb::RGB(0, 255, 0));
    EXPECT_EQ(HsvToColour({240, 0.5, 1}), vb::RGB(128, 128, 255));
    Hsv back = ColourToHsv(vb::RGB(0, 128, 255));
    EXPECT_NEAR(back.h, 210, 0.5);
    EXPECT_EQ(HsvToColour(back), vb::RGB(0, 128, 255));
    // Spectrum: top is white, the middle the pure hue, the bottom black.
    EXPECT_EQ(HsvToColour(SpectrumAt(0, 0, 200, 101).hsv), 0xFFFFFFu);
    EXPECT_EQ(HsvToColour(SpectrumAt(0, 50, 200, 101).hsv), vb::RGB(255, 0, 0));
    EXPECT_EQ(HsvToColour(SpectrumAt(0, 100, 200, 101).hsv), 0u);
    // The wheel: right of the centre on the ring is red, above it is hue 90.
    PickResult ring = WheelAt(158, 79.5f, 160, 160, {}, PickZone::None);
    EXPECT_EQ(ring.zone, PickZone::Hue);
    EXPECT_NEAR(ring.hsv.h, 0, 1);
    EXPECT_NEAR(WheelAt(79.5f, 2, 160, 160, {}, PickZone::None).hsv.h, 90, 1);
    PickResult centre = WheelAt(79.5f, 79.5f, 160, 160, {30, 0, 0}, PickZone::None);
    EXPECT_EQ(centre.zone, PickZone::SatVal);
    EXPECT_NEAR(centre.hsv.s, 0.5, 0.02);
    EXPECT_NEAR(centre.hsv.v, 0.5, 0.02);
    EXPECT_EQ(WheelAt(1, 1, 160, 160, {}, PickZone::None).zone, PickZone::None) << "the corner is neither";
    // A pick through the panel: the sv square's top left is white, its top right the pure hue.
    Form2::TabBox.ListIndex = 2;
    SetPrimaryColour(vb::RGB(0, 0, 255));
    Form2::Picture56_MouseDown(MouseButton::Left, ShiftState::None, 0, 0);
    EXPECT_EQ(Form2::Shape4.FillColor, 0xFFFFFFu);
    Form2::Picture56_MouseMove(MouseButton::Left, ShiftState::None, 1000, -5);  // dragging beyond the square keeps to its edge
    EXPECT_EQ(Form2::Shape4.FillColor, vb::RGB(0, 0, 255));
    EXPECT_EQ(Form2::hscroll3.Value, 255);
    Form2::HScroll1.Value = Form2::hscroll2.Value = Form2::hscroll3.Value = 0;
    EXPECT_NEAR(PickerHsv().h, 240, 0.5) << "black keeps the hue the pickers had";
    Form2::TabBox.ListIndex = 0;
    host.colours.push_back(vb::RGB(3, 4, 5));
    MDIForm1::WPickColor.press();
    EXPECT_EQ(Form2::hscroll2.Value, 4);
}

TEST_F(FillTest, StartupReadsTheDefaultFilesAndIsSilentWithoutThem) {
    fs::path dir = fs::temp_directory_path() / "kw-startup";
    fs::create_directories(dir);
    App.StartDirectory = dir.string();
    SetDefaultWells();
    StartupDefaultFiles();  // nothing there: the wells and ramps stay
    EXPECT_EQ(Form2::Well(3).Color, DefaultWellColour(3));
    EXPECT_EQ(Grad(255, 0, 0), 255);
    WriteAll((dir / "def_Well.wl").string(), " 77 \r\n");
    WriteAll((dir / "Def_Gradient.grd").string(), std::string(8192, '\x05'));
    StartupDefaultFiles();
    EXPECT_EQ(Form2::Well(0).Color, 77u);
    EXPECT_EQ(Grad(255, 0, 0), 5);
    EXPECT_EQ(Form2::Combo5.ListCount(), 1);
    fs::remove_all(dir);
    App.StartDirectory.clear();
    InitGradientData();
}
}  // namespace
