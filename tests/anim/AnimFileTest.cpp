// The animation file and numbered Targa sequences.
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "anim/AnimFile.h"
#include "file/FileMenu.h"
#include "file/TargaFile.h"
#include "tests/anim/AnimFixture.h"

namespace {
using namespace MDIForm1;
using Bytes = std::vector<uint8_t>;

Bytes ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
void WriteBytes(const std::string& path, const Bytes& b) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(b.data()), std::streamsize(b.size()));
}
int32_t LongAt(const Bytes& b, size_t at) {
    return int32_t(b[at] | b[at + 1] << 8 | b[at + 2] << 16 | uint32_t(b[at + 3]) << 24);
}
void PutLong(Bytes& b, int32_t v) {
    for (int i = 0; i < 4; ++i) b.push_back(uint8_t(uint32_t(v) >> (8 * i)));
}
Bytes Header(int32_t w, int32_t h, int32_t frames) {
    Bytes b = {'K', 'W', 'A', '1', ' ', ' ', ' ', ' '};
    PutLong(b, w);
    PutLong(b, h);
    PutLong(b, frames);
    return b;
}

class AnimFileTest : public AnimTest {
protected:
    std::string Path(const std::string& name) { return dir.filePath(QString::fromStdString(name)).toStdString(); }
    void Save(const std::string& path) {
        host.saveFiles.push_back(path);
        Ani_Save_Click();
    }
    void Open(const std::string& path) {
        host.openFiles.push_back(path);
        Ani_open_Click();
    }
    QTemporaryDir dir;
};
}  // namespace

TEST_F(AnimFileTest, SavedFileHasThePaddedLayoutAndComesBackByteForByte) {
    MakeDistinctFrames(3);
    // Every byte different, so that a shift or a swapped block shows.
    for (int f = 0; f < 3; ++f)
        for (size_t i = 0; i < AnimR.frameBytes(); ++i) {
            AnimR.frame(f)[i] = uint8_t(i + 7 * f);
            AnimG.frame(f)[i] = uint8_t(3 * i + f);
            AnimB.frame(f)[i] = uint8_t(255 - i - f);
        }
    const std::string first = Path("walk.kwa"), second = Path("again.kwa");
    Save(first);
    Bytes file = ReadBytes(first);
    const size_t n = 7 * 5 * 3;  // (6 + 1) * (4 + 1) per frame, three frames
    ASSERT_EQ(file.size(), 20 + 3 * n);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 8), "KWA1    ");
    EXPECT_EQ(LongAt(file, 8), 6);
    EXPECT_EQ(LongAt(file, 12), 4);
    EXPECT_EQ(LongAt(file, 16), 3);
    EXPECT_EQ(file[20 + 7 * 5 + 1], AnimR.frame(1)[1]);  // frame 1 of red follows frame 0
    EXPECT_EQ(file[20 + n + 2], AnimG.frame(0)[2]);      // then green
    EXPECT_EQ(file[20 + 2 * n + 3], AnimB.frame(0)[3]);  // then blue

    SetBufferSize(9, 9);
    ASSERT_TRUE(CreateNewDocument(false));  // the frames go
    Open(first);
    EXPECT_EQ(BufferWidth(), 6);
    EXPECT_EQ(BufferHeight(), 4);
    EXPECT_EQ(AnimFrameCount, 3);
    EXPECT_EQ(AnimScroll.Max.get(), 2);  // one lower than after Create_Anim
    EXPECT_TRUE(Anim_Tools.Visible.get());
    EXPECT_EQ(AnimCurrentFrame, 0);
    EXPECT_EQ(BufR.data()[8], AnimR.frame(0)[8]);
    Save(second);
    EXPECT_EQ(ReadBytes(second), file);
}

TEST_F(AnimFileTest, SavingWithoutFramesSaysSo) {
    host.ExpectMessage("no animation");
    Ani_Save_Click();
    MakeDistinctFrames(1);
    host.ExpectMessage("An error occured while saving...");
    Save(Path("no/such/folder/x.kwa"));
}

TEST_F(AnimFileTest, OtherFilesAreNotAnimations) {
    Paint({4, 5, 6});
    for (Bytes bytes : {Bytes{'K', 'W', 'A'}, Bytes{'K', 'W', 'A', '2', 0, 0}, Bytes{}}) {
        WriteBytes(Path("x.kwa"), bytes);
        host.ExpectMessage("not an animation.");
        Open(Path("x.kwa"));
    }
    EXPECT_EQ(BufferColour(), (Rgb{4, 5, 6}));
    host.ExpectMessage("could not be read");
    Open(Path("missing.kwa"));
}

TEST_F(AnimFileTest, AShortFileLeavesTheTailHoldingTheFreshBuffer) {
    Form2::Shape1.FillColor = 0x0A0B0C;  // the fresh buffer's colour
    Bytes file = Header(2, 2, 2);
    const size_t n = 3 * 3 * 2;
    file.insert(file.end(), n, 200);     // all of red
    file.insert(file.end(), n / 2, 201);  // the first frame of green only
    WriteBytes(Path("short.kwa"), file);
    Open(Path("short.kwa"));
    ASSERT_EQ(AnimFrameCount, 2);
    EXPECT_EQ(AnimR.frame(1)[0], 200);
    EXPECT_EQ(AnimG.frame(0)[0], 201);
    EXPECT_EQ(AnimG.frame(1)[0], 0x0B);  // unread: the copy of the new buffer
    EXPECT_EQ(AnimB.frame(0)[0], 0x0A);
    EXPECT_TRUE(host.messages.empty());
}

TEST_F(AnimFileTest, ALongerFileReadsOnlyWhatTheStoreHolds) {
    Bytes file = Header(1, 1, 1);
    file.insert(file.end(), 4 * 3 + 100, 9);
    WriteBytes(Path("long.kwa"), file);
    Open(Path("long.kwa"));
    EXPECT_EQ(AnimFrameCount, 1);
    EXPECT_EQ(AnimB.frame(0)[3], 9);
}

TEST_F(AnimFileTest, HeadersThatCannotBeMadeAreRefusedKeepingPictureAndFrames) {
    MakeDistinctFrames(2);
    AnimScroll.Value = 1;
    AvailableMemory = [] { return uint64_t{64} << 20; };
    struct Case {
        int32_t w, h, frames;
        const char* message;
    } cases[] = {
        {0, 10, 2, "it gives 0 by 10 pixels and 2 frames"},
        {10, -3, 2, "it gives 10 by -3 pixels"},
        {10, 10, 0, "and 0 frames"},
        {10, 10, -1, "and -1 frames"},
        {40000, 10, 1, "40000 by 10"},
        {2000, 2000, 100, "Not enough memory for this animation: 100 frames of 2000 by 2000 pixels take 1146 MB; 64 MB are free."},
    };
    for (const Case& c : cases) {
        WriteBytes(Path("lie.kwa"), Header(c.w, c.h, c.frames));
        host.ExpectMessage(c.message);
        Open(Path("lie.kwa"));
        EXPECT_EQ(BufferWidth(), 6);
        EXPECT_EQ(AnimFrameCount, 2);
        EXPECT_EQ(AnimCurrentFrame, 1);
        EXPECT_EQ(BufferColour(), (Rgb{10, 11, 12}));
    }
}

TEST(AnimNames, SafeHelpersWalkTheEndOfTheName) {
    EXPECT_EQ(SafeRemoveExt("a.jpeg"), "a.jpeg");
    EXPECT_EQ(SafeRemoveExt("walk.tga"), "walk");
    EXPECT_EQ(SafeRemoveExt(".tga"), ".tga");  // not longer than 4
    EXPECT_EQ(SafeRemoveNumeric("12345"), "1");
    EXPECT_EQ(SafeRemoveNumeric("take_07"), "take_");
    EXPECT_EQ(SafeRemoveNumeric("7"), "7");
    EXPECT_EQ(SafeCountNumeric("abc"), 0);
    EXPECT_EQ(SafeCountNumeric("take_007"), 3);
    EXPECT_EQ(SafeCountNumeric("12345"), 4);
    EXPECT_EQ(SafeGetNumeric("take_07"), 7);
    EXPECT_EQ(SafeGetNumeric("x"), 0);
    EXPECT_EQ(SafeGetNumeric("5"), 0);
    EXPECT_EQ(SafeGetNumeric("abc"), 0);
    EXPECT_EQ(SafeGetNumeric("a32767"), 32767);
    EXPECT_EQ(SequenceStem("/tmp/walk12.tga"), "/tmp/walk");
    EXPECT_EQ(SequenceFrameName("walk", 0), "walk_0000.tga");
    EXPECT_EQ(SequenceFrameName("walk", 42), "walk_0042.tga");
    EXPECT_EQ(SequenceFrameName("walk", 10000), "walk_10000.tga");
}

TEST_F(AnimFileTest, ASequenceIsWrittenNumberedAndReadBackInOrder) {
    MakeDistinctFrames(3);
    AnimScroll.Value = 1;
    Paint({77, 78, 79});  // unstored work on frame 1 goes out with it
    TargaSaveType = 1;
    host.saveFiles.push_back(Path("walk12.tga"));
    Ani_Sequence_Click();
    for (const char* name : {"walk_0000.tga", "walk_0001.tga", "walk_0002.tga"})
        EXPECT_TRUE(std::filesystem::exists(Path(name))) << name;
    EXPECT_FALSE(std::filesystem::exists(Path("walk_0003.tga")));
    Bytes tga = ReadBytes(Path("walk_0002.tga"));
    ASSERT_EQ(tga.size(), 18u + 6 * 4 * 3);
    EXPECT_EQ(tga[2], 2);    // true colour
    EXPECT_EQ(tga[16], 24);  // 24 bits, whatever the panel said last
    EXPECT_EQ(tga[18], 22);  // blue first
    EXPECT_EQ(AnimCurrentFrame, 2);
    EXPECT_EQ(AnimScroll.Value.get(), 1);  // the scroll bar does not follow

    SetBufferSize(3, 3);
    ASSERT_TRUE(CreateNewDocument(false));
    host.Answer("This will replace the existing buffer.", 1);
    host.openFiles.push_back(Path("walk_0001.tga"));  // any frame of it finds the whole sequence
    Ani_sequence_Load_Click();
    ASSERT_EQ(AnimFrameCount, 3);
    EXPECT_EQ(BufferWidth(), 6);
    EXPECT_EQ(AnimScroll.Max.get(), 2);
    EXPECT_EQ(FramePictureColour(0), (Rgb{0, 1, 2}));
    EXPECT_EQ(FramePictureColour(1), (Rgb{77, 78, 79}));
    EXPECT_EQ(FramePictureColour(2), (Rgb{20, 21, 22}));
    EXPECT_EQ(AnimCurrentFrame, 0);
    EXPECT_EQ(BufR(5, 3), 0);
    EXPECT_EQ(BufB(0, 0), 2);
    EXPECT_TRUE(Anim_Tools.Visible.get());
}

TEST_F(AnimFileTest, ASequenceWithAFrameOfAnotherSizeIsRefusedByName) {
    MakeDistinctFrames(2);
    host.saveFiles.push_back(Path("run.tga"));
    Ani_Sequence_Click();
    // A third frame of another size joins the sequence.
    SetBufferSize(5, 4);
    ASSERT_TRUE(CreateNewDocument(false));
    ASSERT_TRUE(SaveTarga(Path("run_0002.tga"), 0));
    Paint({1, 2, 3});
    host.ExpectMessage("run_0002.tga is 5 by 4 pixels, not 6 by 4 like the first frame");
    host.openFiles.push_back(Path("run.tga"));
    Ani_sequence_Load_Click();
    EXPECT_EQ(AnimFrameCount, 0);
    EXPECT_EQ(BufferWidth(), 5);
    EXPECT_EQ(BufferColour(), (Rgb{1, 2, 3}));
    host.ExpectMessage("No sequence found: ");
    host.openFiles.push_back(Path("nothing.tga"));
    Ani_sequence_Load_Click();
}

TEST_F(AnimFileTest, SavingASequenceWithoutFramesSaysSo) {
    host.ExpectMessage("No frames to save");
    Ani_Sequence_Click();
}

TEST_F(AnimFileTest, FileOpenAsksBeforeFreeingTheFrames) {
    MakeDistinctFrames(2);
    host.openFiles.push_back(Path("picture.tga"));
    host.Answer("This will free the current animation.", 2);
    Open_Click();
    EXPECT_EQ(AnimFrameCount, 2);
    host.openFiles.push_back(Path("picture.tga"));
    host.Answer("This will free the current animation.", 1);
    host.Answer("This will replace the existing buffer.  Lose current changes?", 2);
    Open_Click();
    EXPECT_EQ(AnimFrameCount, 0);
    EXPECT_EQ(AnimScroll.Max.get(), 1);
}
