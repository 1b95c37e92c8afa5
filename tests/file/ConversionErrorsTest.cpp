// The conversion program's failures told in the user's words: the limits of
// ImageMagick's policy named with their values, other failures passed on.
#include "file/ConversionErrors.h"
#include "tests/file/FileTestSupport.h"

namespace {
// What "convert -list resource" prints with Debian's policy.
const char* const DebianLimits =
    "Resource limits:\n  Width: 16KP\n  Height: 16KP\n  List length: unlimited\n  Area: 128MP\n"
    "  Memory: 256MiB\n  Map: 512MiB\n  Disk: 1GiB\n  File: 15000\n  Thread: 2\n  Throttle: 0\n"
    "  Time: unlimited\n";

// What ImageMagick 6.9 writes, with its exception log on, for a PNG of 40000 x 2.
const char* const WidePngText =
    "2026-11-22T23:16:44+00:00 0:00.045 0.000u 6.9.11 Exception convert[14685]: "
    "png.c/MagickPNGWarningHandler/1671/Exception\n"
    "  Image width exceeds user limit in IHDR `wide.png'\n"
    "2026-11-22T23:16:44+00:00 0:00.050 0.000u 6.9.11 Exception convert[14685]: "
    "png.c/MagickPNGErrorHandler/1645/Exception\n"
    "  Invalid IHDR data `wide.png'\n"
    "convert: no images defined `TGA:/tmp/k/TempTga.tga' @ error/convert.c/ConvertImageCommand/3234.\n";
}  // namespace

TEST(ConversionErrors, LimitsAreNamedWithTheirValues) {
    EXPECT_EQ(ResourceLimit(DebianLimits, "Width"), "16KP");
    EXPECT_EQ(ResourceLimit(DebianLimits, "disk"), "1GiB");
    EXPECT_EQ(ResourceLimit(DebianLimits, "List length"), "unlimited");
    EXPECT_EQ(ResourceLimit(DebianLimits, "Colour"), "");
    EXPECT_EQ(ResourceLimit("", "Width"), "");

    struct Case { const char* said; const char* named; const char* mustSay; };
    const Case cases[] = {
        {WidePngText, "Width", "limit on width (16KP)"},
        {"  Image height exceeds user limit in IHDR `tall.png'\n", "Height", "limit on height (16KP)"},
        {"convert: width or height exceeds limit `x.bmp' @ error/cache.c/OpenPixelCache/3928.\n", "Width Height",
         "limits on width (16KP) and height (16KP)"},
        {"convert: cache resources exhausted `big.png' @ error/cache.c/OpenPixelCache/4125.\n",
         "Area Memory Map Disk", "area (128MP), memory (256MiB), map (512MiB) and disk (1GiB)"},
        {"convert: time limit exceeded `x.gif' @ fatal/cache.c/GetImagePixelCache/1728.\n", "Time",
         "limit on time (unlimited)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.said);
        EXPECT_EQ(LimitsNamed(c.said), c.named);
        const std::string reason = ConversionFailureReason(c.said, DebianLimits);
        EXPECT_NE(reason.find(c.mustSay), std::string::npos) << reason;
        EXPECT_NE(reason.find("policy.xml"), std::string::npos) << reason;
        // Without the list the limit is still named, its value said to be unknown.
        EXPECT_NE(ConversionFailureReason(c.said, "").find("(value not known)"), std::string::npos);
    }
}

TEST(ConversionErrors, OtherFailuresKeepTheProgramsOwnLinesWithoutTheLog) {
    const std::string policy =
        "convert: attempt to perform an operation not allowed by the security policy `PDF' @ "
        "error/constitute.c/IsCoderAuthorized/408.\n";
    EXPECT_EQ(LimitsNamed(policy), "Policy");
    EXPECT_NE(ConversionFailureReason(policy, DebianLimits).find("security policy does not allow"), std::string::npos);

    const std::string broken = "2026-11-22T23:16:44+00:00 0:00.050 0.000u 6.9.11 Exception convert[1]: x\n"
                               "  improper image header `a.bmp'\n"
                               "convert: improper image header `a.bmp' @ error/bmp.c/ReadBMPImage/617.\n"
                               "convert: improper image header `a.bmp' @ error/bmp.c/ReadBMPImage/617.\n"
                               "convert: no images defined `TGA:t.tga' @ error/convert.c/ConvertImageCommand/3234.\n";
    EXPECT_EQ(LimitsNamed(broken), "");
    EXPECT_EQ(ConversionFailureReason(broken, DebianLimits),
              "convert: improper image header `a.bmp' @ error/bmp.c/ReadBMPImage/617.\n"
              "convert: no images defined `TGA:t.tga' @ error/convert.c/ConvertImageCommand/3234.");
    EXPECT_EQ(ConversionFailureReason("", DebianLimits), "");
}

// The program is faked through the host: it fails as ImageMagick fails on a
// picture beyond its width limit, and lists Debian's limits when asked.
TEST_F(FileTest, APictureBeyondTheWidthLimitIsToldAsSuch) {
    MakeTestDocument(4, 3);
    h.fakePrograms[ConversionProgram] = ProgramExit{true, 1, WidePngText};
    h.fakeOutputs[ConversionProgram] = DebianLimits;
    const std::string wide = dir / "wide.png";
    WriteBytes(wide, {0x89, 'P', 'N', 'G'});
    h.Open(wide, 2, "ImageMagick could not read " + wide + ".\nThe picture is beyond ImageMagick's limit on width (16KP).");
    EXPECT_EQ(BufferWidth(), 4);  // the document stays as it was
    // The exception log was asked for, and the limits were listed by the program itself.
    ASSERT_GE(h.programsStarted.size(), 2u);
    const auto& convert = h.programsStarted[0];
    EXPECT_EQ(std::vector<std::string>(convert.begin() + 1, convert.begin() + 3),
              (std::vector<std::string>{"-debug", "Exception"}));
    EXPECT_EQ(h.programsStarted[1], (std::vector<std::string>{ConversionProgram, "-list", "resource"}));
}

// With the real program: a PNG wider than the policy allows (Debian's is 16KP).
TEST_F(FileTest, TheRealConverterNamesTheWidthLimit) {
    MakeTestDocument(4, 3);
    const std::string wide = dir / "wide.png";
    RunPillow("Image.new('RGB', (40000, 2), (255, 0, 0)).save(sys.argv[1])\n", {QString::fromStdString(wide)});
    const std::optional<std::string> limits = h.ProgramOutput(ConversionProgram, {"-list", "resource"}, 10000);
    if (!limits || ResourceLimit(*limits, "Width").empty() || ResourceLimit(*limits, "Width") == "unlimited")
        GTEST_SKIP() << "this ImageMagick has no width limit";
    h.Open(wide, 2, "limit on width (" + ResourceLimit(*limits, "Width") + ")");
}
