// The gradient store: its file, "Apply" at its ends, the sweep, reverse and
// smoothing, and the panel's colour map back door.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include "colour/Gradient.h"
#include "colour/Gradients.h"
#include "core/AppState.h"
#include "core/vb.h"
#include "tests/support/ScriptedHost.h"

namespace {
namespace fs = std::filesystem;

std::string TempFile(const std::string& name) { return (fs::temp_directory_path() / name).string(); }

std::vector<uint8_t> ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void ClearEntries(int g) { std::fill(std::begin(GradEntries[g]), std::end(GradEntries[g]), -1); }

class GradientTest : public ::testing::Test {
protected:
    void SetUp() override { InitGradientData(); }
    ScriptedHost host;
};

TEST_F(GradientTest, FileHoldsAllEightGradientsInMemoryOrder) {
    for (int g = 0; g < 8; ++g)
        for (int c = 0; c < 4; ++c)
            for (int s = 0; s < 256; ++s) Grad(s, c, g) = static_cast<uint8_t>(g * 31 + c * 7 + s);
    App.GradientIndex = 3;  // the selected gradient does not narrow the file
    std::string path = TempFile("kw-gradients.grd");
    ASSERT_TRUE(WriteGradientFile(path));
    std::vector<uint8_t> bytes = ReadAll(path);
    ASSERT_EQ(bytes.size(), 8192u);
    EXPECT_EQ(bytes[5 * 1024 + 2 * 256 + 17], Grad(17, 2, 5));
    EXPECT_EQ(bytes[0], Grad(0, 0, 0));
    EXPECT_EQ(bytes[8191], Grad(255, 3, 7));

    std::vector<uint8_t> before(bytes);
    InitGradientData();
    ASSERT_TRUE(ReadGradientFile(path));
    EXPECT_EQ(std::memcmp(GradientData, before.data(), 8192), 0) << "loading replaces all eight";
    fs::remove(path);
}

TEST_F(GradientTest, ShortFileGivesZerosAndAMissingOneChangesNothing) {
    std::string path = TempFile("kw-short.grd");
    {
        std::ofstream out(path, std::ios::binary);
        out << std::string(1000, '\x7f');
    }
    ASSERT_TRUE(ReadGradientFile(path));
    EXPECT_EQ(Grad(999 % 256, 999 / 256, 0), 0x7f);
    EXPECT_EQ(Grad(1000 % 256, 1000 / 256, 0), 0);
    EXPECT_EQ(Grad(255, 3, 7), 0);
    fs::remove(path);

    InitGradientData();
    uint8_t copy[8192];
    std::memcpy(copy, GradientData, sizeof copy);
    EXPECT_FALSE(ReadGradientFile(TempFile("kw-no-such-file.grd")));
    EXPECT_EQ(std::memcmp(copy, GradientData, sizeof copy), 0);
}

TEST_F(GradientTest, LinearFromAnEntryAt40RampsFromBlack) {
    const int g = 2;
    ClearEntries(g);
    GradEntries[g][40] = static_cast<int32_t>(vb::RGB(200, 100, 40));
    uint8_t above = Grad(41, 0, g);
    ApplyLinear(g);
    EXPECT_EQ(Grad(0, 0, g), 0);
    EXPECT_EQ(Grad(20, 0, g), 100);
    EXPECT_EQ(Grad(20, 1, g), 50);
    EXPECT_EQ(Grad(40, 0, g), 200);
    EXPECT_EQ(Grad(40, 2, g), 40);
    EXPECT_EQ(Grad(41, 0, g), above) << "steps above the last entry stay";
}

TEST_F(GradientTest, EntriesAtBothEndsGiveTheirColoursExactly) {
    const int g = 4;
    for (void (*apply)(int) : {ApplyLinear, ApplyCubic}) {
        InitGradientData();  // no entries
        GradEntries[g][0] = static_cast<int32_t>(vb::RGB(12, 250, 3));
        GradEntries[g][128] = static_cast<int32_t>(vb::RGB(255, 0, 255));
        GradEntries[g][255] = static_cast<int32_t>(vb::RGB(77, 8, 190));
        apply(g);
        EXPECT_EQ(vb::RGB(Grad(0, 0, g), Grad(0, 1, g), Grad(0, 2, g)), vb::RGB(12, 250, 3));
        EXPECT_EQ(vb::RGB(Grad(255, 0, g), Grad(255, 1, g), Grad(255, 2, g)), vb::RGB(77, 8, 190));
        EXPECT_EQ(Grad(128, 0, g), 255);
        EXPECT_EQ(Grad(128, 1, g), 0);
    }
}

TEST_F(GradientTest, CubicWithOneEntryStopsAtItAndClampsOvershoot) {
    const int g = 1;
    ClearEntries(g);
    GradEntries[g][100] = static_cast<int32_t>(vb::RGB(9, 99, 199));
    uint8_t above = Grad(101, 1, g);
    ApplyCubic(g);
    for (int s : {0, 50, 100}) EXPECT_EQ(vb::RGB(Grad(s, 0, g), Grad(s, 1, g), Grad(s, 2, g)), vb::RGB(9, 99, 199));
    EXPECT_EQ(Grad(101, 1, g), above);

    // Black, white, black, white: the curve overshoots between the knots and is held to 0..255.
    ClearEntries(g);
    for (int p : {0, 85, 170, 255}) GradEntries[g][p] = (p / 85) % 2 ? 0xFFFFFF : 0;
    ApplyCubic(g);
    int lowest = 255, highest = 0;
    for (int s = 0; s < 256; ++s) lowest = std::min<int>(lowest, Grad(s, 0, g)), highest = std::max<int>(highest, Grad(s, 0, g));
    EXPECT_EQ(lowest, 0);
    EXPECT_EQ(highest, 255);
    EXPECT_EQ(Grad(85, 0, g), 255);
    EXPECT_EQ(Grad(170, 0, g), 0);
}

TEST_F(GradientTest, SweepReverseAndSmooth) {
    const int g = 6;
    SweepGradient(g, ChanRed | ChanOpacity, 10, 0, 20, 100);
    EXPECT_EQ(Grad(10, 0, g), 0);
    EXPECT_EQ(Grad(15, 0, g), 50);
    EXPECT_EQ(Grad(20, 0, g), 100);
    EXPECT_EQ(Grad(15, 3, g), 50);
    EXPECT_NE(Grad(15, 1, g), 50) << "green was not swept";
    SweepGradient(g, ChanRGB, 300, 999, -5, -9);  // clamped both ways
    EXPECT_EQ(Grad(255, 2, g), 255);
    EXPECT_EQ(Grad(0, 2, g), 0);

    InitGradientData();
    uint8_t first = Grad(0, 1, 0), last = Grad(255, 1, 0);
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
    const int w = Gradient::Picture2.Width, h = Gradient::Picture2.Height;
    Gradient::Picture2_MouseDown(1, 0, 0, static_cast<float>(h - 1));
    Gradient::Picture2_MouseMove(1, 0, static_cast<float>(w - 1), 0);
    Gradient::Picture2_MouseUp(1, 0, static_cast<float>(w - 1), 0);
    EXPECT_EQ(Grad(0, 1, 5), 0);
    EXPECT_EQ(Grad(255, 1, 5), 255);
    EXPECT_EQ(Grad(128, 1, 5), 128);
    Gradient::Picture3_DragDrop(static_cast<float>(Gradient::Picture3.Width - 1), 0x123456);
    EXPECT_EQ(GradEntries[5][255], 0x123456);
    Gradient::HScroll1.Value = 0;
}

TEST_F(GradientTest, ColourMapBackDoorWritesTheSelectedGradientToTheHomeFolder) {
    App.GradientIndex = 7;
    host.Answer("This is a hack.  Would you like to save the colormap?", 1);
    host.ExpectMessage("Colormap saved as '" + ColourMapPath() + "'");
    Gradient::Form_DblClick();
    std::vector<uint8_t> bytes = ReadAll(ColourMapPath());
    ASSERT_EQ(bytes.size(), 768u);
    EXPECT_EQ(std::memcmp(bytes.data(), GradientData[7], 768), 0);
    EXPECT_TRUE(ColourMapPath().rfind(getenv("HOME"), 0) == 0);
    fs::remove(ColourMapPath());
    host.Answer("This is a hack.", 2);
    Gradient::Form_DblClick();
    EXPECT_FALSE(fs::exists(ColourMapPath()));
    App.GradientIndex = 0;
}
}  // namespace
