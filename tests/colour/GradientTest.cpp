// The gradient store: its file, "Apply" at its ends, the sweep, reverse and
// smoothing, and the panel's colour map back door.
#include <gtest/gtest.h>

#include <cstring>
#include <iterator>

#include "colour/Gradient.h"
#include "colour/Gradients.h"
#include "core/framework/AppState.h"
#include "core/framework/Codes.h"
#include "tests/colour/ColourFixture.h"

namespace {
using namespace colourtest;

uint32_t StepColour(int step, int g) { return vb::RGB(Grad(step, 0, g), Grad(step, 1, g), Grad(step, 2, g)); }

// Gradient g with entries only at the given steps.
void Entries(int g, std::initializer_list<std::pair<int, uint32_t>> entries) {
    std::fill(std::begin(GradEntries[g]), std::end(GradEntries[g]), -1);
    for (const auto& [step, colour] : entries) GradEntries[g][step] = static_cast<int32_t>(colour);
}

class GradientTest : public ::testing::Test {
protected:
    void SetUp() override { InitGradientData(); }
    ScriptedHost host;
};

TEST_F(GradientTest, FileHoldsAllEightInMemoryOrderAndAShortOneGivesZeros) {
    for (int g = 0; g < 8; ++g)
        for (int c = 0; c < 4; ++c)
            for (int s = 0; s < 256; ++s) Grad(s, c, g) = static_cast<uint8_t>(g * 31 + c * 7 + s);
    App.GradientIndex = 3;  // the selected gradient does not narrow the file
    const std::string path = TempFile("kw-gradients.grd");
    ASSERT_TRUE(WriteGradientFile(path));
    const std::string bytes = ReadAll(path);
    ASSERT_EQ(bytes.size(), 8192u);
    EXPECT_EQ(uint8_t(bytes[5 * 1024 + 2 * 256 + 17]), Grad(17, 2, 5));
    EXPECT_EQ(uint8_t(bytes[8191]), Grad(255, 3, 7));
    InitGradientData();
    ASSERT_TRUE(ReadGradientFile(path));
    EXPECT_EQ(std::memcmp(GradientData, bytes.data(), 8192), 0) << "loading replaces all eight";

    WriteAll(path, std::string(1000, '\x7f'));
    ASSERT_TRUE(ReadGradientFile(path));
    EXPECT_EQ(Grad(999 % 256, 999 / 256, 0), 0x7f);
    EXPECT_EQ(Grad(1000 % 256, 1000 / 256, 0), 0);
    EXPECT_EQ(Grad(255, 3, 7), 0);
    fs::remove(path);

    const std::string before(reinterpret_cast<const char*>(GradientData), 8192);
    EXPECT_FALSE(ReadGradientFile(TempFile("kw-no-such-file.grd")));
    EXPECT_EQ(std::memcmp(GradientData, before.data(), 8192), 0) << "a missing file changes nothing";
}

TEST_F(GradientTest, ApplyMeetsItsEntriesAndLeavesWhatLiesBeyondTheLast) {
    Entries(2, {{40, vb::RGB(200, 100, 40)}});
    const uint32_t above = StepColour(41, 2);
    ApplyLinear(2);
    EXPECT_EQ(StepColour(0, 2), 0u) << "linear from one entry ramps from black";
    EXPECT_EQ(StepColour(20, 2), vb::RGB(100, 50, 20));
    EXPECT_EQ(StepColour(40, 2), vb::RGB(200, 100, 40));
    EXPECT_EQ(StepColour(41, 2), above) << "steps above the last entry stay";

    Entries(1, {{100, vb::RGB(9, 99, 199)}});
    const uint32_t above1 = StepColour(101, 1);
    ApplyCubic(1);
    for (int s : {0, 50, 100}) EXPECT_EQ(StepColour(s, 1), vb::RGB(9, 99, 199)) << "cubic from one entry is flat";
    EXPECT_EQ(StepColour(101, 1), above1);

    for (void (*apply)(int) : {ApplyLinear, ApplyCubic}) {
        Entries(4, {{0, vb::RGB(12, 250, 3)}, {128, vb::RGB(255, 0, 255)}, {255, vb::RGB(77, 8, 190)}});
        apply(4);
        EXPECT_EQ(StepColour(0, 4), vb::RGB(12, 250, 3));
        EXPECT_EQ(StepColour(128, 4), vb::RGB(255, 0, 255));
        EXPECT_EQ(StepColour(255, 4), vb::RGB(77, 8, 190));
    }

    // Black, white, black, white: the curve overshoots between the knots and is held to 0..255.
    Entries(1, {{0, 0}, {85, 0xFFFFFF}, {170, 0}, {255, 0xFFFFFF}});
    ApplyCubic(1);
    const uint8_t* red = GradientData[1][0];
    EXPECT_EQ(*std::min_element(red, red + 256), 0);
    EXPECT_EQ(*std::max_element(red, red + 256), 255);
    EXPECT_EQ(Grad(85, 0, 1), 255);
    EXPECT_EQ(Grad(170, 0, 1), 0);
}

TEST_F(GradientTest, SweepReverseAndSmooth) {
    SweepGradient(6, ChanRed | ChanOpacity, 10, 0, 20, 100);
    EXPECT_EQ(Grad(10, 0, 6), 0);
    EXPECT_EQ(Grad(15, 0, 6), 50);
    EXPECT_EQ(Grad(20, 0, 6), 100);
    EXPECT_EQ(Grad(15, 3, 6), 50);
    EXPECT_NE(Grad(15, 1, 6), 50) << "green was not swept";
    SweepGradient(6, ChanRGB, 300, 999, -5, -9);  // clamped both ways
    EXPECT_EQ(Grad(255, 2, 6), 255);
    EXPECT_EQ(Grad(0, 2, 6), 0);

    const uint8_t first = Grad(0, 1, 0), last = Grad(255, 1, 0);
    ReverseGradient(0);
    EXPECT_EQ(Grad(0, 1, 0), last);
    EXPECT_EQ(Grad(255, 1, 0), first);

    for (int s = 0; s < 256; ++s) Grad(s, 0, 3) = s == 128 ? 200 : 0;
    SmoothGradient(3, ChanRed);
    EXPECT_EQ(Grad(128, 0, 3), 100);
    EXPECT_EQ(Grad(127, 0, 3), 50);
    EXPECT_EQ(Grad(126, 0, 3), 0);
}

TEST_F(GradientTest, PanelSweepsWithTheMouseAndSelectsTheRow) {
    Gradient::HScroll1.Value = 5;
    EXPECT_EQ(App.GradientIndex, 5);
    EXPECT_EQ(GradEntryRow, 5);
    Gradient::TabBox.ListIndex = 1;  // green only
    const float w = Gradient::Picture2.Width - 1, h = Gradient::Picture2.Height - 1;
    Gradient::Picture2_MouseDown(MouseButton::Left, ShiftState::None, 0, h);
    Gradient::Picture2_MouseMove(MouseButton::Left, ShiftState::None, w, 0);
    Gradient::Picture2_MouseUp(MouseButton::Left, ShiftState::None, w, 0);
    EXPECT_EQ(Grad(0, 1, 5), 0);
    EXPECT_EQ(Grad(255, 1, 5), 255);
    EXPECT_EQ(Grad(128, 1, 5), 128);
    Gradient::Picture3_DragDrop(static_cast<float>(Gradient::Picture3.Width - 1), 0x123456);
    EXPECT_EQ(GradEntries[5][255], 0x123456);
    Gradient::HScroll1.Value = 0;
}

// Settings and files keep the numbers, so each button and list entry must give its own.
TEST_F(GradientTest, TheFillStylesAndModesAreStoredUnderTheirNumbers) {
    using namespace Gradient;
    OptionButton* const styles[] = {&Option5, &Option6, &Option7, &Option8, &Option9, &Option10, &Option11};
    for (int i = 6; i >= 0; --i) {  // from the end: the first is chosen at the start
        styles[i]->Value = true;
        EXPECT_EQ(static_cast<int>(App.FillStyle), i) << styles[i]->Name;
    }
    const int stored[] = {0, 1, 2, 3, 5, 6, 7, 4};  // in the order of the list; alpha last
    ASSERT_EQ(Combo3.items.size(), std::size(stored));
    for (int i = 7; i >= 0; --i) {
        Combo3.ListIndex = i;
        EXPECT_EQ(static_cast<int>(App.FillMode), stored[i]) << Combo3.Text();
    }
}

TEST_F(GradientTest, ColourMapBackDoorWritesTheSelectedGradientToTheHomeFolder) {
    App.GradientIndex = 7;
    host.Answer("This is a hack.  Would you like to save the colormap?", 1);
    host.ExpectMessage("Colormap saved as '" + ColourMapPath() + "'");
    Gradient::Form_DblClick();
    const std::string bytes = ReadAll(ColourMapPath());
    ASSERT_EQ(bytes.size(), 768u);
    EXPECT_EQ(std::memcmp(bytes.data(), GradientData[7], 768), 0);
    EXPECT_EQ(ColourMapPath().rfind(getenv("HOME"), 0), 0u);
    fs::remove(ColourMapPath());
    host.Answer("This is a hack.", 2);
    Gradient::Form_DblClick();
    EXPECT_FALSE(fs::exists(ColourMapPath()));
    App.GradientIndex = 0;
}
}  // namespace
