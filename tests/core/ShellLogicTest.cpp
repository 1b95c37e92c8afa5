// Settings, boxes, the progress bar, small panels and the keys of the canvas.
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"
#include "core/display/Form1.h"
#include "core/frame/Nav.h"
#include "core/frame/FatBits.h"
#include "core/frame/MemoryOptions.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/WindowMenu.h"
#include "core/frame/StartupSettings.h"
#include "core/framework/Settings.h"
#include "tests/core/CoreFixture.h"

#include <QSettings>
#include <QVariantMap>

namespace {
// The store the program's settings live in (see core/framework/Settings.cpp).
QSettings StoreOfTheProgram() { return QSettings(QSettings::NativeFormat, QSettings::UserScope, "kelpwick", "kelpwick"); }
}  // namespace

// Each test gets the settings store as the one before it found it: whatever a
// test saves is taken out again, so no test sees another's settings.
class ShellLogicTest : public CoreTest {
protected:
    void SetUp() override {
        CoreTest::SetUp();
        QSettings store = StoreOfTheProgram();
        for (const QString& key : store.allKeys()) saved.insert(key, store.value(key));
    }
    void TearDown() override {
        QSettings store = StoreOfTheProgram();
        store.clear();
        for (auto it = saved.cbegin(); it != saved.cend(); ++it) store.setValue(it.key(), it.value());
        store.sync();
    }
    QVariantMap saved;
};

TEST_F(ShellLogicTest, EmptyStoreGivesDefaultsAndSavedValuesComeBack) {
    const uint32_t back = MDIForm1::BackColor;
    ReadStartupSettings();
    EXPECT_EQ(App.UndoMegs, 14);
    EXPECT_TRUE(MDIForm1::rDefault.Checked);
    EXPECT_FALSE(MDIForm1::rBitmap.Checked);

    MDIForm1::rBitmap.press();  // one refresh method at a time
    EXPECT_FALSE(MDIForm1::rDefault.Checked);
    MDIForm1::prefs_Disp_15bit.Checked = true;
    MDIForm1::BackColor = 1234567;
    host.ExpectMessage("Settings saved.");
    Prefs_Save_Click();
    EXPECT_EQ(GetSetting("Back_Color", ""), "1234567");
    EXPECT_EQ(GetSetting("rBitmap", ""), "True");

    MDIForm1::rBitmap.Checked = false;
    MDIForm1::rDefault.Checked = true;
    MDIForm1::prefs_Disp_15bit.Checked = false;
    MDIForm1::BackColor = 0;
    ReadStartupSettings();
    EXPECT_TRUE(MDIForm1::rBitmap.Checked);
    EXPECT_FALSE(MDIForm1::rDefault.Checked);
    EXPECT_TRUE(MDIForm1::prefs_Disp_15bit.Checked);
    EXPECT_EQ(MDIForm1::BackColor.get(), 1234567u);
    MDIForm1::rDefault.press();
    MDIForm1::prefs_Disp_15bit.Checked = false;
    MDIForm1::BackColor = back;
}

TEST_F(ShellLogicTest, MemoryOptionsStoreTheBudgetAndBadValuesFallBack) {
    Memorystuff_Click();
    EXPECT_EQ(MemoryOptions::HScroll1.Value.get(), 14);
    MemoryOptions::HScroll1.Value = 1;
    EXPECT_EQ(MemoryOptions::Label4.Caption.get(), "meg");
    MemoryOptions::HScroll1.Value = 64;
    EXPECT_EQ(MemoryOptions::Label4.Caption.get(), "megs");
    host.ExpectMessage("Settings saved.");
    MemoryOptions::Command1.press();
    EXPECT_EQ(App.UndoMegs, 64);
    App.UndoMegs = 14;
    ReadStartupSettings();
    EXPECT_EQ(App.UndoMegs, 64);

    Memorystuff_Click();
    MemoryOptions::HScroll1.Value = 300;
    MemoryOptions::Command2.press();
    EXPECT_EQ(MemoryOptions::HScroll1.Value.get(), 64);
    EXPECT_EQ(App.UndoMegs, 64);

    for (const char* bad : {"lots", "99999", "-3", "12.5", ""}) {
        SaveSetting("mem_MaxUndo", bad);
        host.ExpectMessage("The default of 14 is used.");
        ReadStartupSettings();
        EXPECT_EQ(App.UndoMegs, 14) << bad;
    }
}

TEST_F(ShellLogicTest, BoxesReturnTheirAnswers) {
    host.Expect("GenericOptions", [] {
        EXPECT_EQ(GenericOptions::HScroll1.Max.get(), 50);
        GenericOptions::HScroll1.Value = 33;
        GenericOptions::Command1.press();
    });
    EXPECT_EQ(GetGenericValue("Amount", 0, 50, 10), 33);
    host.Press("GenericOptions", "Command2");
    EXPECT_EQ(GetGenericValue("Amount", 0, 50, 10), -1);
    EXPECT_EQ(DialogResult, -1);

    host.Answer("Do you want to quit", 1);
    EXPECT_TRUE(MDIForm1::MDIForm_QueryUnload());
    host.Answer("Do you want to quit", 2);
    EXPECT_FALSE(MDIForm1::MDIForm_QueryUnload());
    EXPECT_EQ(host.questions.back(), "Do you want to quit");
}

TEST_F(ShellLogicTest, BarDrawsForwardAndRestartsWhenItGoesBack) {
    using Status::Picture1;
    ShowStatus("Processing...");
    Bar(60);
    int w = Picture1.Width;
    int end60 = w * 60 / 100;
    EXPECT_EQ(Picture1.pixels[static_cast<size_t>(end60 - 1)], BarColumnColour(end60 - 1));
    EXPECT_EQ(Picture1.pixels[static_cast<size_t>(end60 + 2)], 0xFFFFFFu);
    Bar(50);
    int end50 = w * 50 / 100;
    EXPECT_EQ(Picture1.pixels[static_cast<size_t>(end50 + 2)], 0xFFFFFFu);  // cleared and redrawn to 50
    EXPECT_EQ(Status::Picture2.Text.get(), "50%");
    EXPECT_EQ(BarPosition, 50);
    // the shimmer: blue, brightest where sin peaks
    EXPECT_EQ(BarColumnColour(0), vb::RGB(18, 63, 180));
    HideStatus();
}

TEST_F(ShellLogicTest, KeysReachTheirCommandsFromAnyPanel) {
    MakeTestDocument(8, 8);
    Stamp(10);
    SwapR(0, 0) = 99;
    int16_t k = 'j';
    Form1::Form_KeyPress(k);
    EXPECT_EQ(BufR(0, 0), 99);
    k = 'u';
    Form1::Form_KeyPress(k);
    EXPECT_EQ(BufR(0, 0), 10);
    k = 1;  // ctrl a
    Form1::Form_KeyPress(k);
    EXPECT_EQ(BufR(0, 0), 99);
    k = 26;  // ctrl z
    Form1::Form_KeyPress(k);
    EXPECT_EQ(BufR(0, 0), 10);
    k = '|';
    Form1::Form_KeyPress(k);
    EXPECT_EQ(BufA(1, 1), 0);
    k = '\\';
    Form1::Form_KeyPress(k);
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked);
}

TEST_F(ShellLogicTest, HelpWindowsAndUnlock) {
    host.documentOpens = false;
    host.ExpectMessage("Can't locate the default browser.");
    Help_Kelhelp_Click();
    // The message names the page with its whole path.
    const std::string said = host.messages.back(), path = said.substr(said.rfind('\n') + 1);
    EXPECT_EQ(path.front(), '/');
    EXPECT_EQ(path.substr(path.size() - 13), "/Kelhelp.html");
    host.documentOpens = true;
    Help_Kelhelp_Click();
    EXPECT_NE(host.documentsOpened.back().find("Kelhelp.html"), std::string::npos);

    about_Click();
    EXPECT_TRUE(Form3::form.Visible);
    Form3::form.Deactivate();
    EXPECT_FALSE(Form3::form.Visible);

    // "Unlock" toggles: any lock count goes to 0, and 0 goes to -1 and back.
    App.LockCount = 2;
    UnlockInput_Click();
    EXPECT_EQ(App.LockCount, 0);
    UnlockInput_Click();
    EXPECT_EQ(App.LockCount, -1);
    UnlockInput_Click();
    EXPECT_EQ(App.LockCount, 0);

    bool was = MDIForm1::Window_Info.Checked;
    Window_Info_Click();
    EXPECT_EQ(Form2::Info1.Visible.get(), !was);
    Window_Info_Click();
}

TEST_F(ShellLogicTest, FatBitsSaysItIsUnfinished) {
    host.ExpectMessage("The fatbits pannel is a work in progress.");
    Magnifier_Click();
    EXPECT_TRUE(FatBits::form.Visible);
    Unload(FatBits::form);  // the next test that opens it sees the message again
}
