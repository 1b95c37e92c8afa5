// Pictures made by other programs: Targa files written by Pillow read as Pillow
// reads them, and every other format through ImageMagick's convert, the same
// way up and in the same colours. (Pillow reading our own Targa files is in
// FileMenuTest.)
#include <gtest/gtest.h>

#include <signal.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "core/framework/AppState.h"
#include "tests/file/FileTestSupport.h"

using ForeignFiles = FileTest;
using Conversion = FileTest;

TEST_F(ForeignFiles, PicturesMadeByPillowOpenAsPillowShowsThem) {
    MakeTestDocument(3, 3);
    struct Made { std::string name, save; bool alpha; int filter, type; };  // type: the Targa type written
    std::vector<Made> made = {  // through the converter
        {"rgb.png", "im.convert('RGB').save(p)", false, 2, 0}, {"rgba.png", "im.save(p)", true, 2, 0},
        {"pal.png", "im.convert('RGB').quantize(12).save(p)", false, 2, 0},
        {"paltr.png", "im.convert('RGB').quantize(12).save(p, transparency=3)", true, 2, 0},
        {"grey.png", "im.convert('L').save(p)", false, 2, 0}, {"greya.png", "im.convert('LA').save(p)", true, 2, 0},
        {"pic.gif", "im.convert('RGB').quantize(20).save(p)", false, 2, 0},
        {"tr.gif", "im.convert('RGB').quantize(20).save(p, transparency=3)", true, 2, 0},
        {"pic.bmp", "im.convert('RGB').save(p)", false, 2, 0}, {"pic.tif", "im.save(p)", true, 2, 0},
        {"bl.tga", "im.convert('RGB').save(p)", false, 2, 2}, {"tl.tga", "im.save(p, orientation=1)", true, 2, 2}};
    // Targa files of every readable type and origin, read directly. Run-length
    // colour-mapped and grey files are refused.
    for (auto [kind, convert, alpha, type] : {std::tuple{"rgb", "im.convert('RGB')", false, 2}, {"rgba", "im", true, 2},
                                              {"pal", "im.convert('RGB').quantize(16)", false, 1},
                                              {"grey", "im.convert('L')", false, 3}})
        for (bool rle : {false, true})
            for (bool topLeft : {false, true})
                if (!rle || type == 2)
                    made.push_back({kind + std::string(rle ? "_rle" : "") + (topLeft ? "_tl" : "") + ".tga",
                                    std::string(convert) + ".save(p" + (rle ? ", compression='tga_rle'" : "") +
                                        (topLeft ? ", orientation=1" : "") + ")",
                                    alpha, 1, rle ? 10 : type});
    for (const Made& m : made) {
        SCOPED_TRACE(m.name);
        // A 7 x 5 picture, asymmetric in every channel, with varied alpha.
        RunPillow("im = Image.new('RGBA', (7, 5))\n"
                  "im.putdata([((x * 37) % 256, (y * 61) % 256, (x * 11 + y * 29) % 256,"
                  " 255 if x < 3 else (x * y * 23) % 256) for y in range(5) for x in range(7)])\n"
                  "p = sys.argv[1]\n" + m.save + "\n",
                  {QString::fromStdString(dir / m.name)});
        auto bytes = ReadBytes(dir / m.name);
        if (m.type) {
            EXPECT_EQ(ParseTargaHeader(bytes.data(), bytes.size()).ImageType, m.type);
        }
        Rgba ref = PillowDecode(dir / m.name);
        h.Open(dir / m.name, m.filter);
        EXPECT_EQ(BufferDifferences(ref, m.alpha), 0);
        EXPECT_EQ(MDIForm1::AlphaEnable.Checked.get(), m.alpha);
        EXPECT_EQ(FileName, dir / m.name);
    }
    EXPECT_TRUE(h.SawStatus("Computer stuff happening..."));
}

TEST_F(Conversion, SavedPicturesComeBackTheSameWayUp) {
    PaintAsymmetric(9, 7);
    const Rgba painted = Snapshot();
    struct Case { int filter; const char* name; const char* magic; bool alpha; };
    const Case cases[] = {
        {2, "o.bmp", "BM", false},
        {4, "o.png", "8BPS", false},  // the "Png" choice writes PSD
        {5, "o.psd", "\x89PNG", true},  // and "Psd" writes PNG
        {6, "o2.tga", "", true},
        {7, "o.tif", "II", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = dir / c.name;
        const bool psd = std::string(c.magic) == "8BPS";
        PaintAsymmetric(9, 7);
        h.Save(path, c.filter);
        auto bytes = ReadBytes(path);
        ASSERT_GE(bytes.size(), 8u);
        EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + static_cast<long>(std::strlen(c.magic))), c.magic);
        EXPECT_EQ(Form1::form.Caption.get(), path);
        EXPECT_EQ(TargaSaveType, 2);
        if (!psd) {
            EXPECT_EQ(BufferDifferences(PillowDecode(path), c.alpha), 0);
        }
        // Opened again, it is the same picture. ImageMagick reads a PSD back as its
        // flattened image, so there only the opaque half must match.
        h.Open(path, 2);
        EXPECT_EQ(BufferDifferences(painted, false, psd ? 4 : 9), 0);
    }
}

TEST_F(Conversion, JpegAsksForQualityAndComesBackUpright) {
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
    h.Save(dir / "j.jpg", 3);
    ASSERT_FALSE(h.programsStarted.empty());
    const auto& args = h.programsStarted.back();
    auto quality = std::find(args.begin(), args.end(), "-quality");
    ASSERT_LT(quality + 1, args.end());
    EXPECT_EQ(quality[1], "95");
    Rgba ref = PillowDecode(dir / "j.jpg");
    ASSERT_EQ(ref.w, 16);
    EXPECT_GT(ref.at(3, 2)[0], 240);
    EXPECT_LT(ref.at(3, 13)[0], 15);
    h.Open(dir / "j.jpg", 2);
    EXPECT_GT(BufR(3, 2), 240);
    EXPECT_LT(BufR(3, 13), 15);

    // Cancelling the quality box leaves the temporary written and nothing converted.
    std::filesystem::remove(TempFile("TempTGA.tga"));
    h.Press("GenericOptions", "Command2");
    h.Save(dir / "k.jpg", 3, nullptr, "Save canceled");
    EXPECT_FALSE(std::filesystem::exists(dir / "k.jpg"));
    EXPECT_TRUE(std::filesystem::exists(TempFile("TempTGA.tga")));
    EXPECT_NE(TempFile("TempTGA.tga").find("kelpwick-"), std::string::npos) << "a private folder, not the program's";
}

TEST_F(Conversion, NamesReachConvertAsOneLiteralArgument) {
    PaintAsymmetric(5, 4);
    const Rgba painted = Snapshot();
    for (std::string name : {"with space.psd", "quote\"d 'x'.psd", "$(touch pwned).psd", "-dash.psd",
                             "per%dcent.psd", "br[1].psd", "semi;colon|pipe.psd"}) {
        h.Save(dir / name, 5);  // "Psd" writes PNG
        ASSERT_TRUE(std::filesystem::exists(dir / name)) << name;
        h.Open(dir / name, 2);
        EXPECT_EQ(BufferDifferences(painted, false), 0) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "pwned"));
    EXPECT_FALSE(std::filesystem::exists("pwned"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir / ""), std::filesystem::directory_iterator()), 7);
}

TEST_F(Conversion, FailuresAreToldInBothDirections) {
    PaintAsymmetric(5, 4);
    WriteBytes(dir / "junk.png", Bytes(100, 'j'));  // a file ImageMagick cannot read
    h.Open(dir / "junk.png", 2, "ImageMagick could not read");
    EXPECT_EQ(BufferWidth(), 5);

    // A folder that does not exist: the conversion fails after Save returned.
    h.saveFiles.push_back(dir / "none/x.png");
    h.filter = 5;
    Save_Click();
    h.ExpectMessage("An error has occurred while saving.");
    FinishPendingConversions();
    EXPECT_EQ(PendingConversionCount(), 0);

    // No converter at all: the document stays as it was, and nothing is left pending.
    const Rgba painted = Snapshot();
    const std::string caption = Form1::form.Caption;
    std::string program = ConversionProgram;
    ConversionProgram = "kelpwick-no-such-converter";
    h.Open(dir / "junk.png", 2, "could not be started");
    EXPECT_EQ(Snapshot().px, painted.px);
    EXPECT_EQ(Form1::form.Caption.get(), caption);
    h.Save(dir / "x.png", 5, nullptr, "An error has occurred while saving.");
    EXPECT_EQ(PendingConversionCount(), 0);
    // A converter that says it succeeded and writes nothing: the wait for the
    // file times out after 4.5 s.
    ConversionProgram = "true";
    const double before = h.clock;
    h.Open(dir / "junk.png", 2, "Timed out waiting for conversion service");
    EXPECT_GE(h.clock - before, 4.5);
    EXPECT_LT(h.clock - before, 5.0);
    ConversionProgram = program;
}

// A host whose every pass of the event loop takes ten seconds.
struct SlowEventsHost : FileHost {
    std::vector<int> lockCounts;  // the canvas lock seen by each pass
    void DoEvents() override {
        lockCounts.push_back(App.LockCount);
        clock += 10;
    }
};

TEST_F(Conversion, AConverterThatHangsIsKilledAtItsTimeOut) {
    PaintAsymmetric(5, 4);
    const Rgba painted = Snapshot();
    const std::string script = dir / "hang.sh", pidFile = dir / "pid";
    std::ofstream(script) << "#!/bin/sh\necho $$ > '" << pidFile << "'\nexec sleep 600\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const std::string program = ConversionProgram;
    ConversionProgram = script;
    SlowEventsHost slow;
    slow.Open(dir / "x.png", 2, "ImageMagick could not read");
    ConversionProgram = program;

    // Events ran with the canvas locked while the program was waited for: seven
    // passes of ten seconds are the first to pass 65.535 s. Then it was killed,
    // and the document is untouched.
    EXPECT_EQ(std::count(slow.lockCounts.begin(), slow.lockCounts.end(), 1), 7);
    EXPECT_EQ(App.LockCount, 0);
    EXPECT_EQ(Snapshot().px, painted.px);
    const Bytes pid = ReadBytes(pidFile);
    ASSERT_FALSE(pid.empty()) << "the converter never ran";
    EXPECT_NE(::kill(static_cast<pid_t>(std::stol(std::string(pid.begin(), pid.end()))), 0), 0)
        << "the converter still runs";
}
