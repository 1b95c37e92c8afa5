// The canvas window is named after the file the document is, in every path of
// Open and Save, failures included, and a new document starts unnamed again.
#include "core/document/CanvasSize.h"
#include "core/frame/BufferMenu.h"
#include "tests/file/FileTestSupport.h"

namespace {
std::string Caption() { return Form1::form.Caption; }

// The named file and the canvas agree.
void ExpectNamed(const std::string& path) {
    EXPECT_EQ(Caption(), path);
    EXPECT_EQ(FileName, path);
}

// A converter that fails at once, saying so on its error channel.
ProgramExit Refusal() { return {true, 1, "convert: unable to open image `x': No such file @ error/blob.c/OpenBlob/2964.\n"}; }
}  // namespace

TEST_F(FileTest, SavesNameTheCanvasOnlyWhenTheFileIsWritten) {
    MakeTestDocument(6, 5);
    EXPECT_EQ(Caption(), Form1::DesignCaption);

    h.Save(dir / "a.tga", 1);
    ExpectNamed(dir / "a.tga");
    // Into a folder that does not exist: the message, and the name stays.
    h.Save(dir / "no/such/b.tga", 1, nullptr, "An error has occurred while saving.");
    ExpectNamed(dir / "a.tga");
    // A conversion that fails: told when it ends, and the name stays.
    h.fakePrograms[ConversionProgram] = Refusal();
    h.Save(dir / "c.bmp", 2, nullptr, "An error has occurred while saving.");
    h.fakePrograms.clear();
    ExpectNamed(dir / "a.tga");
    // A conversion that ends well names the canvas after its file.
    h.Save(dir / "d.bmp", 2);
    ASSERT_TRUE(std::filesystem::exists(dir / "d.bmp"));
    ExpectNamed(dir / "d.bmp");
    // The quality box cancelled: nothing saved, nothing renamed.
    h.Expect("GenericOptions", [] { GenericOptions::Command2.press(); });
    h.Save(dir / "e.jpg", 3, nullptr, "Save canceled");
    ExpectNamed(dir / "d.bmp");
    EXPECT_FALSE(std::filesystem::exists(dir / "e.jpg"));
}

TEST_F(FileTest, OpensNameTheCanvasAfterTheFileReadAndANewDocumentIsUnnamed) {
    MakeTestDocument(6, 5);
    // A Targa of another size: the document is made anew and then named.
    const std::string small = dir / "small.tga";
    WriteBytes(small, MakeTargaFile(2, 3, 2, 24, 0, Bytes(3 * 2 * 3, 90)));
    h.Open(small);
    EXPECT_EQ(BufferWidth(), 3);
    ExpectNamed(small);
    // A file that cannot be read leaves the document and its name alone.
    h.Open(dir / "missing.tga", 1, "The file could not be read");
    ExpectNamed(small);
    // A converted open is named after the file the user chose, not the temporary.
    h.Save(dir / "wide.bmp", 2);
    SetBufferSize(6, 5);
    ASSERT_TRUE(CreateNewDocument(false));
    h.Open(dir / "wide.bmp", 2);
    EXPECT_EQ(BufferWidth(), 3);
    ExpectNamed(dir / "wide.bmp");
    // A conversion that fails keeps the name the document had.
    h.fakePrograms[ConversionProgram] = Refusal();
    h.Open(dir / "other.bmp", 2, "ImageMagick could not read");
    h.fakePrograms.clear();
    ExpectNamed(dir / "wide.bmp");

    // New: the canvas starts under its first caption, whatever was open before.
    h.Answer("The current buffer will be lost.  Continue?", 1);
    h.AnswerSize(8, 8);
    New_Click();
    EXPECT_EQ(Caption(), Form1::DesignCaption);
}

TEST_F(FileTest, AnExportEndingAfterANewDocumentDoesNotNameIt) {
    MakeTestDocument(6, 5);
    h.Save(dir / "first.tga", 1);
    // The converter says it succeeded and the file is there, but only once the
    // document has been replaced.
    h.fakePrograms[ConversionProgram] = ProgramExit{true, 0, ""};
    WriteBytes(dir / "late.bmp", {'B', 'M'});
    h.saveFiles.push_back(dir / "late.bmp");
    h.filter = 2;
    Save_Click();
    ASSERT_EQ(PendingConversionCount(), 1);
    ExpectNamed(dir / "first.tga");  // not yet: the export has not ended
    h.Answer("The current buffer will be lost.  Continue?", 1);
    h.AnswerSize(6, 5);
    New_Click();
    FinishPendingConversions();
    h.fakePrograms.clear();
    EXPECT_EQ(Caption(), Form1::DesignCaption);
}
