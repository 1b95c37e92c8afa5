// The plug-in panel: a folder of programs listed by family, running the
// selection with its undo step, the progress strip, and the fixed commands.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "plugin/PluginOptions.h"
#include "tests/support/ScriptedHost.h"

namespace fs = std::filesystem;
using namespace Plugin_Options;

namespace {
class PluginPanel : public ::testing::Test {
protected:
    void SetUp() override {
        MakeTestDocument(16, 12);
        folder = fs::temp_directory_path() / ("kw-plugins-" + std::to_string(getpid()));
        fs::create_directories(folder);
        for (const char* name : {"Blur_pf", "Edge_pf", "Load_pi", "Save_px", "Stamp_pb", "Tool_pm", "notes.txt",
                                 "Sharpen_pf.exe", "pf_not"})
            std::ofstream(folder / name) << "x";
        fs::create_directory(folder / "Folder_pf");  // a folder is no program
        savedStart = App.StartDirectory;
        App.StartDirectory = folder.string();
    }
    void TearDown() override {
        Command2_Click();
        App.StartDirectory = savedStart;
        std::error_code ec;
        fs::remove_all(folder, ec);
    }
    // A program that leaves a mark beside itself when it runs.
    void WriteMarkingProgram(const std::string& name) {
        std::ofstream(folder / name) << "#!/bin/sh\ntouch \"" << (folder / (name + ".ran")).string() << "\"\n";
        fs::permissions(folder / name, fs::perms::owner_all);
    }
    bool Ran(const std::string& name) {
        for (int i = 0; i < 400 && !fs::exists(folder / (name + ".ran")); ++i) usleep(25000);
        return fs::exists(folder / (name + ".ran"));
    }
    void Select(const std::string& item) {
        auto it = std::find(File1.items.begin(), File1.items.end(), item);
        ASSERT_NE(it, File1.items.end()) << item;
        File1.ListIndex = static_cast<int>(it - File1.items.begin());
    }
    ScriptedHost host;
    fs::path folder;
    std::string savedStart;
};

TEST_F(PluginPanel, ListsTheProgramFolderByFamily) {
    ShowPluginPanel(0);
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(PluginPanelOpen, 1);
    EXPECT_EQ(TabBox.Tag, "0");
    EXPECT_EQ(File1.items, (std::vector<std::string>{"Blur_pf", "Edge_pf"}));
    const std::vector<std::vector<std::string>> families = {
        {"Blur_pf", "Edge_pf"}, {"Load_pi"}, {"Save_px"}, {"Stamp_pb"}, {"Tool_pm"}};
    for (int tab = 4; tab >= 0; --tab) {
        TabBox.ListIndex = tab;  // a click on the tab
        EXPECT_EQ(TabBox.Tag, std::to_string(tab));
        EXPECT_EQ(File1.items, families[static_cast<size_t>(tab)]) << "tab " << tab;
    }
    // The menu commands open the panel on their own tab.
    MDIForm1::BrushPlugin.press();
    EXPECT_EQ(TabBox.Tag, "3");
    EXPECT_EQ(File1.items, families[3]);
    MDIForm1::Export.press();
    EXPECT_EQ(File1.items, families[2]);
    Command2.press();
    EXPECT_EQ(PluginPanelOpen, 0);
    EXPECT_FALSE(form.Visible);
}

TEST_F(PluginPanel, RunsTheSelectionAfterOneUndoStep) {
    WriteMarkingProgram("Mark_pf");
    ShowPluginPanel(0);
    const int16_t before = UndoIndex;
    Command1.press();  // nothing selected: no undo, nothing started
    EXPECT_EQ(UndoIndex, before);
    EXPECT_TRUE(host.programsStarted.empty());

    Select("Mark_pf");
    Command1.press();
    EXPECT_NE(UndoIndex, before);
    ASSERT_EQ(host.programsStarted.size(), 1u);
    EXPECT_EQ(host.programsStarted[0][0], (folder / "Mark_pf").string());
    EXPECT_EQ(host.programsStarted[0].size(), 1u);  // nothing on the command line
    EXPECT_TRUE(Ran("Mark_pf"));

    // A file removed after the listing: one undo step, no message, nothing started.
    Select("Edge_pf");
    fs::remove(folder / "Edge_pf");
    const int16_t second = UndoIndex;
    const int pumps = host.eventPumps;
    File1.DblClick();
    EXPECT_NE(UndoIndex, second);
    EXPECT_EQ(host.programsStarted.size(), 1u);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(host.eventPumps, pumps + 1);  // the double click lets events in once, locked
    EXPECT_EQ(App.LockCount, 0);
}

TEST_F(PluginPanel, ProgressStrip) {
    // With the panel closed the percentage is kept and nothing is drawn.
    LastProgress = 0;
    Picture1.Cls(0x123456);
    SetPluginProgress(30.5f);
    EXPECT_EQ(LastProgress, 30);
    EXPECT_EQ(Picture1.pixels[0], 0x123456u);

    ShowPluginPanel(0);
    SetPluginProgress(50);
    const int w = Picture1.Width;
    EXPECT_EQ(Picture1.pixels[0], BarRowColour(0));
    EXPECT_EQ(Picture1.pixels[static_cast<size_t>(7 * w + w / 2)], BarRowColour(7));
    EXPECT_EQ(Picture1.pixels[static_cast<size_t>(7 * w + w / 2 + 1)], form.BackColor.get());
    EXPECT_EQ(Picture1.Text.get(), "50%");
    // The same whole percentage again draws nothing.
    Picture1.PSet(0, 0, 0x010101);
    SetPluginProgress(50.9f);
    EXPECT_EQ(Picture1.pixels[0], 0x010101u);
    SetPluginProgress(0);
    EXPECT_EQ(Picture1.pixels[0], form.BackColor.get());
    EXPECT_EQ(Picture1.Text.get(), "");
    // Rows of the orange bar at its top and its middle.
    EXPECT_EQ(BarRowColour(0), 0x123FB4u);   // 180, 63, 18
    EXPECT_EQ(BarRowColour(7), 0x1752EAu);   // 234, 82, 23
}

TEST_F(PluginPanel, FixedCommandsSayWhenTheirProgramIsMissing) {
    const int16_t before = UndoIndex;
    host.ExpectMessage("\"Alpha_Grow_pm\" is not installed");
    MDIForm1::Alpha_Grow.press();
    EXPECT_EQ(UndoIndex, before);
    EXPECT_TRUE(host.programsStarted.empty());

    WriteMarkingProgram("Spherize_pf");
    MDIForm1::Transform_Spherize.press();  // an undo step, then the program
    EXPECT_NE(UndoIndex, before);
    ASSERT_EQ(host.programsStarted.size(), 1u);
    EXPECT_EQ(host.programsStarted[0][0], (folder / "Spherize_pf").string());
    EXPECT_TRUE(Ran("Spherize_pf"));

    WriteMarkingProgram("Store_Buffer_pm");
    const int16_t stored = UndoIndex;
    MDIForm1::Storebuf.press();  // no undo step for the store
    EXPECT_EQ(UndoIndex, stored);
    EXPECT_EQ(host.programsStarted.size(), 2u);
    EXPECT_TRUE(Ran("Store_Buffer_pm"));

    BrushWidth = 0;
    host.ExpectMessage("No custom brush");
    MDIForm1::BrushStore.press();
    EXPECT_EQ(host.programsStarted.size(), 2u);
    EXPECT_TRUE(host.AllAnswered());
}
}  // namespace
