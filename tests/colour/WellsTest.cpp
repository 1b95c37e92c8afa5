// The wells: their order, the .wl file both ways, short and missing files, and picking.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "colour/Wells.h"
#include "core/AppState.h"
#include "core/Form2.h"
#include "core/vb.h"
#include "tests/support/ScriptedHost.h"

namespace {
namespace fs = std::filesystem;
std::string TempFile(const std::string& name) { return (fs::temp_directory_path() / name).string(); }

std::string ReadText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

class WellsTest : public ::testing::Test {
protected:
    void SetUp() override { SetDefaultWells(); }
    ScriptedHost host;
};

TEST_F(WellsTest, FileFollowsTheFixedOrderOfTheButtons) {
    // The order reads as eight rows of eight, starting and ending as the panel does.
    EXPECT_STREQ(Form2::WellNames[0], "Command11");
    EXPECT_STREQ(Form2::WellNames[8], "Command16");
    EXPECT_STREQ(Form2::WellNames[40], "Command68");
    EXPECT_STREQ(Form2::WellNames[63], "Command71");
    for (int i = 0; i < Form2::WellCount; ++i) {
        EXPECT_EQ(Form2::Well(i).Name, Form2::WellNames[i]);
        EXPECT_EQ(Form2::form.find(Form2::WellNames[i]), &Form2::Well(i));
        Form2::Well(i).Color = static_cast<uint32_t>(i * 1000 + 7);
    }
    std::string path = TempFile("kw-order.wl");
    SaveWell(path);
    std::string text = ReadText(path);
    // Line k is well k: " 7 ", " 1007 ", ... each ending in CR LF.
    std::istringstream lines(text);
    std::string line;
    int k = 0;
    while (std::getline(lines, line)) {
        ASSERT_LT(k, 64);
        EXPECT_EQ(line, " " + std::to_string(k * 1000 + 7) + " \r");
        ++k;
    }
    EXPECT_EQ(k, 64);
    fs::remove(path);
}

TEST_F(WellsTest, SaveThenLoadReturnsEveryColourToItsPlace) {
    for (int i = 0; i < Form2::WellCount; ++i) Form2::Well(i).Color = vb::RGB(i * 4, 255 - i, (i * 37) & 255);
    std::vector<uint32_t> saved;
    for (int i = 0; i < Form2::WellCount; ++i) saved.push_back(Form2::Well(i).Color);
    std::string path = TempFile("kw-round.wl");
    SaveWell(path);
    SetDefaultWells();
    Loadwell(path);
    for (int i = 0; i < Form2::WellCount; ++i) EXPECT_EQ(Form2::Well(i).Color, saved[static_cast<size_t>(i)]) << i;
    fs::remove(path);
}

TEST_F(WellsTest, ShortOddOrMissingFilesChangeOnlyWhatTheyHold) {
    std::string path = TempFile("kw-short.wl");
    {
        std::ofstream out(path, std::ios::binary);
        // Ten numbers, with blanks and line ends of both kinds.
        out << " 1 \r\n2\n  3   \r\n 4 \r\n5 6\r\n 7 \r\n 8 \r\n 9 \r\n 10 \r\n";
    }
    Loadwell(path);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(Form2::Well(i).Color, static_cast<uint32_t>(i + 1));
    for (int i = 10; i < Form2::WellCount; ++i) EXPECT_EQ(Form2::Well(i).Color, DefaultWellColour(i));

    {
        std::ofstream out(path, std::ios::binary);
        out << " 255 \r\n junk \r\n 99 \r\n";
    }
    SetDefaultWells();
    Loadwell(path);
    EXPECT_EQ(Form2::Well(0).Color, 255u);
    EXPECT_EQ(Form2::Well(1).Color, DefaultWellColour(1)) << "the read stops at what is not a number";
    EXPECT_EQ(Form2::Well(2).Color, DefaultWellColour(2));
    fs::remove(path);

    Loadwell(TempFile("kw-no-such.wl"));  // silent
    EXPECT_EQ(Form2::Well(0).Color, 255u);
}

TEST_F(WellsTest, LeftPicksThePrimaryThroughTheSlidersRightTheSecondary) {
    Form2::Well(9).Color = vb::RGB(10, 20, 30);
    pickfromWell(9);
    EXPECT_EQ(Form2::HScroll1.Value, 10);
    EXPECT_EQ(Form2::hscroll2.Value, 20);
    EXPECT_EQ(Form2::hscroll3.Value, 30);
    EXPECT_EQ(Form2::Shape4.FillColor, vb::RGB(10, 20, 30));
    Form2::Well(63).Color = vb::RGB(1, 2, 3);
    WellPickFlag = 9;
    pickfromWell2(63);
    EXPECT_EQ(Form2::Shape1.FillColor, vb::RGB(1, 2, 3));
    EXPECT_EQ(WellPickFlag, 0);
    WellDragDrop(5, 0xFF123456);
    EXPECT_EQ(Form2::Well(5).Color, 0x123456u);
    EXPECT_FALSE(DragWell(3, 3, 24, 18));
    EXPECT_TRUE(DragWell(25, 3, 24, 18));
    EXPECT_TRUE(DragWell(3, -1, 24, 18));
    Form2::Shape1.FillColor = 0xFFFFFF;
}

TEST_F(WellsTest, MenuCommandsGoThroughTheDialogs) {
    App.StartDirectory = fs::temp_directory_path().string();
    std::string path = TempFile("kw-menu.wl");
    Form2::Well(0).Color = 4242;
    host.saveFiles.push_back(path);
    SaveWells_Click();
    ASSERT_TRUE(fs::exists(path));
    EXPECT_NE(std::find(Form2::Combo5.items.begin(), Form2::Combo5.items.end(), "kw-menu.wl"), Form2::Combo5.items.end());
    Form2::Well(0).Color = 0;
    host.openFiles.push_back(path);
    Loadwells_Click();
    EXPECT_EQ(Form2::Well(0).Color, 4242u);
    Form2::Well(0).Color = 0;
    Form2::Combo5.ListIndex = static_cast<int>(
        std::find(Form2::Combo5.items.begin(), Form2::Combo5.items.end(), "kw-menu.wl") - Form2::Combo5.items.begin());
    EXPECT_EQ(Form2::Well(0).Color, 4242u);
    fs::remove(path);
    App.StartDirectory.clear();
}
}  // namespace
