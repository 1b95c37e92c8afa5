// Extension tests: only three-letter extensions are ever cut off.
#include <gtest/gtest.h>

#include "file/FileNames.h"

TEST(FileNames, OnlyThreeLetterExtensionsAreCut) {
    EXPECT_EQ(SafeRemoveExt("pic.tga"), "pic");
    EXPECT_EQ(SafeRemoveExt("/a b/pic.TGA"), "/a b/pic");
    EXPECT_EQ(SafeRemoveExt("a.jpeg"), "a.jpeg");
    EXPECT_EQ(SafeRemoveExt(".tga"), ".tga");  // not longer than four characters
    EXPECT_EQ(SafeRemoveExt("x.ps"), "x.ps");
}

TEST(FileNames, TargaTestIgnoresCaseAndFailsWithoutAnExtension) {
    EXPECT_EQ(CheckforTGA("pic.tga"), 0);
    EXPECT_EQ(CheckforTGA("PIC.TgA"), 0);
    EXPECT_EQ(CheckforTGA("pic.png"), 255);
    EXPECT_EQ(CheckforTGA("pic.targa"), 255);
    EXPECT_EQ(CheckforTGA("tga"), 255);
    EXPECT_EQ(CheckforTGA(".tga"), 255);
}

TEST(FileNames, KnownExtensionsAreThoseOfThreeLetters) {
    for (const char* ok : {"a.png", "a.PNG", "a.tga", "a.tif", "a.jpg", "a.psd", "a.bmp", "a.gif.yuv", "a.ps2"})
        EXPECT_EQ(CheckExtention(ok), 0) << ok;
    // Four-letter entries of the list never match, nor do unknown ones or a name without a point.
    for (const char* unknown : {"a.jpeg", "a.tiff", "a.targa", "a.gif", "a.xyz", "a.ps", "png", "a.pn"})
        EXPECT_EQ(CheckExtention(unknown), 255) << unknown;
}
