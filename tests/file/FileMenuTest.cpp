// Open and Save of the File menu, driven as the user would: dialogs, questions,
// the options panel, and what the buffer, alpha and undo look like afterwards.
#include <gtest/gtest.h>

#include <cstring>

#include "core/AppState.h"
#include "core/Display.h"
#include "core/Form1.h"
#include "core/MDIForm1.h"
#include "core/Undo.h"
#include "core/vb.h"
#include "file/Targa.h"
#include "file/TargaOptions.h"
#include "tests/file/FileTestSupport.h"

namespace {

std::vector<uint8_t> MakeTargaFile(uint8_t type, int w, int h, uint8_t depth, uint8_t descriptor,
                                const std::vector<uint8_t>& pixels, uint8_t idLength = 0) {
    TargaFileHeader hd;
    hd.IDLength = idLength;
    hd.ImageType = type;
    hd.ImageWidth = static_cast<int16_t>(w);
    hd.ImageHeight = static_cast<int16_t>(h);
    hd.PixelDepth = depth;
    hd.ImageDescriptor = descriptor;
    auto head = PackTargaHeader(hd);
    std::vector<uint8_t> f(head.begin(), head.end());
    f.insert(f.end(), idLength, 'x');
    f.insert(f.end(), pixels.begin(), pixels.end());
    return f;
}

// Opens `path` through the Targa filter, answering the replace question with yes.
void OpenTarga(FileHost& h, const std::string& path) {
    h.openFiles.push_back(path);
    h.openFilter.push_back(1);
    h.Answer("This will replace the existing buffer.  Lose current changes?", 1);
    Open_Click();
}

// Saves through the Targa filter with the options panel set to `option`.
void SaveTargaAs(FileHost& h, const std::string& path, OptionButton& option) {
    h.saveFiles.push_back(path);
    h.saveFilter.push_back(1);
    h.Expect("TargaOptions", [&option] {
        option.Value = true;
        TargaOptions::Command1.press();
    });
    Save_Click();
}

std::vector<uint8_t> Snapshot() {
    std::vector<uint8_t> s;
    for (Plane* p : {&BufR, &BufG, &BufB, &BufA})
        for (int y = 0; y < BufferHeight(); ++y) s.insert(s.end(), p->row(y), p->row(y) + BufferWidth());
    return s;
}

}  // namespace

TEST(FileOpen, LoadsIntoANewSizeAndSwitchesAlphaByPixelSize) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(8, 8);
    // 3 x 2, 32 bits, bottom-left.
    std::vector<uint8_t> px;
    for (int i = 0; i < 6; ++i) px.insert(px.end(), {uint8_t(i), uint8_t(10 + i), uint8_t(20 + i), uint8_t(i * 40)});
    WriteBytes(dir / "a.tga", MakeTargaFile(2, 3, 2, 32, 8, px));
    OpenTarga(h, dir / "a.tga");
    EXPECT_EQ(BufferWidth(), 3);
    EXPECT_EQ(BufferHeight(), 2);
    EXPECT_EQ(BufR(0, 1), 20);
    EXPECT_EQ(BufR(2, 0), 25);
    EXPECT_EQ(BufA(2, 0), 200);
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked.get());
    EXPECT_EQ(App.AlphaOff, 0);
    EXPECT_TRUE(Form1::Timer1.TimerEnabled.get());
    EXPECT_EQ(Form1::form.Caption.get(), dir / "a.tga");
    EXPECT_EQ(FileName, dir / "a.tga");
    // A new size empties the undo ring: its one snapshot is the picture just loaded.
    auto loaded = Snapshot();
    RepaintUndo();
    EXPECT_EQ(Snapshot(), loaded);

    // A 24-bit file of the same size switches alpha off and leaves the plane as it was.
    WriteBytes(dir / "b.tga", MakeTargaFile(2, 3, 2, 24, 0, std::vector<uint8_t>(18, 9)));
    OpenTarga(h, dir / "b.tga");
    EXPECT_EQ(BufR(1, 1), 9);
    EXPECT_EQ(BufA(2, 0), 200);
    EXPECT_FALSE(MDIForm1::AlphaEnable.Checked.get());
    EXPECT_EQ(App.AlphaOff, 255);
    EXPECT_FALSE(Form1::Timer1.TimerEnabled.get());
}

TEST(FileOpen, TopLeftFilesAreTurnedUprightAndOthersAreNot) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(1, 2);
    // Two rows: the first in the file red-ish, the second blue-ish, with alpha.
    std::vector<uint8_t> px = {0, 0, 200, 11, 200, 0, 0, 22};
    for (uint8_t desc : {uint8_t(32 | 8), uint8_t(48 | 8), uint8_t(8)}) {
        WriteBytes(dir / "o.tga", MakeTargaFile(2, 1, 2, 32, desc, px));
        OpenTarga(h, dir / "o.tga");
        const bool topLeft = desc == 40;
        EXPECT_EQ(BufR(0, 0), topLeft ? 200 : 0) << int(desc);
        EXPECT_EQ(BufB(0, 0), topLeft ? 0 : 200) << int(desc);
        EXPECT_EQ(BufA(0, 0), topLeft ? 11 : 22) << "alpha turns with the picture, descriptor " << int(desc);
    }
}

TEST(FileOpen, TheMarqueeOutlinesTheUprightAlpha) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(6, 6);
    // Top-left, 6 x 6: the first row of the file (the top) is transparent.
    std::vector<uint8_t> px;
    for (int i = 0; i < 36; ++i) px.insert(px.end(), {1, 2, 3, uint8_t(i < 6 ? 0 : 255)});
    WriteBytes(dir / "m.tga", MakeTargaFile(2, 6, 6, 32, 40, px));
    OpenTarga(h, dir / "m.tga");
    EXPECT_EQ(BufA(2, 0), 0);
    EXPECT_EQ(BufA(2, 5), 255);
    Plane shown;
    shown.copyFrom(MarqueePlane);
    InitMarquee();
    EXPECT_EQ(std::memcmp(shown.data(), MarqueePlane.data(), shown.bytes()), 0);
}

TEST(FileOpen, StatusTextsIdentificationFieldAndRefusedTypes) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(2, 1);
    WriteBytes(dir / "g.tga", MakeTargaFile(3, 2, 1, 8, 0, {50, 150}, 255));
    OpenTarga(h, dir / "g.tga");
    EXPECT_TRUE(h.SawStatus("Loading color mapped Targa(tm)"));
    EXPECT_EQ(BufG(0, 0), 50);
    EXPECT_EQ(BufB(1, 0), 150);

    h.statusTexts.clear();
    WriteBytes(dir / "c.tga", MakeTargaFile(10, 2, 1, 24, 0, {0x81, 1, 2, 3}));
    OpenTarga(h, dir / "c.tga");
    EXPECT_TRUE(h.SawStatus("Loading comressed image data..."));
    EXPECT_EQ(BufR(1, 0), 3);

    struct Refused { uint8_t type; const char* text; };
    for (Refused r : {Refused{0, "No Image Present"},
                      Refused{9, "Color mapped, RLE compressed Targas not currently supported"},
                      Refused{11, "Greyscale RLE compressed Targas not currently supported"}}) {
        WriteBytes(dir / "r.tga", MakeTargaFile(r.type, 2, 1, 24, 0, {1, 2, 3, 4, 5, 6}));
        h.openFiles.push_back(dir / "r.tga");
        h.openFilter.push_back(1);
        h.Answer("Lose current changes?", 1);
        h.ExpectMessage(r.text);
        Open_Click();
        EXPECT_EQ(BufR(1, 0), 3) << "the buffer is untouched";
    }
    // An empty file has no image.
    WriteBytes(dir / "empty.tga", {});
    h.openFiles.push_back(dir / "empty.tga");
    h.Answer("Lose current changes?", 1);
    h.ExpectMessage("No Image Present");
    Open_Click();
}

TEST(FileOpen, QuestionsAndTheirNoAnswers) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(2, 2);
    FileName = "before.tga";
    Form1::form.Caption = "before";
    auto picture = Snapshot();
    WriteBytes(dir / "p.png", MakeTargaFile(2, 2, 2, 24, 0, std::vector<uint8_t>(12, 1)));

    h.openFiles.push_back(dir / "p.png");
    h.openFilter.push_back(1);
    h.Answer("The file extention is not '.tga'.  Proceed only if you're sure this is a targa", 2);
    Open_Click();
    EXPECT_EQ(FileName, "before.tga");
    EXPECT_EQ(Form1::form.Caption.get(), "before");

    WriteBytes(dir / "p.xyz", MakeTargaFile(2, 2, 2, 24, 0, std::vector<uint8_t>(12, 1)));
    h.openFiles.push_back(dir / "p.xyz");
    h.openFilter.push_back(1);
    h.Answer("not '.tga'", 1);
    h.Answer("The file extention is unknown.  Try to load anyway?", 2);
    Open_Click();

    UndoFresh = 0;
    h.openFiles.push_back(dir / "p.png");
    h.openFilter.push_back(1);
    h.Answer("not '.tga'", 1);
    h.Answer("Lose current changes?", 2);
    Open_Click();
    EXPECT_EQ(FileName, "before.tga");
    EXPECT_EQ(UndoFresh, 0) << "declining takes no undo step";
    EXPECT_EQ(Snapshot(), picture);

    // Yes to both loads the file all the same.
    h.openFiles.push_back(dir / "p.png");
    h.openFilter.push_back(1);
    h.Answer("not '.tga'", 1);
    h.Answer("Lose current changes?", 1);
    Open_Click();
    EXPECT_EQ(BufR(0, 0), 1);

    // A cancelled dialog still ends with an undo step.
    UndoFresh = 0;
    h.openFiles.push_back(std::nullopt);
    Open_Click();
    EXPECT_EQ(UndoFresh, 1);
    EXPECT_EQ(h.lastOpen.Filter, "Default Targa (*.tga)|*.tga|All supported files|*.*");
}

TEST(FileOpen, DamagedFilesStopCleanlyAndUndoGoesBack) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(4, 3);
    FillPicture(BufR, 33);
    SaveUndo();  // the snapshot an earlier action took
    auto before = Snapshot();

    // A run-length file cut after its first row.
    std::vector<uint8_t> rle = {0x83, 1, 2, 3, 0x81};
    WriteBytes(dir / "cut.tga", MakeTargaFile(10, 4, 3, 24, 0, rle));
    OpenTarga(h, dir / "cut.tga");
    EXPECT_EQ(BufR(3, 2), 3);
    EXPECT_EQ(BufR(0, 0), 33) << "rows the data never reached keep what they held";
    RepaintUndo();
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);

    // Sizes that no buffer can have: the message of the size check, the document stays.
    for (int w : {0, -5}) {
        WriteBytes(dir / "z.tga", MakeTargaFile(2, w, 3, 24, 0, std::vector<uint8_t>(36, 1)));
        h.openFiles.push_back(dir / "z.tga");
        h.openFilter.push_back(1);
        h.Answer("Lose current changes?", 1);
        h.ExpectMessage("cannot be made");
        Open_Click();
        EXPECT_EQ(BufferWidth(), 4);
        EXPECT_EQ(BufferHeight(), 3);
    }
    // Every depth with every readable type, short data included: no crash, no message.
    for (uint8_t type : {1, 2, 3, 10})
        for (uint8_t depth : {0, 8, 15, 16, 24, 32}) {
            WriteBytes(dir / "d.tga", MakeTargaFile(type, 4, 3, depth, 32, {0x85, 1, 2, 3, 4, 5, 6, 7}));
            OpenTarga(h, dir / "d.tga");
        }
    // An unknown type reads nothing and keeps the size.
    WriteBytes(dir / "u.tga", MakeTargaFile(78, 18505, 21060, 24, 0, {}));
    OpenTarga(h, dir / "u.tga");
    EXPECT_EQ(BufferWidth(), 4);
    EXPECT_FALSE(MDIForm1::AlphaEnable.Checked.get());
}

TEST(FileSave, EveryTargaTypeRoundTripsThroughTheOptionsPanel) {
    FileHost h;
    TestFolder dir;
    vb::Randomize(7);
    PaintAsymmetric(9, 6);
    auto original = Snapshot();
    struct Case { OptionButton* option; uint8_t saveType, imageType, depth; };
    for (Case c : {Case{&TargaOptions::Option2, 1, 2, 24}, Case{&TargaOptions::Option3, 2, 2, 32},
                   Case{&TargaOptions::Option1, 3, 3, 8}, Case{&TargaOptions::Option4, 4, 1, 8}}) {
        std::string path = dir / ("s" + std::to_string(c.saveType) + ".tga");
        SaveTargaAs(h, path, *c.option);
        EXPECT_EQ(TargaSaveType, c.saveType);
        EXPECT_EQ(FileName, path);
        EXPECT_EQ(Form1::form.Caption.get(), path);
        auto bytes = ReadBytes(path);
        TargaFileHeader hd = ParseTargaHeader(bytes.data(), bytes.size());
        EXPECT_EQ(hd.ImageType, c.imageType);
        EXPECT_EQ(hd.PixelDepth, c.depth);
        EXPECT_EQ(hd.ImageDescriptor, 0);
        OpenTarga(h, path);
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 9; ++x) {
                size_t i = static_cast<size_t>(y) * 9 + x, n = 54;
                int r = original[i], g = original[n + i], b = original[2 * n + i];
                if (c.saveType == 3) {
                    ASSERT_EQ(BufR(x, y), (r + g + b) / 3);
                    ASSERT_EQ(BufB(x, y), (r + g + b) / 3);
                } else if (c.saveType == 4) {
                    // Quantised to the 16-step grid, at most one step off per channel.
                    ASSERT_LE(std::abs(BufR(x, y) - r), 32) << x << "," << y;
                    ASSERT_EQ(BufR(x, y) % 16, 0);
                } else {
                    ASSERT_EQ(BufR(x, y), r);
                    ASSERT_EQ(BufG(x, y), g);
                    ASSERT_EQ(BufB(x, y), b);
                }
                if (c.saveType == 2) {
                    ASSERT_EQ(BufA(x, y), original[3 * n + i]);
                }
            }
        // Back to the original for the next kind.
        PaintAsymmetric(9, 6);
    }
    EXPECT_EQ(h.lastSave.Title, "Save a file");
    EXPECT_EQ(h.lastSave.Filter,
              "Default Targa (*.tga)|*.tga|Bmp|*.bmp|Jpeg|*.jpg|Png|*.png|Psd|*.psd|Targa|*.tga|Tiff|*.tif");
}

TEST(FileSave, CancelMixingQuestionAndOverwrittenTail) {
    FileHost h;
    TestFolder dir;
    PaintAsymmetric(4, 4);
    std::string path = dir / "t.tga";
    WriteBytes(path, std::vector<uint8_t>(500, 0xEE));

    h.saveFiles.push_back(path);
    h.saveFilter.push_back(1);
    uint8_t kept = TargaSaveType;
    h.Press("TargaOptions", "Command2");
    Save_Click();
    EXPECT_EQ(TargaCancelled, 1);
    EXPECT_EQ(TargaSaveType, kept);
    EXPECT_EQ(ReadBytes(path), std::vector<uint8_t>(500, 0xEE));

    Menus::MixSwapNone.Checked = true;
    h.Answer("Layer mixing is active.  Only the current buffer will be saved.", 2);
    Save_Click();  // no dialog follows
    h.Answer("Layer mixing is active.", 1);
    SaveTargaAs(h, path, TargaOptions::Option2);
    Menus::MixSwapNone.Checked = false;
    auto bytes = ReadBytes(path);
    ASSERT_EQ(bytes.size(), 500u) << "the old tail stays behind";
    EXPECT_EQ(bytes[18 + 4 * 4 * 3], 0xEE);
    EXPECT_EQ(bytes[2], 2);

    // A folder that does not exist: the user is told.
    h.saveFiles.push_back(dir / "no/such/folder/x.tga");
    h.saveFilter.push_back(1);
    h.Press("TargaOptions", "Command1");
    h.ExpectMessage("An error has occurred while saving.");
    Save_Click();
}

TEST(FileSave, OneColourInEightBitColourStillWritesAFullMap) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(5, 4);
    FillPicture(BufR, 255);
    FillPicture(BufG, 255);
    FillPicture(BufB, 255);
    SaveTargaAs(h, dir / "one.tga", TargaOptions::Option4);
    auto bytes = ReadBytes(dir / "one.tga");
    ASSERT_EQ(bytes.size(), 18u + 768 + 20);
    TargaFileHeader hd = ParseTargaHeader(bytes.data(), bytes.size());
    EXPECT_EQ(hd.ColorMapType, 1);
    EXPECT_EQ(hd.ColorMapLength, 256);
    EXPECT_EQ(hd.ColorMapEntrySize, 24);
    const uint8_t* map = bytes.data() + 18;
    for (int e = 247; e < 256; ++e) EXPECT_EQ(map[3 * e] | map[3 * e + 1] | map[3 * e + 2], 0) << e;
    // Entry 1 is the lightest colour, the picture's own cell.
    EXPECT_EQ(map[3], 240);
    EXPECT_EQ(map[5], 240);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(bytes[18 + 768 + i], 1);
}

TEST(BufferFlip, VerticalAndHorizontalMirrorThePictureNotTheSelection) {
    FileHost h;
    PaintAsymmetric(5, 3);
    auto before = Snapshot();
    MDIForm1::vertical.Click = vertical_Click;
    MDIForm1::horizontal.Click = horizontal_Click;
    MDIForm1::vertical.press();
    EXPECT_EQ(BufG(0, 0), before[15 + 10]);  // green of row 2, column 0
    EXPECT_EQ(BufA(4, 2), before[45 + 14]) << "alpha stays";
    MDIForm1::horizontal.press();
    EXPECT_EQ(BufR(0, 0), before[14]);
    RepaintUndo();
    RepaintUndo();
    MDIForm1::vertical.press();
    MDIForm1::vertical.press();
    MDIForm1::horizontal.press();
    MDIForm1::horizontal.press();
    EXPECT_EQ(Snapshot(), before);
}
