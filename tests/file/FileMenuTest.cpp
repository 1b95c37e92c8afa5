// Open and Save of the File menu, driven as the user would: dialogs, questions,
// the options panel, and what the buffer, alpha and undo look like afterwards.
#include <gtest/gtest.h>

#include <cstring>

#include "core/framework/AppState.h"
#include "core/display/Display.h"
#include "core/document/Undo.h"
#include "core/framework/vb.h"
#include "tests/file/FileTestSupport.h"

using FileOpen = FileTest;
using FileSave = FileTest;
using BufferFlip = FileTest;

TEST_F(FileOpen, LoadsIntoANewSizeAndSwitchesAlphaByPixelSize) {
    MakeTestDocument(8, 8);
    Bytes px;  // 3 x 2, 32 bits, bottom-left
    for (int i = 0; i < 6; ++i) px.insert(px.end(), {uint8_t(i), uint8_t(10 + i), uint8_t(20 + i), uint8_t(i * 40)});
    WriteBytes(dir / "a.tga", MakeTargaFile(2, 3, 2, 32, 8, px));
    h.Open(dir / "a.tga");
    EXPECT_EQ(BufA(2, 0), 200);  // the last pixel of the file is the top right
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked.get());
    EXPECT_EQ(App.AlphaOff, 0);
    EXPECT_TRUE(Form1::Timer1.TimerEnabled.get());
    EXPECT_EQ(Form1::form.Caption.get(), dir / "a.tga");
    EXPECT_EQ(FileName, dir / "a.tga");
    // A new size empties the undo ring: its one snapshot is the picture just loaded.
    auto loaded = Snapshot().px;
    RepaintUndo();
    EXPECT_EQ(Snapshot().px, loaded);

    // A 24-bit file of the same size switches alpha off and leaves the plane as it was.
    WriteBytes(dir / "b.tga", MakeTargaFile(2, 3, 2, 24, 0, Bytes(18, 9)));
    h.Open(dir / "b.tga");
    EXPECT_EQ(BufR(1, 1), 9);
    EXPECT_EQ(BufA(2, 0), 200);
    EXPECT_FALSE(MDIForm1::AlphaEnable.Checked.get());
    EXPECT_EQ(App.AlphaOff, 255);
    EXPECT_FALSE(Form1::Timer1.TimerEnabled.get());
}

TEST_F(FileOpen, PlainTopLeftFilesAreTurnedUprightWithTheirAlpha) {
    MakeTestDocument(1, 2);
    // Two rows: the first in the file red-ish, the second blue-ish, with alpha.
    for (uint8_t desc : {uint8_t(32 | 8), uint8_t(48 | 8), uint8_t(8)}) {
        WriteBytes(dir / "o.tga", MakeTargaFile(2, 1, 2, 32, desc, {0, 0, 200, 11, 200, 0, 0, 22}));
        h.Open(dir / "o.tga");
        const bool topLeft = desc == 40;
        EXPECT_EQ(BufR(0, 0), topLeft ? 200 : 0) << int(desc);
        EXPECT_EQ(BufB(0, 0), topLeft ? 0 : 200) << int(desc);
        EXPECT_EQ(BufA(0, 0), topLeft ? 11 : 22) << int(desc);
    }
    // The marquee outlines the alpha as it stands upright: the file's first row is transparent.
    Bytes px;
    for (int i = 0; i < 36; ++i) px.insert(px.end(), {1, 2, 3, uint8_t(i < 6 ? 0 : 255)});
    WriteBytes(dir / "m.tga", MakeTargaFile(2, 6, 6, 32, 40, px));
    h.Open(dir / "m.tga");
    EXPECT_EQ(BufA(2, 0), 0);
    EXPECT_EQ(BufA(2, 5), 255);
    Plane shown;
    shown.copyFrom(MarqueePlane);
    InitMarquee();
    EXPECT_EQ(std::memcmp(shown.data(), MarqueePlane.data(), shown.bytes()), 0);
}

TEST_F(FileOpen, StatusTextsIdentificationFieldAndRefusedTypes) {
    MakeTestDocument(2, 1);
    WriteBytes(dir / "g.tga", MakeTargaFile(3, 2, 1, 8, 0, {50, 150}, 255));
    h.Open(dir / "g.tga");
    EXPECT_TRUE(h.SawStatus("Loading color mapped Targa(tm)"));
    EXPECT_EQ(BufG(0, 0), 50);
    EXPECT_EQ(BufB(1, 0), 150);
    h.statusTexts.clear();
    WriteBytes(dir / "c.tga", MakeTargaFile(10, 2, 1, 24, 0, {0x81, 1, 2, 3}));
    h.Open(dir / "c.tga");
    EXPECT_TRUE(h.SawStatus("Loading comressed image data..."));
    EXPECT_EQ(BufR(1, 0), 3);

    for (auto [type, text] : {std::pair{0, "No Image Present"},
                              {9, "Color mapped, RLE compressed Targas not currently supported"},
                              {11, "Greyscale RLE compressed Targas not currently supported"},
                              {-1, "No Image Present"}}) {
        // -1: an empty file.
        WriteBytes(dir / "r.tga", type < 0 ? Bytes{} : MakeTargaFile(uint8_t(type), 2, 1, 24, 0, {1, 2, 3, 4, 5, 6}));
        h.Open(dir / "r.tga", 1, text);
        EXPECT_EQ(BufR(1, 0), 3) << "the buffer is untouched";
    }
}

TEST_F(FileOpen, QuestionsAndTheirNoAnswers) {
    MakeTestDocument(2, 2);
    FileName = "before.tga";
    Form1::form.Caption = "before";
    auto picture = Snapshot().px;
    for (const char* name : {"p.png", "p.xyz"}) WriteBytes(dir / name, MakeTargaFile(2, 2, 2, 24, 0, Bytes(12, 1)));
    auto open = [&](const std::string& name, std::vector<std::pair<const char*, int>> answers) {
        h.openFiles.push_back(dir / name);
        h.filter = 1;
        for (auto [question, answer] : answers) h.Answer(question, answer);
        Open_Click();
    };
    open("p.png", {{"The file extention is not '.tga'.  Proceed only if you're sure this is a targa", 2}});
    EXPECT_EQ(FileName, "before.tga");
    EXPECT_EQ(Form1::form.Caption.get(), "before");
    open("p.xyz", {{"not '.tga'", 1}, {"The file extention is unknown.  Try to load anyway?", 2}});
    UndoFresh = 0;
    open("p.png", {{"not '.tga'", 1}, {"Lose current changes?", 2}});
    EXPECT_EQ(FileName, "before.tga");
    EXPECT_EQ(UndoFresh, 0) << "declining takes no undo step";
    EXPECT_EQ(Snapshot().px, picture);
    open("p.png", {{"not '.tga'", 1}, {"Lose current changes?", 1}});
    EXPECT_EQ(BufR(0, 0), 1) << "yes to both loads the file all the same";

    // A cancelled dialog still ends with an undo step.
    UndoFresh = 0;
    h.openFiles.push_back(std::nullopt);
    Open_Click();
    EXPECT_EQ(UndoFresh, 1);
    EXPECT_EQ(h.lastOpen.Filter, "Default Targa (*.tga)|*.tga|All supported files|*.*");
}

TEST_F(FileOpen, DamagedFilesStopCleanlyAndUndoGoesBack) {
    MakeTestDocument(4, 3);
    FillPicture(BufR, 33);
    SaveUndo();  // the snapshot an earlier action took
    auto before = Snapshot().px;
    WriteBytes(dir / "cut.tga", MakeTargaFile(10, 4, 3, 24, 0, {0x83, 1, 2, 3, 0x81}));  // cut after its first row
    h.Open(dir / "cut.tga");
    EXPECT_EQ(BufR(3, 2), 3);
    EXPECT_EQ(BufR(0, 0), 33) << "rows the data never reached keep what they held";
    RepaintUndo();
    RepaintUndo();
    EXPECT_EQ(Snapshot().px, before);

    // Sizes that no buffer can have: the message of the size check, the document stays.
    for (int w : {0, -5}) {
        WriteBytes(dir / "z.tga", MakeTargaFile(2, w, 3, 24, 0, Bytes(36, 1)));
        h.Open(dir / "z.tga", 1, "cannot be made");
        EXPECT_EQ(std::pair(BufferWidth(), BufferHeight()), std::pair(4, 3));
    }
    // Every depth with every readable type, short data included: no crash, no message.
    for (uint8_t type : {1, 2, 3, 10})
        for (uint8_t depth : {0, 8, 15, 16, 24, 32}) {
            WriteBytes(dir / "d.tga", MakeTargaFile(type, 4, 3, depth, 32, {0x85, 1, 2, 3, 4, 5, 6, 7}));
            h.Open(dir / "d.tga");
        }
    // An unknown type reads nothing and keeps the size.
    WriteBytes(dir / "u.tga", MakeTargaFile(78, 18505, 21060, 24, 0, {}));
    h.Open(dir / "u.tga");
    EXPECT_EQ(BufferWidth(), 4);
    EXPECT_FALSE(MDIForm1::AlphaEnable.Checked.get());
}

TEST_F(FileSave, EveryTargaTypeRoundTripsAndPillowReadsItAlike) {
    vb::Randomize(7);  // the quantiser dithers
    struct Case { OptionButton* option; uint8_t saveType, imageType, depth; };
    for (Case c : {Case{&TargaOptions::Option2, 1, 2, 24}, Case{&TargaOptions::Option3, 2, 2, 32},
                   Case{&TargaOptions::Option1, 3, 3, 8}, Case{&TargaOptions::Option4, 4, 1, 8}}) {
        SCOPED_TRACE(int(c.saveType));
        PaintAsymmetric(9, 6);
        const Rgba original = Snapshot();
        const std::string path = dir / ("s" + std::to_string(c.saveType) + ".tga");
        h.Save(path, 1, c.option);
        EXPECT_EQ(TargaSaveType, c.saveType);
        EXPECT_EQ(FileName, path);
        EXPECT_EQ(Form1::form.Caption.get(), path);
        auto bytes = ReadBytes(path);
        const bool mapped = c.imageType == 1;
        EXPECT_EQ(bytes.size(), 18u + (mapped ? 768u : 0u) + 9 * 6 * c.depth / 8);
        // Bottom-left, no identification; a map of 256 entries of 24 bits, else the entry size is the depth.
        auto head = PackTargaHeader({0, mapped, c.imageType, 0, uint16_t(mapped ? 256 : 0),
                                     uint8_t(mapped ? 24 : c.depth), 0, 0, 9, 6, c.depth, 0});
        EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 18), Bytes(head.begin(), head.end()));
        h.Open(path);
        EXPECT_EQ(BufferDifferences(PillowDecode(path), c.saveType == 2), 0);
        if (c.saveType == 4) {  // a grid of 16 steps, red at most a step off either way
            const Rgba back = Snapshot();
            for (size_t i = 0; i < back.px.size(); i += 4)
                ASSERT_TRUE(back.px[i] % 16 == 0 && std::abs(back.px[i] - original.px[i]) <= 32) << i / 4;
            continue;
        }
        Rgba want = original;  // grey files hold the plain mean of the three channels
        for (size_t i = 0; c.saveType == 3 && i < want.px.size(); i += 4)
            std::fill_n(&want.px[i], 3, (want.px[i] + want.px[i + 1] + want.px[i + 2]) / 3);
        EXPECT_EQ(BufferDifferences(want, c.saveType == 2), 0);
    }
    EXPECT_EQ(h.lastSave.Title, "Save a file");
    EXPECT_EQ(h.lastSave.Filter,
              "Default Targa (*.tga)|*.tga|Bmp|*.bmp|Jpeg|*.jpg|Png|*.png|Psd|*.psd|Targa|*.tga|Tiff|*.tif");
}

TEST_F(FileSave, CancelMixingQuestionAndOverwrittenTail) {
    PaintAsymmetric(4, 4);
    std::string path = dir / "t.tga";
    WriteBytes(path, Bytes(500, 0xEE));
    h.saveFiles.push_back(path);
    h.filter = 1;
    uint8_t kept = TargaSaveType;
    h.Press("TargaOptions", "Command2");
    Save_Click();
    EXPECT_EQ(TargaCancelled, 1);
    EXPECT_EQ(TargaSaveType, kept);
    EXPECT_EQ(ReadBytes(path), Bytes(500, 0xEE));

    Menus::MixSwapNone.Checked = true;
    h.Answer("Layer mixing is active.  Only the current buffer will be saved.", 2);
    Save_Click();  // no dialog follows
    h.Answer("Layer mixing is active.", 1);
    h.Save(path, 1, &TargaOptions::Option2);
    Menus::MixSwapNone.Checked = false;
    auto bytes = ReadBytes(path);
    ASSERT_EQ(bytes.size(), 500u) << "the old tail stays behind";
    EXPECT_EQ(bytes[18 + 4 * 4 * 3], 0xEE);
    EXPECT_EQ(bytes[2], 2);
    h.Save(dir / "no/such/folder/x.tga", 1, nullptr, "An error has occurred while saving.");
}

TEST_F(FileSave, OneColourInEightBitColourStillWritesAFullMap) {
    MakeTestDocument(5, 4);
    for (Plane* p : {&BufR, &BufG, &BufB}) FillPicture(*p, 255);
    h.Save(dir / "one.tga", 1, &TargaOptions::Option4);
    auto bytes = ReadBytes(dir / "one.tga");
    ASSERT_EQ(bytes.size(), 18u + 768 + 20);
    const uint8_t* map = bytes.data() + 18;
    for (int e = 247; e < 256; ++e) EXPECT_EQ(map[3 * e] | map[3 * e + 1] | map[3 * e + 2], 0) << e;
    // Entry 1 is the lightest colour, the picture's own cell.
    EXPECT_EQ(map[3], 240);
    EXPECT_EQ(map[5], 240);
    EXPECT_EQ(Bytes(map + 768, map + 788), Bytes(20, 1));
}

TEST_F(BufferFlip, VerticalAndHorizontalMirrorThePictureNotTheSelection) {
    PaintAsymmetric(5, 3);
    auto before = Snapshot();
    MDIForm1::vertical.press();
    EXPECT_EQ(BufG(0, 0), before.at(0, 2)[1]);
    EXPECT_EQ(BufA(4, 2), before.at(4, 2)[3]) << "alpha stays";
    MDIForm1::horizontal.press();
    EXPECT_EQ(BufR(0, 0), before.at(4, 2)[0]);
    RepaintUndo();
    RepaintUndo();
    for (MenuEntry* m : {&MDIForm1::vertical, &MDIForm1::vertical, &MDIForm1::horizontal, &MDIForm1::horizontal})
        m->press();
    EXPECT_EQ(Snapshot().px, before.px);
}

TEST_F(FileOpen, ANamedFileOpensWithoutDialogOrQuestions) {
    MakeTestDocument(4, 4);
    WriteBytes(dir / "named.tga", MakeTargaFile(2, 2, 1, 24, 0, {1, 2, 3, 4, 5, 6}));
    OpenNamedFile(dir / "named.tga");  // the scripted host fails on any box it was not told of
    EXPECT_EQ(BufferWidth(), 2);
    EXPECT_EQ(BufR(1, 0), 6);
    EXPECT_EQ(Form1::form.Caption.get(), dir / "named.tga");
    EXPECT_EQ(FileName, dir / "named.tga");

    // Any other extension goes through the conversion; a missing file is told and changes nothing.
    RunPillow("Image.new('RGB', (3, 1), (90, 80, 70)).save(sys.argv[1])", {QString::fromStdString(dir / "p.png")});
    OpenNamedFile(dir / "p.png");
    EXPECT_EQ(BufferWidth(), 3);
    EXPECT_EQ(BufG(2, 0), 80);
    h.ExpectMessage("there is no such file");
    OpenNamedFile(dir / "gone.tga");
    EXPECT_EQ(BufferWidth(), 3);
    EXPECT_EQ(FileName, dir / "p.png");
}
