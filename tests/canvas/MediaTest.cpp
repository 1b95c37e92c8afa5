// The media presets as a table: each popup entry writes exactly its row into
// the controls, blanks keep the reset's values (and the paper its strength),
// an unknown name leaves the reset state; and the airbrush maker.
#include <algorithm>
#include <string>

#include "brush/BrushMask.h"
#include "brush/CustomBrush.h"
#include "brush/Media.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Commands.h"
#include "tests/canvas/CanvasFixture.h"

namespace {
class MediaTest : public CanvasTest {
protected:
    static const MenuRow* RowOf(const std::string& entry) {
        for (const MenuRow& r : Commands().rows().menus)
            if (r.entry->Name == entry) return &r;
        return nullptr;
    }
    // Everything a preset may write, as the controls hold it.
    static void ExpectControls(const MediaPreset& p, int paperBefore) {
        SCOPED_TRACE(p.name);
        EXPECT_EQ(Form2::HScroll5.Value, p.size);
        EXPECT_EQ(Form2::HScroll4.Value, p.opacity);
        EXPECT_EQ(Form2::slider1.Value, p.step);
        EXPECT_EQ(Form2::Check1.Value, p.bump ? 1 : 0);
        EXPECT_EQ(Form2::Check2.Value, p.dry ? 1 : 0);
        EXPECT_EQ(Form2::Check3.Value, p.neg ? 1 : 0);
        EXPECT_EQ(Form2::HScroll6.Value, p.paper == NoPaper ? paperBefore : p.paper);
        const bool aa[] = {BrushOptions::Option1.Value, BrushOptions::Option2.Value, BrushOptions::Option3.Value};
        EXPECT_TRUE(aa[p.aa]);
        EXPECT_EQ(std::count(aa, aa + 3, true), 1);
        for (int s = 0; s < BrushOptions::SettingCount; ++s)
            EXPECT_EQ(BrushOptions::Settings[s].slider->Value, p.options[s]) << BrushOptions::Settings[s].caption;
        const std::string other = p.other ? p.other : "";
        EXPECT_EQ(BrushOptions::Check1.Value, other == "x" ? 1 : 0);
        EXPECT_EQ(Form2::Combo4.Text(), other.empty() || other == "x" ? "Default" : other);
        EXPECT_EQ(Form2::Combo2.Text(), MediaStyles[p.style]);
        EXPECT_EQ(Form2::Combo1.Text(), p.name);
        EXPECT_EQ(App.CustomBrushOn, 0);
    }
};

TEST_F(MediaTest, EachEntryWritesExactlyItsRow) {
    int paper = 77;
    for (const MediaPreset& p : MediaPresets) {
        // Stray settings a preset must clear.
        Form2::HScroll6.Value = paper;
        BrushOptions::Hscroll1.Value = 9;
        BrushOptions::Check1.Value = 1;
        Form2::Check2.Value = 1;
        Form2::Combo4.ListIndex = 7;
        const MenuRow* row = RowOf(p.menu);
        ASSERT_NE(row, nullptr) << p.menu;
        row->command();
        ExpectControls(p, paper);
        paper = paper == 77 ? 33 : 77;
    }
    // The picture of the last row ("Bubbly 2", the bubbles) is the current brush.
    EXPECT_EQ(Form2::Combo1.Text(), "Bubbly 2");
}

TEST_F(MediaTest, AnUnknownNameLeavesTheResetAndDodgeIsGrey) {
    Form2::HScroll5.Value = 30;
    BrushOptions::Hscroll2.Value = 100;
    Form2::Check1.Value = 1;
    Form2::Combo4.ListIndex = 3;
    Form2::Combo1.AddItem("Nonsense");
    Form2::Combo1.ListIndex = Form2::Combo1.ListCount() - 1;  // its click runs the selection
    EXPECT_EQ(BrushOptions::Hscroll2.Value, 0);
    EXPECT_EQ(Form2::Check1.Value, 0);
    EXPECT_EQ(Form2::Combo4.Text(), "Default");
    EXPECT_EQ(Form2::HScroll5.Value, 30);  // the reset leaves the size
    EXPECT_TRUE(BrushOptions::Option1.Value);
    Key('.');  // the single pixel brush
    EXPECT_EQ(Form2::Combo1.Text(), "Single pixel");
    EXPECT_EQ(Form2::HScroll5.Value, 67);
    RowOf("FX_Dodge")->command();
    EXPECT_EQ(Form2::HScroll1.Value, 128);
    EXPECT_EQ(Form2::hscroll3.Value, 128);
    EXPECT_EQ(Form2::Combo4.Text(), "Additive");
    // Smudge and smear differ in opacity alone.
    RowOf("FX_Smudge")->command();
    EXPECT_EQ(Form2::HScroll4.Value, 84);
    EXPECT_EQ(Form2::Combo4.Text(), "Smear");
    RowOf("Fx_Smear")->command();
    EXPECT_EQ(Form2::HScroll4.Value, 255);
}

TEST_F(MediaTest, TheSamePresetTwiceStillRebuildsTheMask) {
    RowOf("Default_Med")->command();
    const uint8_t centre = MaskCell(BrushMask, 17, 17);
    MaskCell(BrushMask, 17, 17) = 200;
    RowOf("Default_Med")->command();
    EXPECT_EQ(MaskCell(BrushMask, 17, 17), centre);
}

TEST_F(MediaTest, TheListsAndThePopupHoldEveryPresetInItsGroup) {
    EXPECT_EQ(Form2::Combo2.ListCount(), MediaStyleCount);
    Form2::Combo2.ListIndex = 3;  // "Pencil"
    EXPECT_EQ(Form2::Combo1.items,
              (std::vector<std::string>{"Fine pencil", "Med. pencil", "Heavy pencil", "Lrg. charcoal", "Smudged charcoal"}));
    EXPECT_EQ(Form2::Combo1.ListIndex, 0);
    MenuEntry& media = MediaMenu();
    ASSERT_EQ(media.children.size(), size_t(MediaStyleCount + 3));
    size_t entries = 0;
    for (int g = 0; g < MediaStyleCount; ++g) {
        EXPECT_EQ(media.children[size_t(g)]->Caption.get(), MediaStyles[g]);
        entries += media.children[size_t(g)]->children.size();
    }
    EXPECT_EQ(entries, size_t(MediaPresetCount));
    EXPECT_EQ(media.children[size_t(MediaStyleCount) + 1]->Caption.get(), "Brush Settings...");
    EXPECT_EQ(media.children[size_t(MediaStyleCount) + 2]->Caption.get(), "Clear settings");
    EXPECT_EQ(media.children[6]->children[0]->Caption.get(), "Smudge");
}

TEST_F(MediaTest, TheAirbrushIsARoundMatteBrush) {
    host.Answer("Free custom brush?", 1);
    MDIForm1::Cust_Free_Click();
    Key('g');
    EXPECT_TRUE(Airbrush_Options::form.Visible);
    MakeAirbrush(10, 0);
    EXPECT_EQ(BrushWidth, 20);
    EXPECT_EQ(BrushA(10, 10), 255);
    EXPECT_EQ(BrushA(0, 0), 0);          // beyond the radius
    EXPECT_EQ(BrushA(15, 10), 128);      // halfway out: the straight fall-off
    EXPECT_EQ(BrushA(10, 15), BrushA(5, 10));
    EXPECT_EQ(BrushMatte, 1);
    EXPECT_EQ(Form2::slider1.Value, 2);  // a quarter of the radius, half to even
    EXPECT_EQ(App.CustomBrushOn, -1);
    MakeAirbrush(10, 60);
    EXPECT_GT(BrushA(15, 10), 128);  // a positive bias keeps more paint out to the rim
}
}  // namespace
