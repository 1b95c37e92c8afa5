// The wells: their order, the .wl file both ways, short and missing files, and picking.
#include <gtest/gtest.h>

#include "colour/Wells.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "tests/colour/ColourFixture.h"

namespace {
using namespace colourtest;

class WellsTest : public ::testing::Test {
protected:
    void SetUp() override { SetDefaultWells(); }
    ScriptedHost host;
};

TEST_F(WellsTest, FileFollowsTheFixedOrderOfTheButtonsAndReadsBack) {
    // The order reads as eight rows of eight, starting and ending as the panel does.
    EXPECT_STREQ(Form2::WellNames[0], "Command11");
    EXPECT_STREQ(Form2::WellNames[8], "Command16");
    EXPECT_STREQ(Form2::WellNames[40], "Command68");
    EXPECT_STREQ(Form2::WellNames[63], "Command71");
    std::string want;  // line k is well k: " 7 ", " 1007 ", ... each ending in CR LF
    for (int i = 0; i < Form2::WellCount; ++i) {
        EXPECT_EQ(Form2::Well(i).Name, Form2::WellNames[i]);
        EXPECT_EQ(Form2::form.find(Form2::WellNames[i]), &Form2::Well(i));
        Form2::Well(i).Color = static_cast<uint32_t>(i * 1000 + 7);
        want += " " + std::to_string(i * 1000 + 7) + " \r\n";
    }
    const std::string path = TempFile("kw-order.wl");
    SaveWell(path);
    EXPECT_EQ(ReadAll(path), want);
    SetDefaultWells();
    Loadwell(path);
    for (int i = 0; i < Form2::WellCount; ++i) EXPECT_EQ(Form2::Well(i).Color, static_cast<uint32_t>(i * 1000 + 7)) << i;
    fs::remove(path);
}

TEST_F(WellsTest, ShortOddOrMissingFilesChangeOnlyWhatTheyHold) {
    const std::string path = TempFile("kw-short.wl");
    // Ten numbers, with blanks and line ends of both kinds.
    WriteAll(path, " 1 \r\n2\n  3   \r\n 4 \r\n5 6\r\n 7 \r\n 8 \r\n 9 \r\n 10 \r\n");
    Loadwell(path);
    for (int i = 0; i < Form2::WellCount; ++i)
        EXPECT_EQ(Form2::Well(i).Color, i < 10 ? static_cast<uint32_t>(i + 1) : DefaultWellColour(i)) << i;
    WriteAll(path, " 255 \r\n junk \r\n 99 \r\n");
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
    EXPECT_EQ(vb::RGB(Form2::HScroll1.Value, Form2::hscroll2.Value, Form2::hscroll3.Value), vb::RGB(10, 20, 30));
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
    const std::string path = TempFile("kw-menu.wl");
    Form2::Well(0).Color = 4242;
    host.saveFiles.push_back(path);
    SaveWells_Click();
    const auto& items = Form2::Combo5.items;
    ASSERT_NE(std::find(items.begin(), items.end(), "kw-menu.wl"), items.end()) << "the saved file joins the list";
    Form2::Well(0).Color = 0;
    host.openFiles.push_back(path);
    Loadwells_Click();
    EXPECT_EQ(Form2::Well(0).Color, 4242u);
    Form2::Well(0).Color = 0;
    Form2::Combo5.ListIndex = static_cast<int>(std::find(items.begin(), items.end(), "kw-menu.wl") - items.begin());
    EXPECT_EQ(Form2::Well(0).Color, 4242u) << "picking it in the list loads it";
    // The list read again (the box takes the focus, a file is saved): the name stays shown, unread.
    Form2::Well(0).Color = 7;
    Form2::Combo5_GotFocus();
    EXPECT_EQ(Form2::Combo5.Text(), "kw-menu.wl");
    EXPECT_EQ(Form2::Well(0).Color, 7u);
    fs::remove(path);
    App.StartDirectory.clear();
}
}  // namespace
