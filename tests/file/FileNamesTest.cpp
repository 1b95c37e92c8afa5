// Extension tests: only three-letter extensions are ever cut off or matched.
#include <gtest/gtest.h>

#include "file/FileNames.h"

TEST(FileNames, OnlyThreeLetterExtensionsCount) {
    for (auto [name, cut] : {std::pair{"pic.tga", "pic"}, {"/a b/pic.TGA", "/a b/pic"}, {"a.jpeg", "a.jpeg"},
                             {".tga", ".tga"} /* not longer than four characters */, {"x.ps", "x.ps"}})
        EXPECT_EQ(SafeRemoveExt(name), cut);
    for (auto [name, tga] : {std::pair{"pic.tga", 0}, {"PIC.TgA", 0}, {"pic.png", 255}, {"pic.targa", 255},
                             {"tga", 255}, {".tga", 255}})
        EXPECT_EQ(CheckforTGA(name), tga) << name;
    // Four-letter entries of the list never match, nor do unknown ones or a name without a point.
    for (const char* ok : {"a.png", "a.PNG", "a.tga", "a.tif", "a.jpg", "a.psd", "a.bmp", "a.gif.yuv", "a.ps2"})
        EXPECT_EQ(CheckExtention(ok), 0) << ok;
    for (const char* unknown : {"a.jpeg", "a.tiff", "a.targa", "a.gif", "a.xyz", "a.ps", "png", "a.pn"})
        EXPECT_EQ(CheckExtention(unknown), 255) << unknown;
}
