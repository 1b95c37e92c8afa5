// Pictures made by other programs: Targa files written by Pillow read as Pillow
// reads them, our Targa files read by Pillow, and every other format through
// ImageMagick's convert, the same way up and in the same colours.
#include <gtest/gtest.h>

#include <QFileInfo>

#include <cstring>

#include "core/Form1.h"
#include "core/MDIForm1.h"
#include "file/FileNames.h"
#include "file/Conversion.h"
#include "file/Targa.h"
#include "file/TargaOptions.h"
#include "tests/file/FileTestSupport.h"

namespace {

// A 7 x 5 picture in Pillow, asymmetric in every channel, with varied alpha.
const char* const MakePicture =
    "im = Image.new('RGBA', (7, 5))\n"
    "im.putdata([((x * 37) % 256, (y * 61) % 256, (x * 11 + y * 29) % 256, 255 if x < 3 else (x * y * 23) % 256)"
    " for y in range(5) for x in range(7)])\n";

// Opens `path` through "All supported files" (index 2), or as Targa.
void OpenFile(FileHost& h, const std::string& path, int filter) {
    h.openFiles.push_back(path);
    h.openFilter.push_back(filter);
    h.Answer("Lose current changes?", 1);
    Open_Click();
}

void SaveAs(FileHost& h, const std::string& path, int filter) {
    h.saveFiles.push_back(path);
    h.saveFilter.push_back(filter);
    Save_Click();
    FinishPendingConversions();
}

}  // namespace

TEST(ForeignTarga, PillowFilesOfEveryReadableTypeMatchPillowsDecoding) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(3, 3);
    struct Case { const char* name; const char* save; bool alpha; int type; };
    const Case cases[] = {
        {"rgb_bl.tga", "im.convert('RGB').save(p)", false, 2},
        {"rgb_tl.tga", "im.convert('RGB').save(p, orientation=1)", false, 2},
        {"rgba_bl.tga", "im.save(p)", true, 2},
        {"rgba_tl.tga", "im.save(p, orientation=1)", true, 2},
        {"rle_bl.tga", "im.convert('RGB').save(p, compression='tga_rle')", false, 10},
        {"rle_tl.tga", "im.convert('RGB').save(p, compression='tga_rle', orientation=1)", false, 10},
        {"rlea_tl.tga", "im.save(p, compression='tga_rle', orientation=1)", true, 10},
        {"pal.tga", "im.convert('RGB').quantize(16).save(p)", false, 1},
        {"pal_tl.tga", "im.convert('RGB').quantize(16).save(p, orientation=1)", false, 1},
        {"grey.tga", "im.convert('L').save(p)", false, 3},
        {"grey_tl.tga", "im.convert('L').save(p, orientation=1)", false, 3},
    };
    for (const Case& c : cases) {
        std::string path = dir / c.name;
        ASSERT_TRUE(RunPillow(std::string(MakePicture) + "p = sys.argv[1]\n" + c.save + "\n",
                              {QString::fromStdString(path)}));
        auto bytes = ReadBytes(path);
        ASSERT_EQ(ParseTargaHeader(bytes.data(), bytes.size()).ImageType, c.type) << c.name;
        Rgba ref = PillowDecode(path, dir / "ref.bin");
        OpenFile(h, path, 1);
        EXPECT_EQ(BufferDifferences(ref, c.alpha), 0) << c.name;
        EXPECT_EQ(MDIForm1::AlphaEnable.Checked.get(), c.alpha) << c.name;
    }
}

TEST(ForeignTarga, PillowReadsOurFilesAsWeMeantThem) {
    FileHost h;
    TestFolder dir;
    PaintAsymmetric(7, 5);
    struct Case { OptionButton* option; bool alpha; };
    for (Case c : {Case{&TargaOptions::Option2, false}, Case{&TargaOptions::Option3, true}}) {
        std::string path = dir / "ours.tga";
        std::filesystem::remove(path);
        h.saveFiles.push_back(path);
        h.saveFilter.push_back(1);
        h.Expect("TargaOptions", [&] {
            c.option->Value = true;
            TargaOptions::Command1.press();
        });
        Save_Click();
        EXPECT_EQ(BufferDifferences(PillowDecode(path, dir / "ref.bin"), c.alpha), 0);
    }
}

TEST(Conversion, ImportsLookAsOtherViewersShowThem) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(3, 3);
    struct Case { const char* name; const char* save; bool alpha; };
    const Case cases[] = {
        {"rgb.png", "im.convert('RGB').save(p)", false},
        {"rgba.png", "im.save(p)", true},
        {"pal.png", "im.convert('RGB').quantize(12).save(p)", false},
        {"paltr.png", "q = im.convert('RGB').quantize(12); q.save(p, transparency=3)", true},
        {"grey.png", "im.convert('L').save(p)", false},
        {"greya.png", "im.convert('LA').save(p)", true},
        {"pic.gif", "im.convert('RGB').quantize(20).save(p)", false},
        {"tr.gif", "q = im.convert('RGB').quantize(20); q.save(p, transparency=3)", true},
        {"pic.bmp", "im.convert('RGB').save(p)", false},
        {"pic.tif", "im.save(p)", true},
        {"bl.tga", "im.convert('RGB').save(p)", false},  // a Targa through the converter as well
        {"tl.tga", "im.save(p, orientation=1)", true},
    };
    for (const Case& c : cases) {
        std::string path = dir / c.name;
        ASSERT_TRUE(RunPillow(std::string(MakePicture) + "p = sys.argv[1]\n" + c.save + "\n",
                              {QString::fromStdString(path)}));
        Rgba ref = PillowDecode(path, dir / "ref.bin");
        if (CheckExtention(path) != 0) h.Answer("The file extention is unknown.", 1);
        OpenFile(h, path, 2);
        EXPECT_EQ(BufferDifferences(ref, c.alpha), 0) << c.name;
        EXPECT_EQ(FileName, path);
    }
    EXPECT_TRUE(h.SawStatus("Computer stuff happening..."));
}

TEST(Conversion, SavedPicturesComeBackTheSameWayUp) {
    FileHost h;
    TestFolder dir;
    PaintAsymmetric(9, 7);
    struct Case { int filter; const char* name; const char* magic; bool alpha; int tolerance; };
    const Case cases[] = {
        {2, "o.bmp", "BM", false, 0},
        {4, "o.png", "8BPS", false, 0},   // the "Png" choice writes PSD
        {5, "o.psd", "\x89PNG", true, 0},  // and "Psd" writes PNG
        {6, "o2.tga", "", true, 0},
        {7, "o.tif", "II", true, 0},
    };
    for (const Case& c : cases) {
        std::string path = dir / c.name;
        SaveAs(h, path, c.filter);
        auto bytes = ReadBytes(path);
        ASSERT_GE(bytes.size(), 8u) << c.name;
        EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + static_cast<long>(std::strlen(c.magic))), c.magic) << c.name;
        EXPECT_EQ(Form1::form.Caption.get(), path);
        if (std::string(c.magic) != "8BPS") {
            EXPECT_EQ(BufferDifferences(PillowDecode(path, dir / "ref.bin"), c.alpha), 0) << c.name;
        }
    }
    EXPECT_EQ(TargaSaveType, 2);
    // Opened again, each is the same picture. ImageMagick reads a PSD back as its
    // flattened image, so there only the opaque half must match.
    Plane r, g, b;
    r.copyFrom(BufR);
    g.copyFrom(BufG);
    b.copyFrom(BufB);
    for (const Case& c : cases) {
        std::string path = dir / c.name;
        if (CheckExtention(path) != 0) h.Answer("unknown", 1);
        OpenFile(h, path, 2);
        int bad = 0;
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < (std::string(c.magic) == "8BPS" ? 4 : 9); ++x)
                bad += BufR(x, y) != r(x, y) || BufG(x, y) != g(x, y) || BufB(x, y) != b(x, y);
        EXPECT_EQ(bad, 0) << c.name;
    }
}

TEST(Conversion, JpegAsksForQualityAndComesBackUpright) {
    FileHost h;
    TestFolder dir;
    MakeTestDocument(16, 16);
    // Top half white, bottom half black: flipping cannot hide in the compression noise.
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) BufR(x, y) = BufG(x, y) = BufB(x, y) = y < 8 ? 255 : 0;
    FillPicture(BufA, 255);
    h.Expect("GenericOptions", [] {
        EXPECT_EQ(GenericOptions::form.Caption.get(), "Jpeg quality");
        EXPECT_EQ(GenericOptions::Label1.Caption.get(), "Quality");
        EXPECT_EQ(GenericOptions::HScroll1.Value.get(), 75);
        GenericOptions::HScroll1.Value = 95;
        GenericOptions::Command1.press();
    });
    SaveAs(h, dir / "j.jpg", 3);
    Rgba ref = PillowDecode(dir / "j.jpg", dir / "ref.bin");
    ASSERT_EQ(ref.w, 16);
    EXPECT_GT(ref.at(3, 2)[0], 240);
    EXPECT_LT(ref.at(3, 13)[0], 15);
    OpenFile(h, dir / "j.jpg", 2);
    EXPECT_GT(BufR(3, 2), 240);
    EXPECT_LT(BufR(3, 13), 15);

    // Cancelling the quality box leaves the temporary written and nothing converted.
    std::filesystem::remove(TempFile("TempTGA.tga"));
    h.Press("GenericOptions", "Command2");
    h.ExpectMessage("Save canceled");
    SaveAs(h, dir / "k.jpg", 3);
    EXPECT_FALSE(std::filesystem::exists(dir / "k.jpg"));
    EXPECT_TRUE(std::filesystem::exists(TempFile("TempTGA.tga")));
    EXPECT_NE(TempFile("TempTGA.tga").find("kelpwick-"), std::string::npos) << "a private folder, not the program's";
}

TEST(Conversion, NamesReachConvertAsOneLiteralArgument) {
    FileHost h;
    TestFolder dir;
    PaintAsymmetric(5, 4);
    auto r = std::vector<uint8_t>(BufR.data(), BufR.data() + BufR.count());
    for (std::string name : {"with space.psd", "quote\"d 'x'.psd", "$(touch pwned).psd", "-dash.psd",
                             "per%dcent.psd", "br[1].psd", "semi;colon|pipe.psd"}) {
        std::string path = dir / name;
        SaveAs(h, path, 5);  // "Psd" writes PNG
        ASSERT_TRUE(std::filesystem::exists(path)) << name;
        OpenFile(h, path, 2);
        EXPECT_EQ(std::vector<uint8_t>(BufR.data(), BufR.data() + BufR.count()), r) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "pwned"));
    EXPECT_FALSE(std::filesystem::exists("pwned"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.dir), std::filesystem::directory_iterator()), 7);
}

TEST(Conversion, FailuresAreToldInBothDirections) {
    FileHost h;
    TestFolder dir;
    PaintAsymmetric(5, 4);
    // A file ImageMagick cannot read.
    WriteBytes(dir / "junk.png", std::vector<uint8_t>(100, 'j'));
    auto openJunk = [&](const std::string& message) {
        h.openFiles.push_back(dir / "junk.png");
        h.openFilter.push_back(2);
        h.Answer("Lose current changes?", 1);
        h.ExpectMessage(message);
        Open_Click();
    };
    openJunk("ImageMagick could not read");
    EXPECT_EQ(BufferWidth(), 5);

    // A folder that does not exist: the conversion fails after Save returned.
    h.saveFiles.push_back(dir / "none/x.png");
    h.saveFilter.push_back(5);
    Save_Click();
    h.ExpectMessage("An error has occurred while saving.");
    FinishPendingConversions();
    EXPECT_EQ(PendingConversionCount(), 0);

    // No converter at all.
    std::string program = ConversionProgram;
    ConversionProgram = "kelpwick-no-such-converter";
    openJunk("could not be started");
    h.ExpectMessage("An error has occurred while saving.");
    SaveAs(h, dir / "x.png", 5);

    // A converter that says it succeeded and writes nothing: the wait times out.
    ConversionProgram = "true";
    openJunk("Timed out waiting for conversion service");
    ConversionProgram = program;
}
