// The command line and where the default files are found.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

#include "anim/FrameStore.h"
#include "app/CommandLine.h"
#include "core/document/Buffers.h"
#include "tests/support/ScriptedHost.h"

namespace fs = std::filesystem;
using Action = CommandLine::Action;

TEST(CommandLineArguments, OptionsFilesAndMistakes) {
    EXPECT_EQ(ParseCommandLine({}).action, Action::Start);
    EXPECT_TRUE(ParseCommandLine({}).file.empty());
    EXPECT_EQ(ParseCommandLine({"--help"}).action, Action::Help);
    EXPECT_EQ(ParseCommandLine({"a.tga", "-h"}).action, Action::Help);  // help wins wherever it stands
    EXPECT_EQ(ParseCommandLine({"--version"}).action, Action::Version);
    EXPECT_EQ(ParseCommandLine({"-v"}).action, Action::Version);

    const CommandLine unknown = ParseCommandLine({"--bogus"});
    EXPECT_EQ(unknown.action, Action::Error);
    EXPECT_NE(unknown.error.find("--bogus"), std::string::npos);
    EXPECT_EQ(ParseCommandLine({"a.tga", "b.tga"}).action, Action::Error);

    // After "--" a dash starts a file name, and options are names too.
    const CommandLine dashed = ParseCommandLine({"--", "-odd.tga"});
    EXPECT_EQ(dashed.action, Action::Start);
    EXPECT_EQ(fs::path(dashed.file).filename(), "-odd.tga");
    EXPECT_EQ(ParseCommandLine({"--", "--help"}).action, Action::Start);
    // A lone dash is a name, not an option.
    EXPECT_EQ(ParseCommandLine({"-"}).action, Action::Start);
}

TEST(CommandLineArguments, FilesBecomeAbsoluteAgainstTheStartingFolder) {
    const CommandLine line = ParseCommandLine({"pictures/../a b.tga"});
    EXPECT_TRUE(fs::path(line.file).is_absolute());
    EXPECT_EQ(fs::path(line.file), fs::current_path() / "a b.tga");
    EXPECT_EQ(ParseCommandLine({"/x/y.png"}).file, "/x/y.png");
}

TEST(CommandLineArguments, HelpAndVersionTexts) {
    EXPECT_EQ(VersionText().rfind("kelpwick ", 0), 0u);
    EXPECT_NE(VersionText().find_first_of("0123456789"), std::string::npos);
    for (const char* word : {"--help", "--version", "FILE"})
        EXPECT_NE(CommandLineUsage().find(word), std::string::npos) << word;
}

TEST(DefaultFiles, InstalledTreeOrTheProgramsOwnFolder) {
    QTemporaryDir tmp;
    const fs::path root = tmp.path().toStdString();
    const fs::path program = root / "lib" / "kelpwick";
    fs::create_directories(program);
    // A build tree: nothing in share/, the files lie beside the program.
    EXPECT_EQ(DefaultFilesFolder(program.string()), program.string());
    // A share/kelpwick folder without the presets is not taken for the default files.
    fs::create_directories(root / "share" / "kelpwick");
    EXPECT_EQ(DefaultFilesFolder(program.string()), program.string());
    std::ofstream(root / "share" / "kelpwick" / "Def_Res.txt") << "640 480\n";
    EXPECT_EQ(fs::path(DefaultFilesFolder(program.string())), fs::canonical(root / "share" / "kelpwick"));
}

namespace {
void PutLong(std::ofstream& out, int32_t v) { out.write(reinterpret_cast<const char*>(&v), 4); }
}  // namespace

TEST(CommandLineFiles, AnAnimationByItsMarkAnythingElseAsAPicture) {
    ScriptedHost h;
    MakeTestDocument(5, 5);
    QTemporaryDir tmp;
    const std::string anim = (fs::path(tmp.path().toStdString()) / "walk.tga").string();  // the mark decides
    {
        std::ofstream out(anim, std::ios::binary);
        out << "KWA1    ";
        PutLong(out, 3);
        PutLong(out, 2);
        PutLong(out, 2);
        for (int plane = 0; plane < 3; ++plane)
            for (int frame = 0; frame < 2; ++frame) out << std::string(4 * 3, char(10 * plane + frame));
    }
    OpenFromCommandLine(anim);
    EXPECT_EQ(AnimFrameCount, 2);
    EXPECT_EQ(BufferWidth(), 3);
    EXPECT_EQ(BufG(1, 1), 10);  // frame 0 of green is on show

    h.ExpectMessage("there is no such file");
    OpenFromCommandLine(anim + ".gone");
    EXPECT_EQ(BufferWidth(), 3);
    EXPECT_TRUE(h.AllAnswered());
    FreeAnim();
}
